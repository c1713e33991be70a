// What one document matched with, as both rankers report it.
#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "OmbrixMarkdownKit/Search/TermEvidence.h"
#include "OmbrixMarkdownKit/Transcript/TranscriptDocument.h"

namespace ombrix {

/// What a term in the title, and one in a participant's name, adds to a match's score once.
constexpr std::int64_t titleMatchScore = 3;
constexpr std::int64_t participantMatchScore = 2;

constexpr std::size_t snippetLimit = 3;
constexpr std::size_t snippetContext = 90;  ///< characters on each side of a hit

struct DocumentMatch {
    std::int64_t score = 0;  ///< the matching turns, and the scores above
    std::int64_t matchingTurns = 0;
    std::vector<std::string> snippets;  ///< at most `snippetLimit`, best first
    bool operator==(const DocumentMatch&) const = default;

    /// What a ranker shows of `text` for the term with this index.
    using ExcerptOf = std::function<std::string(std::size_t keyword, std::string_view text)>;

    /// The match that `terms` add up to; their order decides which come first in the snippets.
    /// `document` is the one they were found in. A turn gives one snippet at most, and a term shows
    /// a body field only when it has no turn of its own.
    static DocumentMatch of(const TranscriptDocument& document, std::span<const TermEvidence> terms,
                            const ExcerptOf& excerptOf);
};
}  // namespace ombrix
