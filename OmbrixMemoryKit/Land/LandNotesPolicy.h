// What the prose of a land record may not say: how it was made. A record that talks about the
// transcript, its labels or the model's reasoning is refused whole.
#pragma once

#include <string_view>

#include "OmbrixPlatform/Regex.h"

namespace ombrix::LandNotesPolicy {

/// The contract for the notes, without a line feed at its end. Callers append it to the land system
/// prompt: it overrides what comes before it.
extern const std::string_view prompt;

/// What talk about the process looks like. It is case-sensitive.
const Regex& commentary();
/// True when `commentary` matches anywhere in the text.
bool containsCommentary(std::string_view text);
}  // namespace ombrix::LandNotesPolicy
