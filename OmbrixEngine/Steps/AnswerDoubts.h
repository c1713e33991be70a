// What is odd about an accepted record: a quote that nobody said. A record with such a claim is
// kept, since speech is written down in many ways; whoever answered is told.
#pragma once

#include <span>
#include <string>
#include <vector>

#include "OmbrixMarkdownKit/Transcript/TranscriptDocument.h"
#include "OmbrixMemoryKit/Land/LandModels.h"

namespace ombrix {

/// One sentence for each, with the path into the record; at most twenty. Quotes are compared by
/// their words alone, and an ellipsis in one stands for anything.
std::vector<std::string> doubtsAbout(const LandOutput& output,
                                     std::span<const TranscriptDocument::Turn> turns);
}  // namespace ombrix
