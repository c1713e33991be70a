// Finds and orders transcripts for a question, with no index on disk. `rank` is the plain ranker:
// every term must stand somewhere as a substring, a small integer orders the hits. `answerRank` is
// the one that answers run on: stemmed keywords, saturated frequency, rarity, recency, and a boost
// for meetings in which the user spoke. Nothing here fails; a question without keywords has no
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
#include "OmbrixMarkdownKit/Search/TermEvidence.h"
#include "OmbrixMarkdownKit/Transcript/TranscriptDocument.h"
#include "OmbrixPlatform/ByteRange.h"
#include "OmbrixPlatform/Calendar.h"

namespace ombrix::RankedTranscriptSearch {

/// What a document matched with.
struct DocumentMatch {
    std::int64_t score = 0;
    std::int64_t matchingTurns = 0;
    std::vector<std::string> snippets;  ///< at most `snippetLimit`, best first
    bool operator==(const DocumentMatch&) const = default;
};

struct RankedHit {
    std::string id;
    TranscriptDocument document;
    DocumentMatch match;
    bool operator==(const RankedHit&) const = default;
};

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
    double tfSaturationK = 1.5;                 ///< 0 and below: the mere presence counts
    std::optional<double> recencyHalfLifeDays;  ///< nothing, 0 and below: age does not matter
    std::optional<ParticipationBoost> participation;
    double unmatchedMassLimit = 1.0;  ///< share of rarity in absent keywords beyond which the
                                      ///< question has no hits; 1 and above: no limit
    Instant now;
    bool operator==(const AnswerRankOptions&) const = default;
};

/// What a term in the title, and one in a participant's name, adds to a match's score once.
constexpr std::int64_t titleMatchScore = 3;
constexpr std::int64_t participantMatchScore = 2;

constexpr std::size_t snippetLimit = 3;
constexpr std::size_t snippetContext = 90;  ///< characters on each side of a hit

/// Forwards to `QueryTokenizer::terms`; none without a query.
std::vector<std::string> terms(std::optional<std::string_view> query);
/// Forwards to `QueryTokenizer::keywords`.
std::vector<std::string> keywords(std::string_view question);

/// True when `term` stands in `text`, ignoring case and diacritics.
bool termMatches(std::string_view text, std::string_view term);
/// Forward to `Excerpt`.
std::string excerpt(std::string_view text, std::string_view term, std::size_t context);
std::string excerpt(std::string_view text, ByteRange range, std::size_t context);

/// How a document matches when every term must stand in a turn, a body field, the title or a
/// participant's name; nothing when a term stands nowhere. No terms match everything, with score 0.
std::optional<DocumentMatch> match(const TranscriptDocument& document,
                                   const std::vector<std::string>& terms);

/// The documents that match all terms of the query, by score, then by input order. No query, no
/// hits.
std::vector<RankedHit> rank(std::span<const IdentifiedDocument> documents,
                            std::optional<std::string_view> query);

/// The documents that hold a keyword of the question, by relevance, then the later day, then input
/// order.
std::vector<AnswerHit> answerRank(std::span<const IdentifiedDocument> documents,
                                  std::string_view question, const AnswerRankOptions& options);
/// The same over the documents that the scope admits.
ScopedAnswerResult answerRank(std::span<const IdentifiedDocument> documents,
                              std::string_view question, const AnswerScope& scope,
                              const AnswerRankOptions& options);

/// 2 to the power of minus the age in half lives: 1 today and in the future, 1 for a day that is
/// none, 1 without a half life above 0.
double recencyFactor(std::string_view date, Instant now, std::optional<double> halfLifeDays);

// ---- the two steps of `answerRank`, for a caller that reads a library file by file --------------

/// What the options ask of the evidence about the user.
std::optional<SpeakerQuestion> speakerQuestion(const AnswerRankOptions& options);

/// A hit by its place in the evidence that was given.
struct ScoredHit {
    std::size_t index = 0;
    std::int64_t matchedKeywords = 0;
    double relevance = 0;
    bool operator==(const ScoredHit&) const = default;
};

/// The hits among `evidence`, in order. `evidence` may leave out documents without a keyword;
/// `documentCount` counts those as well.
std::vector<ScoredHit> score(std::span<const DocumentEvidence> evidence, std::size_t documentCount,
                             std::size_t keywordCount, const AnswerRankOptions& options);

/// The match and its snippets, from the evidence that was collected of this document.
DocumentMatch matchFromEvidence(const TranscriptDocument& document,
                                const DocumentEvidence& evidence, const KeywordMatcher& keywords);
}  // namespace ombrix::RankedTranscriptSearch
