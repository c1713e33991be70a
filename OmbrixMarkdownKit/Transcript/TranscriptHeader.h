// The frontmatter of a transcript: one known key a line, block lists after three of them.
#pragma once

#include <string_view>

#include "OmbrixMarkdownKit/Transcript/TranscriptDocument.h"

namespace ombrix::TranscriptHeader {

/// Sets the fields that `header`, the text between the "---" lines, names; the others keep their
/// value, as does a number whose text does not parse. Unknown lines are passed over.
void read(std::string_view header, TranscriptDocument& document);
}  // namespace ombrix::TranscriptHeader
