#include "OmbrixMemoryKit/Moves/PrepareInputBuilder.h"

#include <algorithm>
#include <map>
#include <utility>

#include "OmbrixMarkdownKit/Transcript/TextNormalize.h"
#include "OmbrixMarkdownKit/Transcript/TranscriptTurnID.h"
#include "OmbrixMemoryKit/Identity/CommitmentID.h"
#include "OmbrixMemoryKit/Identity/EntityKeys.h"
#include "OmbrixPlatform/Text.h"

namespace ombrix::PrepareInputBuilder {
namespace {

using Turns = std::span<const TranscriptDocument::Turn>;

constexpr std::size_t turnOverhead = 32;  // as LandInputBuilder counts

/// Turns that are taken as long as they fit.
class Selection {
  public:
    Selection(Turns turns, std::size_t maxBytes)
        : turns_(turns), taken_(turns.size(), false), left_(maxBytes) {}

    /// True when the turn is taken, now or before.
    bool take(std::size_t index) {
        if (taken_[index]) return true;
        const auto& turn = turns_[index];
        const auto cost = turn.speaker.size() + turn.text.size() + turnOverhead;
        if (cost > left_) return false;
        left_ -= cost;
        taken_[index] = true;
        return true;
    }

    std::vector<std::size_t> indices() const {
        std::vector<std::size_t> indices;
        for (std::size_t i = 0; i < taken_.size(); ++i)
            if (taken_[i]) indices.push_back(i);
        return indices;
    }

  private:
    Turns turns_;
    std::vector<bool> taken_;
    std::size_t left_;
};

/// The first turn that holds each quote.
std::vector<std::size_t> placesOf(std::span<const std::string> quotes, Turns turns) {
    std::vector<std::string> words;
    for (const auto& turn : turns) words.push_back(" " + TextNormalize::words(turn.text) + " ");
    std::vector<std::size_t> places;
    for (const auto& quote : quotes) {
        const std::string wanted = " " + TextNormalize::words(quote) + " ";
        const auto holds = [&](const std::string& text) { return Text::contains(text, wanted); };
        const auto found = std::ranges::find_if(words, holds);
        if (wanted.size() > 2 && found != words.end())
            places.push_back(static_cast<std::size_t>(found - words.begin()));
    }
    return places;
}

std::vector<std::string> quotesOf(const LandOutput& record) {
    std::vector<std::string> quotes;
    for (const auto& each : record.commitments) quotes.push_back(each.quote);
    for (const auto& each : record.decisions) quotes.push_back(each.quote);
    for (const auto& each : record.openQuestions) quotes.push_back(each.quote);
    return quotes;
}

/// The corrections of these commitments, under the ids that the model is given.
std::vector<Correction> correctionsOf(const LandSidecar& landed, const PersonAliases& aliases,
                                      std::span<const Correction> corrections) {
    std::map<std::string, std::string, std::less<>> idOf;  // of each id that may be written
    for (const auto& each : landed.output.commitments) {
        const auto id = [&](std::string_view key) {
            return CommitmentID::make(landed.meetingKey, each.what, key);
        };
        const auto shown = id(aliases.canonical(each.whoKey));
        idOf.emplace(id(each.whoKey), shown);
        for (const auto& key : aliases.aliases(each.whoKey)) idOf.emplace(id(key), shown);
    }
    std::vector<Correction> result;
    for (const auto& correction : corrections) {
        const auto found = idOf.find(Text::lowercased(correction.id));
        if (found == idOf.end()) continue;
        result.push_back(correction);
        result.back().id = found->second;
    }
    return Corrections::forRecipe(std::move(result));
}

PrepareCommitment shown(const LandCommitment& commitment, const LandSidecar& landed,
                        const PersonAliases& aliases) {
    const auto key = aliases.canonical(commitment.whoKey);
    PrepareCommitment result(CommitmentID::make(landed.meetingKey, commitment.what, key),
                             commitment);
    auto safe = EntityKeys::forModel(key, commitment.who);
    result.whoKey = std::move(safe.key);
    result.who = std::move(safe.display);
    return result;
}
}  // namespace

PrepareInput build(const LandSidecar& landed, const TranscriptDocument& document,
                   const PersonAliases& aliases, std::span<const Correction> corrections,
                   std::string userName, std::string today, std::size_t maxBytes) {
    const auto ids = TranscriptTurnID::ids(document.turns);
    PrepareInput input{
        .meeting = {.title = document.title,
                    .date = document.date,
                    .participants = document.participants,
                    .remoteLabelCount =
                        LandInputBuilder::remoteLabelCount(document.turns, userName)},
        .decisions = landed.output.decisions,
        .openQuestions = landed.output.openQuestions,
        .today = std::move(today),
        .corrections = Corrections::lines(correctionsOf(landed, aliases, corrections))};
    input.userName = std::move(userName);
    for (const auto index : window(document.turns, quotesOf(landed.output), maxBytes)) {
        const auto& turn = document.turns[index];
        input.meeting.turns.push_back({ids[index], turn.speaker, turn.text});
    }
    input.chunked = input.meeting.turns.size() < document.turns.size();
    for (const auto& each : landed.output.commitments)
        input.commitments.push_back(shown(each, landed, aliases));
    return input;
}

std::vector<std::size_t> window(Turns turns, std::span<const std::string> quotes,
                                std::size_t maxBytes) {
    Selection selection(turns, maxBytes);
    bool allFit = true;
    for (std::size_t i = 0; i < turns.size() && allFit; ++i) allFit = selection.take(i);
    if (allFit) return selection.indices();
    const auto firstTurns = selection.indices();
    selection = Selection(turns, maxBytes);
    const auto places = placesOf(quotes, turns);
    if (places.empty()) return firstTurns;
    bool hasRoom = true;
    for (const auto place : places) hasRoom = selection.take(place) && hasRoom;
    for (std::size_t distance = 1; hasRoom && distance < turns.size(); ++distance) {
        for (const auto place : places) {
            if (place >= distance) hasRoom = selection.take(place - distance) && hasRoom;
            if (place + distance < turns.size())
                hasRoom = selection.take(place + distance) && hasRoom;
        }
    }
    return selection.indices();
}
}  // namespace ombrix::PrepareInputBuilder
