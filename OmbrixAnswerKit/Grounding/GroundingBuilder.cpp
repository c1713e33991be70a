#include "OmbrixAnswerKit/Grounding/GroundingBuilder.h"

#include <algorithm>
#include <cstddef>
#include <string_view>
#include <utility>

#include "OmbrixAnswerKit/Grounding/ContextBudget.h"
#include "OmbrixAnswerKit/Shape/ListItem.h"
#include "OmbrixPlatform/Characters.h"
#include "OmbrixPlatform/Text.h"

namespace ombrix::GroundingBuilder {
namespace {

using ContextBudget::estimateTokens;

// What the JSON around a piece costs, in tokens.
constexpr std::int64_t turnCost = 8;
constexpr std::int64_t listItemCost = 2;
constexpr std::int64_t meetingCost = 24;

// ---- turns ------------------------------------------------------------------------------------

/// A turn without what surrounds its words; shows the document's.
struct SpokenTurn {
    std::string_view speaker, text;

    explicit SpokenTurn(const Turn& turn)
        : speaker(Text::trimmedBlanks(turn.speaker)), text(Text::trimmed(turn.text)) {}
    bool isEmpty() const { return speaker.empty() || text.empty(); }
    std::int64_t cost() const { return estimateTokens(speaker) + estimateTokens(text) + turnCost; }
    Turn copy() const { return {.speaker = std::string(speaker), .text = std::string(text)}; }
};

/// The indexes of the turns within `radius` of a hit, the nearest first, of one distance in order.
std::vector<std::size_t> nearestFirst(std::span<const std::int64_t> hits, std::int64_t radius,
                                      std::size_t count) {
    const auto unreached = static_cast<std::int64_t>(count);
    std::vector<std::int64_t> distance(count, unreached);
    for (const auto hit : hits)
        if (hit >= 0 && hit < unreached) distance[static_cast<std::size_t>(hit)] = 0;
    for (std::size_t i = 1; i < count; ++i)
        distance[i] = std::min(distance[i], distance[i - 1] + 1);
    for (std::size_t i = count; i-- > 1;)
        distance[i - 1] = std::min(distance[i - 1], distance[i] + 1);

    const auto reach =
        std::clamp<std::int64_t>(radius, 0, std::max<std::int64_t>(unreached, 1) - 1);
    std::vector<std::size_t> order;
    for (std::size_t i = 0; i < count; ++i)
        if (distance[i] <= reach) order.push_back(i);
    std::ranges::stable_sort(order, {}, [&](std::size_t i) { return distance[i]; });
    return order;
}

// ---- meetings ---------------------------------------------------------------------------------

std::optional<std::vector<std::string>> actionItems(const TranscriptDocument& document) {
    std::vector<std::string> items;
    for (const auto line : Text::split(document.actionItems, "\n")) {
        const auto trimmed = Text::trimmedBlanks(line);
        const auto item = ListItem::afterBullet(trimmed).value_or(trimmed);
        if (!item.empty()) items.emplace_back(item);
    }
    if (items.empty()) return std::nullopt;
    return items;
}

/// The meeting with the turns that its share of the budget has room for.
Meeting packed(const IdentifiedDocument& scoped, AskIntent intent, const HitLines& hitLines,
               std::int64_t share) {
    Meeting result = meeting(scoped.id, scoped.document, {});
    const auto allowance = std::max<std::int64_t>(share - headerCost(result), 0);
    const auto around = radius(intent);
    const auto hits = hitLines.find(scoped.id);
    result.turns = around && hits != hitLines.end()
                       ? turns(scoped.document, hits->second, *around, allowance)
                       : fullTurns(scoped.document, allowance);
    return result;
}

// ---- the trim ---------------------------------------------------------------------------------
//
// The budget holds for the canonical JSON of the whole pack. A meeting and a turn begin and end
// there with a brace, and no character spans two of braces, brackets and commas, so the characters
// of the pieces add up to those of the whole, and nothing is encoded twice.

template <typename Piece>
std::size_t canonicalCharacters(const Piece& piece) {
    return Characters::count(Json::write(encode(piece), Json::Style::canonical));
}

bool isOver(std::int64_t budgetTokens, std::size_t characters) {
    return budgetTokens < ContextBudget::tokensOfCharacters(characters);
}

/// Removes turns from the end of a pack's only meeting; `characters` are the pack's.
void trimTurns(std::vector<Turn>& turns, std::size_t characters, std::int64_t budgetTokens) {
    while (!turns.empty() && isOver(budgetTokens, characters)) {
        const std::size_t comma = turns.size() > 1 ? 1 : 0;
        characters -= canonicalCharacters(turns.back()) + comma;
        turns.pop_back();
    }
}

std::vector<const IdentifiedDocument*> newestFirst(std::span<const IdentifiedDocument> scoped) {
    std::vector<const IdentifiedDocument*> order;
    order.reserve(scoped.size());
    for (const auto& each : scoped) order.push_back(&each);
    std::ranges::stable_sort(
        order, std::ranges::greater(),
        [](const IdentifiedDocument* each) -> const std::string& { return each->document.date; });
    return order;
}
}  // namespace

AnswerContextPack build(std::span<const IdentifiedDocument> scoped, AskIntent intent,
                        const HitLines& hitLines, std::int64_t budgetTokens) {
    if (scoped.empty()) return AnswerContextPack::of({});
    const auto share = std::max(budgetTokens / static_cast<std::int64_t>(scoped.size()),
                                ContextBudget::minimumPerMeeting);
    std::vector<Meeting> meetings;
    std::size_t characters =
        Characters::count(AnswerContextPack::canonicalJSON(AnswerContextPack::currentVersion, {}));
    // Each meeting makes the pack longer: after the first that does not fit, none does.
    for (const IdentifiedDocument* each : newestFirst(scoped)) {
        Meeting next = packed(*each, intent, hitLines, share);
        const std::size_t comma = meetings.empty() ? 0 : 1;
        const std::size_t withIt = characters + comma + canonicalCharacters(next);
        if (!meetings.empty() && isOver(budgetTokens, withIt)) break;
        characters = withIt;
        meetings.push_back(std::move(next));
    }
    if (meetings.size() == 1) trimTurns(meetings.front().turns, characters, budgetTokens);
    return AnswerContextPack::of(std::move(meetings));
}

Meeting meeting(const std::string& id, const TranscriptDocument& document,
                std::vector<Turn> turns) {
    Meeting result{.id = id,
                   .title = document.title,
                   .date = document.date,
                   .participants = document.participants,
                   .turns = std::move(turns),
                   .notes = {},
                   .actionItems = actionItems(document)};
    if (document.hasUserNotes()) result.notes = Text::trimmed(document.notes);
    return result;
}

std::int64_t headerCost(const Meeting& meeting) {
    std::int64_t cost = meetingCost + estimateTokens(meeting.id) + estimateTokens(meeting.title) +
                        estimateTokens(meeting.date);
    for (const auto& name : meeting.participants) cost += estimateTokens(name) + listItemCost;
    if (meeting.notes) cost += estimateTokens(*meeting.notes);
    if (meeting.actionItems)
        for (const auto& item : *meeting.actionItems) cost += estimateTokens(item) + listItemCost;
    return cost;
}

std::optional<std::int64_t> radius(AskIntent intent) {
    switch (intent) {
        case AskIntent::plan:
        case AskIntent::myCommitments:
        case AskIntent::owedToMe:
        case AskIntent::decisions:
            return 2;
        case AskIntent::freeform:
            return 6;
        case AskIntent::catchUp:
        case AskIntent::openEnded:
            break;
    }
    return std::nullopt;
}

std::vector<Turn> turns(const TranscriptDocument& document, std::span<const std::int64_t> hits,
                        std::int64_t radius, std::int64_t budgetTokens) {
    const auto claimed = nearestFirst(hits, radius, document.turns.size());
    if (claimed.empty()) return fullTurns(document, budgetTokens);
    std::vector<std::size_t> kept;
    std::int64_t used = 0;
    for (const auto index : claimed) {
        const SpokenTurn turn(document.turns[index]);
        if (turn.isEmpty()) continue;
        const auto cost = turn.cost();
        if (used + cost > budgetTokens) continue;
        used += cost;
        kept.push_back(index);
    }
    std::ranges::sort(kept);
    std::vector<Turn> result;
    for (const auto index : kept) result.push_back(SpokenTurn(document.turns[index]).copy());
    return result;
}

std::vector<Turn> fullTurns(const TranscriptDocument& document, std::int64_t budgetTokens) {
    std::vector<Turn> result;
    std::int64_t used = 0;
    for (const auto& each : document.turns) {
        const SpokenTurn turn(each);
        if (turn.isEmpty()) continue;
        used += turn.cost();
        if (used > budgetTokens) break;
        result.push_back(turn.copy());
    }
    return result;
}
}  // namespace ombrix::GroundingBuilder
