// The text export of Otter: a header line with a name and a time, then what that person says.
//
//   Ann Lee  0:12
//   We keep the price.
//
//   Tomas Reyes  0:15
//   And we say so.
#pragma once

#include <string_view>
#include <vector>

#include "OmbrixMarkdownKit/Import/ParsedMeeting.h"

namespace ombrix::TranscriptImport {

/// The name, normalized, when the trimmed line is a header.
std::optional<std::string_view> otterSpeaker(std::string_view line);

/// What is said, in the order of the text; lines before the first header are dropped. `text` has
/// plain line ends.
std::vector<Turn> readOtter(std::string_view text);
}  // namespace ombrix::TranscriptImport
