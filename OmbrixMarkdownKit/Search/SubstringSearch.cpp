#include "OmbrixMarkdownKit/Search/SubstringSearch.h"

#include <algorithm>
#include <utility>

#include "OmbrixMarkdownKit/Search/Excerpt.h"
#include "OmbrixMarkdownKit/Words/QueryTokenizer.h"
#include "OmbrixPlatform/FoldedText.h"

namespace ombrix::SubstringSearch {
namespace {

/// A document made ready for searches that ignore case and diacritics: each field is folded once.
struct FoldedDocument {
    std::vector<FoldedText> turns, bodies, participants;
    FoldedText title;

    explicit FoldedDocument(const TranscriptDocument& document) : title(document.title) {
        for (const auto& turn : document.turns) turns.emplace_back(turn.text);
        for (const auto body : bodyFields(document)) bodies.emplace_back(body);
        for (const auto& name : document.participants) participants.emplace_back(name);
    }
};

std::vector<std::size_t> indexesHolding(const std::vector<FoldedText>& fields,
                                        std::string_view term) {
    std::vector<std::size_t> indexes;
    for (std::size_t i = 0; i < fields.size(); ++i)
        if (fields[i].contains(term)) indexes.push_back(i);
    return indexes;
}

/// Nothing when the term is nowhere in the document. This ranker does not weigh: `tf` stays 0.
std::optional<TermEvidence> evidenceOf(const FoldedDocument& document, std::size_t index,
                                       std::string_view term) {
    TermEvidence found{.keyword = index,
                       .turnIndexes = indexesHolding(document.turns, term),
                       .bodyIndexes = indexesHolding(document.bodies, term),
                       .titleHit = document.title.contains(term),
                       .participantHit = !indexesHolding(document.participants, term).empty()};
    const bool isAnywhere = !found.turnIndexes.empty() || !found.bodyIndexes.empty() ||
                            found.titleHit || found.participantHit;
    return isAnywhere ? std::optional(std::move(found)) : std::nullopt;
}
}  // namespace

std::vector<std::string> terms(std::optional<std::string_view> query) {
    return query ? QueryTokenizer::terms(*query) : std::vector<std::string>();
}

bool termMatches(std::string_view text, std::string_view term) {
    return FoldedText(text).contains(term);
}

std::optional<DocumentMatch> match(const TranscriptDocument& document,
                                   const std::vector<std::string>& terms) {
    if (terms.empty()) return DocumentMatch{};
    const FoldedDocument folded(document);
    std::vector<TermEvidence> evidence;
    for (const std::string& term : terms) {
        auto found = evidenceOf(folded, evidence.size(), term);
        if (!found) return std::nullopt;
        evidence.push_back(std::move(*found));
    }
    return DocumentMatch::of(document, evidence, [&](std::size_t term, std::string_view text) {
        return Excerpt::around(text, terms[term], snippetContext);
    });
}

std::vector<RankedHit> rank(std::span<const IdentifiedDocument> documents,
                            std::optional<std::string_view> query) {
    const auto wanted = terms(query);
    std::vector<RankedHit> hits;
    if (wanted.empty()) return hits;
    for (const auto& [id, document] : documents) {
        if (auto found = match(document, wanted))
            hits.push_back({.id = id, .document = document, .match = std::move(*found)});
    }
    std::ranges::stable_sort(
        hits, [](const RankedHit& a, const RankedHit& b) { return a.match.score > b.match.score; });
    return hits;
}
}  // namespace ombrix::SubstringSearch
