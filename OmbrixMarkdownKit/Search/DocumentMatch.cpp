#include "OmbrixMarkdownKit/Search/DocumentMatch.h"

#include <algorithm>

namespace ombrix {
namespace {

std::size_t countTurns(std::span<const TermEvidence> terms) {
    std::vector<std::size_t> turns;
    for (const auto& term : terms)
        turns.insert(turns.end(), term.turnIndexes.begin(), term.turnIndexes.end());
    std::ranges::sort(turns);
    return static_cast<std::size_t>(std::ranges::unique(turns).begin() - turns.begin());
}

/// For each term in order an excerpt of its first turn that has given none yet. Terms that find no
/// such turn but are in a body field wait until all others have had theirs.
std::vector<std::string> snippetsOf(const TranscriptDocument& document,
                                    std::span<const TermEvidence> terms,
                                    const DocumentMatch::ExcerptOf& excerptOf) {
    std::vector<std::string> snippets;
    std::vector<std::size_t> used;
    std::vector<const TermEvidence*> waiting;
    for (const auto& term : terms) {
        if (snippets.size() == snippetLimit) return snippets;
        const auto index = std::ranges::find_if(term.turnIndexes, [&](std::size_t turn) {
            return std::ranges::find(used, turn) == used.end();
        });
        if (index == term.turnIndexes.end()) {
            if (!term.bodyIndexes.empty()) waiting.push_back(&term);
            continue;
        }
        used.push_back(*index);
        const auto& [speaker, text] = document.turns[*index];
        snippets.push_back("**" + speaker + ":** " + excerptOf(term.keyword, text));
    }
    const auto bodies = bodyFields(document);
    for (const auto* term : waiting) {
        if (snippets.size() == snippetLimit) break;
        snippets.push_back(excerptOf(term->keyword, bodies[term->bodyIndexes.front()]));
    }
    return snippets;
}
}  // namespace

DocumentMatch DocumentMatch::of(const TranscriptDocument& document,
                                std::span<const TermEvidence> terms, const ExcerptOf& excerptOf) {
    DocumentMatch match;
    match.matchingTurns = static_cast<std::int64_t>(countTurns(terms));
    match.score = match.matchingTurns;
    if (std::ranges::any_of(terms, &TermEvidence::titleHit)) match.score += titleMatchScore;
    if (std::ranges::any_of(terms, &TermEvidence::participantHit))
        match.score += participantMatchScore;
    match.snippets = snippetsOf(document, terms, excerptOf);
    return match;
}
}  // namespace ombrix
