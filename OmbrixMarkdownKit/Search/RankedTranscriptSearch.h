// Finds and orders transcripts for a question, with no index on disk. `rank` is the plain ranker of
// `SubstringSearch`. `answerRank` is the one that answers use: stemmed keywords, saturated
// frequency, rarity, recency, and a boost for meetings in which the user spoke. Nothing here fails;
// a question without keywords has no hits. docs/search.md describes the whole way from bytes to
// hits.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "OmbrixMarkdownKit/Search/AnswerScope.h"
#include "OmbrixMarkdownKit/Search/DocumentMatch.h"
#include "OmbrixMarkdownKit/Search/SubstringSearch.h"
#include "OmbrixMarkdownKit/Search/TermEvidence.h"
#include "OmbrixMarkdownKit/Transcript/TranscriptDocument.h"
#include "OmbrixPlatform/ByteRange.h"
#include "OmbrixPlatform/Calendar.h"

namespace ombrix::RankedTranscriptSearch {

using ombrix::DocumentMatch;
using SubstringSearch::match;
using SubstringSearch::rank;
using SubstringSearch::RankedHit;
using SubstringSearch::termMatches;
using SubstringSearch::terms;

struct AnswerHit {
    std::string id;
    TranscriptDocument document;
    std::int64_t matchedKeywords = 0;  ///< how many of the question's keywords occur
    DocumentMatch match;
    double relevance = 0;
    bool operator==(const AnswerHit&) const = default;
};

struct ScopedAnswerResult {
    std::vector<AnswerHit> hits;
    std::int64_t scannedCount = 0;  ///< documents that passed the scope
    std::int64_t totalMatched() const { return static_cast<std::int64_t>(hits.size()); }
};

struct ParticipationBoost {
    std::vector<std::string> userAliases;  ///< taken as they are: no first names are derived
    double boost = 0;                      ///< relevance is multiplied by 1 + boost
    std::int64_t minTurns = 1;             ///< below 1 means 1
    bool operator==(const ParticipationBoost&) const = default;
};

struct AnswerRankOptions {
    bool useIDF = true;                         ///< rare keywords weigh more
    double tfSaturationK = 1.5;                 ///< 0 and below: only presence counts
    std::optional<double> recencyHalfLifeDays;  ///< none, 0 and below: age does not matter
    std::optional<ParticipationBoost> participation;
    double unmatchedMassLimit = 1.0;  ///< share of rarity in absent keywords beyond which the
                                      ///< question has no hits; 1 and above: no limit
    Instant now;
    bool operator==(const AnswerRankOptions&) const = default;
};

/// Forwards to `QueryTokenizer::keywords`.
std::vector<std::string> keywords(std::string_view question);

/// Forward to `Excerpt`.
std::string excerpt(std::string_view text, std::string_view term, std::size_t context);
std::string excerpt(std::string_view text, ByteRange range, std::size_t context);

/// The documents with a keyword of the question, by relevance, then by day (later first), then by
/// input order.
std::vector<AnswerHit> answerRank(std::span<const IdentifiedDocument> documents,
                                  std::string_view question, const AnswerRankOptions& options);
/// The same over the documents that the scope admits. Only hits are copied.
ScopedAnswerResult answerRank(std::span<const IdentifiedDocument> documents,
                              std::string_view question, const AnswerScope& scope,
                              const AnswerRankOptions& options);

/// 2 to the power of minus the age in half lives. 1 for today, for the future, for text that is not
/// a day, and without a half life above 0.
double recencyFactor(std::string_view date, Instant now, std::optional<double> halfLifeDays);

// ---- the two steps of `answerRank`, for a caller that reads a library file by file --------------

/// What the evidence must say about the user; nothing when the options do not ask.
std::optional<SpeakerQuestion> speakerQuestion(const AnswerRankOptions& options);

/// A hit by its index in the given evidence.
struct ScoredHit {
    std::size_t index = 0;
    std::int64_t matchedKeywords = 0;
    double relevance = 0;
    bool operator==(const ScoredHit&) const = default;
};

/// The hits among `evidence`, best first. `evidence` can leave out documents without a keyword;
/// `documentCount` includes them.
std::vector<ScoredHit> score(std::span<const DocumentEvidence> evidence, std::size_t documentCount,
                             std::size_t keywordCount, const AnswerRankOptions& options);

/// The match and its snippets, from the evidence that was collected from this document.
DocumentMatch matchFromEvidence(const TranscriptDocument& document,
                                const DocumentEvidence& evidence, const KeywordMatcher& keywords);
}  // namespace ombrix::RankedTranscriptSearch
