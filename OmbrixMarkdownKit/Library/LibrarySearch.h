// Searches a folder for the keywords of a question: reads one file at a time, keeps what ranking
// needs of it, and opens only the few files it shows again. The result is that of ranking the
// scanned documents, but memory grows with the number of files, not with their bytes.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

#include "OmbrixMarkdownKit/Library/TranscriptLibrary.h"
#include "OmbrixMarkdownKit/Search/AnswerScope.h"
#include "OmbrixMarkdownKit/Search/RankedTranscriptSearch.h"

namespace ombrix {

struct LibrarySearchResult {
    std::vector<RankedTranscriptSearch::AnswerHit> hits;  ///< the first ones, in order
    std::int64_t scannedCount = 0;                        ///< transcripts that passed the scope
    std::int64_t totalMatched = 0;                        ///< all hits, shown or not
    bool operator==(const LibrarySearchResult&) const = default;
};

/// What to show for a question when no transcript in scope has a word of it.
enum class WithoutHits {
    showNothing,
    showNewest,  ///< the newest transcripts in scope, as hits without keywords and snippets
};

/// At most `limit` hits. A file that changes or vanishes while the search runs is shown as it is
/// when it is opened again, or left out.
LibrarySearchResult searchLibrary(const TranscriptLibrary& library,
                                  const std::vector<std::string>& keywords,
                                  const AnswerScope& scope,
                                  const RankedTranscriptSearch::AnswerRankOptions& options,
                                  std::size_t limit, WithoutHits withoutHits);
}  // namespace ombrix
