// Finds the format of an export and reads its meetings.
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "OmbrixMarkdownKit/Import/ParsedMeeting.h"

namespace ombrix::TranscriptImport {

struct Export {
    Format format{};  ///< of its first meeting
    std::vector<ParsedMeeting> meetings;
};

/// The format of a text with plain line ends; nothing when it has no known shape. Only JSON is
/// known by its meetings, so that only for JSON they are there already.
std::optional<Export> recognized(std::string_view text);

/// The beginning of a text, by which the text formats are told apart.
std::string_view headOf(std::string_view text);

/// The format of speakers in Markdown, by the tool that the head names.
Format markdownFormat(std::string_view head);

/// The same with the meetings in which somebody speaks.
std::optional<Export> readExport(std::string_view text);
}  // namespace ombrix::TranscriptImport
