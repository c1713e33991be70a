// The transcript file that an import writes:
//
//   ---
//   title: Pricing weekly
//   date: 2026-03-02
//   participants:
//     - Me
//     - Ann Jones
//   duration_min: 0
//   source: Ombrix
//   asr: imported (vtt)
//   imported_from: pricing_2026-03-02.vtt
//   ---
//
//   ## Notes
//
//   _(User-added context. Empty until the user types here in the Library window.)_
//
//   ## Transcript
//
//   **Ann Jones:** We keep the price.
//
//   **Me:** And we say so in April.
//
// `MarkdownTranscriptParser` reads the same title, date, participants and turns back.
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "OmbrixMarkdownKit/Import/ImportFormat.h"
#include "OmbrixMarkdownKit/Transcript/TranscriptDocument.h"

namespace ombrix::TranscriptImport {

/// The speakers in the order of their first turn, each once; "Me", if among them, comes first.
std::vector<std::string> orderedParticipants(const std::vector<TranscriptDocument::Turn>& turns);

/// The whole file. Line breaks inside what is given become blanks, so that each of it stays on its
/// own line. A turn whose text ends in a heading of the format gets a blank after it, since a
/// heading counts only at the end of a line.
std::string render(std::string_view title, const std::optional<std::string>& date,
                   const std::vector<std::string>& participants,
                   const std::vector<TranscriptDocument::Turn>& turns, Format format,
                   std::string_view filename);

/// The line that names the source file, with its line feed: "imported_from: pricing.vtt\n". It is
/// valid UTF-8 and one line, whatever bytes the file name holds. Look for it at the start of a line
/// only: a title can end in the same words.
std::string importedFromLine(std::string_view filename);
}  // namespace ombrix::TranscriptImport
