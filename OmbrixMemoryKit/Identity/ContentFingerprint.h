// What a transcript says, as a short hash: it changes with every edited word, while the meeting's
// key does not. So it tells that a transcript was edited after it was landed.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "OmbrixMarkdownKit/Transcript/TranscriptDocument.h"

namespace ombrix::ContentFingerprint {

/// 16 lower-case hexadecimal digits. Linear.
std::string make(std::string_view title, std::string_view date,
                 const std::vector<std::string>& participants,
                 const std::vector<TranscriptDocument::Turn>& turns);
}  // namespace ombrix::ContentFingerprint
