// Orders documents by words and by meaning at once, and lets in a few that only meaning found.
#pragma once

#include <cstddef>
#include <span>
#include <vector>

#include "OmbrixAnswerKit/Semantic/SemanticIndex.h"
#include "OmbrixMarkdownKit/Search/RankedTranscriptSearch.h"

namespace ombrix::HybridAnswerRanker {

/// The share of meaning in the order; the rest is words.
inline constexpr double defaultAlpha = 0.3;
/// A document without a lexical hit enters when its cosine is at least this, ...
inline constexpr double rescueFloorAbsolute = 0.27;
/// ... when it is this near to the best among all scores, counted from 0 for the worst to 1, ...
inline constexpr double rescueFloorNormalized = 0.8;
/// ... and when it is among so many best of those.
inline constexpr std::size_t rescueLimit = 3;

/// The hits of the `scoped` documents, best first; ties go to the later date, then to the smaller
/// id. Lexical hits come back as they were; one whose document is not in `scoped` is lost. A
/// document that only meaning found has no keywords, no relevance, and its best chunk for a
/// snippet. Without semantic scores the order is that of the words.
std::vector<RankedTranscriptSearch::AnswerHit> rank(
    std::span<const IdentifiedDocument> scoped,
    std::span<const RankedTranscriptSearch::AnswerHit> lexicalHits, const SemanticScores& semantic,
    double alpha = defaultAlpha);
}  // namespace ombrix::HybridAnswerRanker
