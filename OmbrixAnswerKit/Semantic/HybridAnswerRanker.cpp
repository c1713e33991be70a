#include "OmbrixAnswerKit/Semantic/HybridAnswerRanker.h"

#include <algorithm>
#include <compare>
#include <ranges>
#include <string>
#include <string_view>
#include <unordered_map>
#include <unordered_set>
#include <utility>

namespace ombrix::HybridAnswerRanker {
namespace {

using RankedTranscriptSearch::AnswerHit;
using Numbers = std::unordered_map<std::string_view, double>;
using IDs = std::unordered_set<std::string_view>;

/// The smallest as 0, the largest as 1. All 1 when they are equal, so also a single one.
Numbers normalized(Numbers numbers) {
    if (numbers.empty()) return numbers;
    const auto [least, most] = std::ranges::minmax(numbers | std::views::values);
    for (auto& [id, number] : numbers)
        number = least < most ? (number - least) / (most - least) : 1.0;
    return numbers;
}

double valueOrZero(const Numbers& numbers, std::string_view id) {
    const auto found = numbers.find(id);
    return found == numbers.end() ? 0 : found->second;
}

/// The documents that only meaning found and that come in.
IDs rescued(const SemanticScores& semantic, const Numbers& normSemantic, const IDs& scopedIDs,
            const std::unordered_map<std::string_view, const AnswerHit*>& hitsByID) {
    std::vector<const SemanticScores::value_type*> strong;
    for (const auto& entry : semantic) {
        if (hitsByID.contains(entry.first) || !scopedIDs.contains(entry.first)) continue;
        if (entry.second.score >= rescueFloorAbsolute &&
            valueOrZero(normSemantic, entry.first) >= rescueFloorNormalized)
            strong.push_back(&entry);
    }
    // Of equal scores the smaller id comes first, as in the map.
    std::ranges::stable_sort(
        strong, [](const auto* a, const auto* b) { return a->second.score > b->second.score; });
    IDs result;
    for (const auto* entry : strong | std::views::take(rescueLimit)) result.insert(entry->first);
    return result;
}

AnswerHit semanticHit(const IdentifiedDocument& scoped, const SemanticDocScore& score) {
    return {.id = scoped.id,
            .document = scoped.document,
            .matchedKeywords = 0,
            .match = {.score = 0, .matchingTurns = 0, .snippets = {score.bestChunk}},
            .relevance = 0};
}

struct Candidate {
    const IdentifiedDocument* scoped;
    const AnswerHit* hit;  // null for one that only meaning found
    double combined;

    const std::string& date() const { return (hit ? hit->document : scoped->document).date; }
};

bool isBetter(const Candidate& a, const Candidate& b) {
    // A total order, also over numbers that are none.
    if (const auto order = std::weak_order(a.combined, b.combined); order != 0) return order > 0;
    if (a.date() != b.date()) return a.date() > b.date();
    return a.scoped->id < b.scoped->id;
}
}  // namespace

std::vector<AnswerHit> rank(std::span<const IdentifiedDocument> scoped,
                            std::span<const AnswerHit> lexicalHits, const SemanticScores& semantic,
                            double alpha) {
    Numbers lexical, meaning;
    std::unordered_map<std::string_view, const AnswerHit*> hitsByID;
    for (const auto& hit : lexicalHits) {
        lexical.insert_or_assign(hit.id, hit.relevance);
        hitsByID.emplace(hit.id, &hit);
    }
    for (const auto& [id, score] : semantic) meaning.emplace(id, score.score);
    const Numbers normLexical = normalized(std::move(lexical));
    const Numbers normSemantic = normalized(std::move(meaning));
    IDs scopedIDs;
    for (const auto& each : scoped) scopedIDs.insert(each.id);
    const IDs extra = rescued(semantic, normSemantic, scopedIDs, hitsByID);

    std::vector<Candidate> candidates;
    for (const auto& each : scoped) {
        const auto hit = hitsByID.find(each.id);
        if (hit == hitsByID.end() && !extra.contains(each.id)) continue;
        candidates.push_back({.scoped = &each,
                              .hit = hit == hitsByID.end() ? nullptr : hit->second,
                              .combined = (1 - alpha) * valueOrZero(normLexical, each.id) +
                                          alpha * valueOrZero(normSemantic, each.id)});
    }
    std::ranges::stable_sort(candidates, isBetter);

    std::vector<AnswerHit> ranked;
    ranked.reserve(candidates.size());
    for (const auto& [each, hit, combined] : candidates)
        ranked.push_back(hit ? *hit : semanticHit(*each, semantic.find(each->id)->second));
    return ranked;
}
}  // namespace ombrix::HybridAnswerRanker
