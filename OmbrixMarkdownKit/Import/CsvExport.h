// The CSV export of Granola: one meeting in each row, its transcript in one cell.
//
//   Title,Created at,Transcript
//   Pricing,2026-03-02,"Ann Lee: We keep the price.
//   Me: And we say so."
#pragma once

#include <string_view>
#include <vector>

#include "OmbrixMarkdownKit/Import/ParsedMeeting.h"

namespace ombrix::TranscriptImport {

/// True when the first line has at least two columns and one whose name, in lower case, holds
/// "transcript".
bool looksLikeCSVExport(std::string_view text);

/// The meetings of the rows after the header in which somebody speaks. The columns of transcript,
/// title and day are found by their names. A line of a transcript without a speaker belongs to the
/// one before. `text` has plain line ends.
std::vector<ParsedMeeting> parseCSVExport(std::string_view text);
}  // namespace ombrix::TranscriptImport
