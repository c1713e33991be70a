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

/// The inverse document frequency of each keyword, and how many documents hold it.
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

/// True when the words that carry the question stand in no document.
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

std::string spoken(const TranscriptDocument::Turn& turn, const std::string& excerpt) {
    return "**" + turn.speaker + ":** " + excerpt;
}

std::size_t countTurns(const std::vector<TermEvidence>& terms) {
    std::vector<std::size_t> turns;
    for (const auto& term : terms)
        turns.insert(turns.end(), term.turnIndexes.begin(), term.turnIndexes.end());
    std::ranges::sort(turns);
    return static_cast<std::size_t>(std::ranges::unique(turns).begin() - turns.begin());
}

/// Up to the limit: for each keyword in order an excerpt of its first turn that has given none yet.
/// Keywords that stand in body fields and find no such turn wait until all others have had theirs.
std::vector<std::string> snippetsOf(const TranscriptDocument& document,
                                    const std::vector<TermEvidence>& terms,
                                    const KeywordMatcher& keywords) {
    std::vector<std::string> snippets;
    std::vector<std::size_t> used;
    std::vector<const TermEvidence*> waiting;
    for (const auto& term : terms) {
        if (snippets.size() == snippetLimit) return snippets;
        const auto turn = std::ranges::find_if(term.turnIndexes, [&](std::size_t index) {
            return std::ranges::find(used, index) == used.end();
        });
        if (turn == term.turnIndexes.end()) {
            if (!term.bodyIndexes.empty()) waiting.push_back(&term);
            continue;
        }
        used.push_back(*turn);
        const auto& spokenTurn = document.turns[*turn];
        snippets.push_back(
            spoken(spokenTurn, excerptOf(spokenTurn.text, keywords.keywords()[term.keyword])));
    }
    const auto bodies = bodyFields(document);
    for (const auto* term : waiting) {
        if (snippets.size() == snippetLimit) break;
        snippets.push_back(
            excerptOf(bodies[term->bodyIndexes.front()], keywords.keywords()[term->keyword]));
    }
    return snippets;
}
}  // namespace

std::vector<std::string> terms(std::optional<std::string_view> query) {
    return query ? QueryTokenizer::terms(*query) : std::vector<std::string>();
}

std::vector<std::string> keywords(std::string_view question) {
    return QueryTokenizer::keywords(question);
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
    DocumentMatch match;
    match.matchingTurns = static_cast<std::int64_t>(countTurns(evidence.terms));
    match.score = match.matchingTurns;
    if (std::ranges::any_of(evidence.terms, &TermEvidence::titleHit))
        match.score += titleMatchScore;
    if (std::ranges::any_of(evidence.terms, &TermEvidence::participantHit))
        match.score += participantMatchScore;
    match.snippets = snippetsOf(document, evidence.terms, keywords);
    return match;
}

std::vector<AnswerHit> answerRank(std::span<const IdentifiedDocument> documents,
                                  std::string_view question, const AnswerRankOptions& options) {
    const KeywordMatcher matcher(keywords(question));
    EvidenceCollector collector(matcher, speakerQuestion(options));
    std::vector<DocumentEvidence> evidence;
    evidence.reserve(documents.size());
    for (const auto& entry : documents) evidence.push_back(collector.collect(entry.document));
    std::vector<AnswerHit> hits;
    for (const auto& hit : score(evidence, documents.size(), matcher.keywords().size(), options)) {
        const auto& [id, document] = documents[hit.index];
        hits.push_back({.id = id,
                        .document = document,
                        .matchedKeywords = hit.matchedKeywords,
                        .match = matchFromEvidence(document, evidence[hit.index], matcher),
                        .relevance = hit.relevance});
    }
    return hits;
}

ScopedAnswerResult answerRank(std::span<const IdentifiedDocument> documents,
                              std::string_view question, const AnswerScope& scope,
                              const AnswerRankOptions& options) {
    const auto scoped = scope.apply(documents);
    return {.hits = answerRank(scoped, question, options),
            .scannedCount = static_cast<std::int64_t>(scoped.size())};
}
}  // namespace ombrix::RankedTranscriptSearch
