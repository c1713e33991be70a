// What makes a Markdown file the system's own transcript.
#pragma once

#include <string_view>

namespace ombrix::OmbrixTranscriptMarker {

/// True when a line of the text, in the frontmatter or anywhere after it, is exactly
/// "source: Ombrix" and ends in a line feed (CR LF counts). Stops at the first such line.
bool declares(std::string_view text);
}  // namespace ombrix::OmbrixTranscriptMarker
