#include "OmbrixMarkdownKit/Search/RankedTranscriptSearch.h"

#include <algorithm>
#include <array>
#include <cmath>

#include "OmbrixMarkdownKit/Search/Excerpt.h"
#include "OmbrixMarkdownKit/Words/QueryTokenizer.h"
#include "OmbrixPlatform/Characters.h"
#include "OmbrixPlatform/Numbers.h"
#include "OmbrixPlatform/Text.h"

namespace ombrix::RankedTranscriptSearch {
namespace {

std::optional<Instant> utcMidnight(std::string_view day) {
    const auto parts = Text::splitDroppingEmpty(Characters::prefix(day, 10), "-");
    if (parts.size() != 3) return std::nullopt;
    std::array<std::int64_t, 3> numbers{};
    for (std::size_t i = 0; i < numbers.size(); ++i) {
        const auto number = Numbers::parseInteger<std::int64_t>(parts[i]);
        if (!number) return std::nullopt;
        numbers[i] = *number;
    }
    return Calendar::gregorianUtc().midnight(numbers[0], numbers[1], numbers[2]);
}

/// The inverse document frequency of each keyword, and how many documents have it.
struct Rarity {
    std::vector<double> idf;
    std::vector<std::size_t> documents;
};

Rarity rarity(std::span<const DocumentEvidence> evidence, std::size_t documentCount,
              std::size_t keywordCount, bool useIDF) {
    Rarity result{std::vector<double>(keywordCount, 1.0),
                  std::vector<std::size_t>(keywordCount, 0)};
    for (const auto& document : evidence)
        for (const auto& term : document.terms) ++result.documents[term.keyword];
    if (!useIDF) return result;
    const double total = static_cast<double>(documentCount) + 1;
    for (std::size_t i = 0; i < keywordCount; ++i)
        result.idf[i] = std::log(total / (static_cast<double>(result.documents[i]) + 1)) + 1;
    return result;
}

/// True when the words that matter most in the question are in no document.
bool refusesToRank(const Rarity& rarity, std::size_t documentCount,
                   const AnswerRankOptions& options) {
    if (!options.useIDF || documentCount < 2 || options.unmatchedMassLimit >= 1) return false;
    double total = 0;
    double unmatched = 0;
    for (std::size_t i = 0; i < rarity.idf.size(); ++i) {
        total += rarity.idf[i];
        if (rarity.documents[i] == 0) unmatched += rarity.idf[i];
    }
    return total > 0 && unmatched / total > options.unmatchedMassLimit;
}

double relevance(const DocumentEvidence& document, const Rarity& rarity,
                 const AnswerRankOptions& options) {
    const double k = std::max(options.tfSaturationK, 0.0);
    double sum = 0;
    for (const auto& term : document.terms)
        sum += rarity.idf[term.keyword] * ((k + 1) * term.tf) / (k + term.tf);
    sum *= recencyFactor(document.date, options.now, options.recencyHalfLifeDays);
    if (options.participation && document.userSpoke) sum *= 1 + options.participation->boost;
    return sum;
}

std::string excerptOf(std::string_view text, const std::vector<std::string>& stems) {
    if (const auto range = QueryTokenizer::firstRange(stems, text))
        return Excerpt::at(text, *range, snippetContext);
    return std::string(Characters::prefix(text, 2 * snippetContext));
}
}  // namespace

std::vector<std::string> keywords(std::string_view question) {
    return QueryTokenizer::keywords(question);
}

std::string excerpt(std::string_view text, std::string_view term, std::size_t context) {
    return Excerpt::around(text, term, context);
}

std::string excerpt(std::string_view text, ByteRange range, std::size_t context) {
    return Excerpt::at(text, range, context);
}

double recencyFactor(std::string_view date, Instant now, std::optional<double> halfLifeDays) {
    if (!halfLifeDays || !(*halfLifeDays > 0)) return 1.0;
    const auto midnight = utcMidnight(date);
    if (!midnight) return 1.0;
    constexpr double secondsPerDay = 86400;
    const double age = static_cast<double>((now - *midnight).count()) / secondsPerDay;
    return std::exp2(-std::max(age, 0.0) / *halfLifeDays);
}

std::optional<SpeakerQuestion> speakerQuestion(const AnswerRankOptions& options) {
    if (!options.participation) return std::nullopt;
    return SpeakerQuestion{SpeakerIdentity(options.participation->userAliases),
                           options.participation->minTurns};
}

std::vector<ScoredHit> score(std::span<const DocumentEvidence> evidence, std::size_t documentCount,
                             std::size_t keywordCount, const AnswerRankOptions& options) {
    const Rarity found = rarity(evidence, documentCount, keywordCount, options.useIDF);
    if (refusesToRank(found, documentCount, options)) return {};
    std::vector<ScoredHit> hits;
    for (std::size_t i = 0; i < evidence.size(); ++i) {
        if (!evidence[i].terms.empty()) {
            hits.push_back({.index = i,
                            .matchedKeywords = static_cast<std::int64_t>(evidence[i].terms.size()),
                            .relevance = relevance(evidence[i], found, options)});
        }
    }
    std::ranges::stable_sort(hits, [&](const ScoredHit& a, const ScoredHit& b) {
        if (a.relevance != b.relevance) return a.relevance > b.relevance;
        return evidence[a.index].date > evidence[b.index].date;
    });
    return hits;
}

DocumentMatch matchFromEvidence(const TranscriptDocument& document,
                                const DocumentEvidence& evidence, const KeywordMatcher& keywords) {
    return DocumentMatch::of(document, evidence.terms,
                             [&](std::size_t keyword, std::string_view text) {
                                 return excerptOf(text, keywords.keywords()[keyword]);
                             });
}

std::vector<AnswerHit> answerRank(std::span<const IdentifiedDocument> documents,
                                  std::string_view question, const AnswerRankOptions& options) {
    return answerRank(documents, question, AnswerScope::all, options).hits;
}

ScopedAnswerResult answerRank(std::span<const IdentifiedDocument> documents,
                              std::string_view question, const AnswerScope& scope,
                              const AnswerRankOptions& options) {
    const KeywordMatcher matcher(keywords(question));
    EvidenceCollector collector(matcher, speakerQuestion(options));
    const auto admitted = scope.admittedIndexes(documents);
    std::vector<DocumentEvidence> evidence;
    evidence.reserve(admitted.size());
    for (const std::size_t i : admitted)
        evidence.push_back(collector.collect(documents[i].document));
    ScopedAnswerResult result{.scannedCount = static_cast<std::int64_t>(admitted.size())};
    for (const auto& hit : score(evidence, admitted.size(), matcher.keywords().size(), options)) {
        const auto& [id, document] = documents[admitted[hit.index]];
        result.hits.push_back({.id = id,
                               .document = document,
                               .matchedKeywords = hit.matchedKeywords,
                               .match = matchFromEvidence(document, evidence[hit.index], matcher),
                               .relevance = hit.relevance});
    }
    return result;
}
}  // namespace ombrix::RankedTranscriptSearch
