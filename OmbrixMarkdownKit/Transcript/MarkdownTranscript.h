// The transcript file: a frontmatter of known keys and a body of known sections. The reader is a
// line scanner for the keys and a substring search for the headings; it is neither a YAML nor a
// Markdown parser and ignores whatever it does not know. It never fails on a file that has a
// frontmatter.
//
//   ---
//   title: "Weekly: pricing"
//   date: 2026-03-02
//   duration_min: 31
//   source: Ombrix
//   participants:
//     - Ann Jones
//   ---
//
//   ## Notes
//
//   - call Tomas back
//
//   ## Transcript
//
//   **Ann Jones:** We keep the price.
//
//   And we say so in April.
#pragma once

#include <optional>
#include <string_view>

#include "OmbrixMarkdownKit/Transcript/TranscriptDocument.h"

namespace ombrix::MarkdownTranscriptParser {

/// The document of a file's text; nothing when the text is no transcript, that is, when it does not
/// begin with a closed frontmatter. CR LF is read as LF. One pass over the header, a search for
/// headings in the body, no regular expression.
std::optional<TranscriptDocument> parse(std::string_view text);
}  // namespace ombrix::MarkdownTranscriptParser
