// Markdown and plain text with speakers, as Granola, Limitless and others write it.
//
//   ---
//   title: "Pricing weekly"
//   date: 2026-03-02
//   ---
//   # Pricing weekly
//
//   **Ann Lee:** We keep the price.
//   - Tomas Reyes (00:15): And we say so.
//     In April.
//
//   ## Next steps
//   nobody says this
#pragma once

#include <string_view>

#include "OmbrixMarkdownKit/Import/ParsedMeeting.h"

namespace ombrix::TranscriptImport {

/// What is said, and the title and the day if the text tells them. The front matter opens in line
/// one only and, when it is not closed, holds all the rest. A heading ends a speech; lines without
/// a speaker are dropped. `text` has plain line ends.
ParsedMeeting readMarkdown(std::string_view text);
}  // namespace ombrix::TranscriptImport
