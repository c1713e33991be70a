// The plain ranker: every term must stand somewhere in the document, as a substring.
#include <algorithm>
#include <span>

#include "OmbrixMarkdownKit/Search/Excerpt.h"
#include "OmbrixMarkdownKit/Search/RankedTranscriptSearch.h"
#include "OmbrixMarkdownKit/Words/QueryTokenizer.h"
#include "OmbrixPlatform/FoldedText.h"

namespace ombrix::RankedTranscriptSearch {
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

bool anyHolds(const std::vector<FoldedText>& fields, std::string_view term) {
    return std::ranges::any_of(fields, [&](const auto& field) { return field.contains(term); });
}

bool holds(const FoldedDocument& document, std::string_view term) {
    return anyHolds(document.turns, term) || anyHolds(document.bodies, term) ||
           document.title.contains(term) || anyHolds(document.participants, term);
}

std::vector<std::string> snippetsOf(const TranscriptDocument& document,
                                    const FoldedDocument& folded,
                                    const std::vector<std::string>& terms) {
    std::vector<std::string> snippets;
    std::vector<bool> used(document.turns.size());
    std::vector<std::string_view> waiting;
    for (const std::string& term : terms) {
        if (snippets.size() == snippetLimit) return snippets;
        std::size_t turn = 0;
        while (turn < used.size() && (used[turn] || !folded.turns[turn].contains(term))) ++turn;
        if (turn == used.size()) {
            waiting.push_back(term);
            continue;
        }
        used[turn] = true;
        const auto& [speaker, text] = document.turns[turn];
        snippets.push_back("**" + speaker + ":** " + Excerpt::around(text, term, snippetContext));
    }
    const auto bodies = bodyFields(document);
    for (const auto term : waiting) {
        if (snippets.size() == snippetLimit) break;
        for (std::size_t i = 0; i < bodies.size(); ++i) {
            if (folded.bodies[i].contains(term)) {
                snippets.push_back(Excerpt::around(bodies[i], term, snippetContext));
                break;
            }
        }
    }
    return snippets;
}
}  // namespace

bool termMatches(std::string_view text, std::string_view term) {
    return FoldedText(text).contains(term);
}

std::string excerpt(std::string_view text, std::string_view term, std::size_t context) {
    return Excerpt::around(text, term, context);
}

std::string excerpt(std::string_view text, ByteRange range, std::size_t context) {
    return Excerpt::at(text, range, context);
}

std::optional<DocumentMatch> match(const TranscriptDocument& document,
                                   const std::vector<std::string>& terms) {
    if (terms.empty()) return DocumentMatch{};
    const FoldedDocument folded(document);
    if (!std::ranges::all_of(terms, [&](const auto& term) { return holds(folded, term); }))
        return std::nullopt;
    const auto anyTerm = [&](const auto& test) { return std::ranges::any_of(terms, test); };
    DocumentMatch match;
    match.matchingTurns = std::ranges::count_if(folded.turns, [&](const auto& turn) {
        return anyTerm([&](const auto& term) { return turn.contains(term); });
    });
    match.score = match.matchingTurns;
    if (anyTerm([&](const auto& term) { return folded.title.contains(term); }))
        match.score += titleMatchScore;
    if (anyTerm([&](const auto& term) { return anyHolds(folded.participants, term); }))
        match.score += participantMatchScore;
    match.snippets = snippetsOf(document, folded, terms);
    return match;
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
}  // namespace ombrix::RankedTranscriptSearch
