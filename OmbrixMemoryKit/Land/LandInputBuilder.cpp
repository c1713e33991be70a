#include "OmbrixMemoryKit/Land/LandInputBuilder.h"

#include <algorithm>
#include <functional>
#include <set>
#include <utility>

#include "OmbrixMemoryKit/Identity/EntityKeys.h"
#include "OmbrixPlatform/Characters.h"
#include "OmbrixPlatform/Text.h"

namespace ombrix::LandInputBuilder {
namespace {

constexpr std::size_t mostStubs = 3;
constexpr std::size_t turnOverhead = 32;  // bytes of JSON around a speaker and a text

std::string quoted(std::string_view text) { return "\"" + std::string(text) + "\""; }

std::string resting(const std::string& quote) { return " — " + quoted(quote); }

std::string line(const LandDecision& each) {
    return "Decision (" + each.speaker + "): " + each.text + resting(each.quote);
}

std::string line(const LandOpenQuestion& each) {
    return "Open question: " + each.text + resting(each.quote);
}

std::string line(const LandCommitment& each) {
    std::string text = "Commitment [";
    text += rawValue(each.direction);
    text += ", ";
    text += rawValue(each.certainty);
    return text + "] " + each.speaker + " → " + each.who + " (" + each.whoKey + "): " + each.what +
           "; due " + each.due.value_or("null") + " (" + quoted(each.dueRaw) + ")" +
           resting(each.quote);
}

std::string line(const LandResolution& each) {
    return "Resolution " + each.id + ": " + std::string(rawValue(each.status)) + " new_due " +
           each.newDue.value_or("null") + resting(each.quote);
}

std::string line(const LandMemoryFact& each) {
    std::string text = "Memory [";
    text += rawValue(each.kind);
    text += ", ";
    text += rawValue(each.certainty);
    return text + "] " + each.entityKey + ": " + each.fact + resting(each.quote);
}

std::string linesOf(const LandOutput& output) {
    std::string text = "Summary: " + output.summary;
    const auto append = [&](const auto& claims) {
        for (const auto& claim : claims) text += "\n" + line(claim);
    };
    append(output.decisions);
    append(output.openQuestions);
    append(output.commitments);
    append(output.resolutions);
    append(output.memory);
    if (!output.unresolvedSpeakers.empty())
        text += "\nUnresolved speakers: " + Text::joined(output.unresolvedSpeakers, ", ");
    for (const auto& each : output.notSure) text += "\nNot sure: " + each;
    return text;
}

std::string firstWord(std::string_view name) {
    const std::string lowered = Text::lowercased(name);
    const auto words = Characters::splitAtWhiteSpace(lowered);
    return words.empty() ? std::string() : std::string(words.front());
}

/// The one participant whose first word is the user's whole name; null when there are several.
const std::string* onlyNamesake(const std::vector<std::string>& participants,
                                std::string_view userName) {
    if (Characters::splitAtWhiteSpace(Text::trimmed(userName)).size() != 1) return nullptr;
    const std::string name = firstWord(userName);
    const std::string* found = nullptr;
    for (const auto& participant : participants) {
        if (firstWord(participant) != name) continue;
        if (found != nullptr) return nullptr;
        found = &participant;
    }
    return found;
}
}  // namespace

LandInput build(const TranscriptDocument& document, std::string userName,
                std::vector<LandOpenFollowUp> openFollowUps,
                std::vector<LandAttendeeStub> attendeeStubs, std::vector<Correction> corrections,
                std::optional<std::vector<Turn>> turns, std::optional<LandChunk> chunk) {
    if (attendeeStubs.size() > mostStubs) attendeeStubs.resize(mostStubs);
    LandInputMeeting meeting{.title = document.title,
                             .date = document.date,
                             .participants = document.participants,
                             .remoteLabelCount = remoteLabelCount(document.turns, userName),
                             .turns = turns ? *std::move(turns) : document.turns};
    return {.meeting = std::move(meeting),
            .userName = std::move(userName),
            .openFollowUps = std::move(openFollowUps),
            .attendeeStubs = std::move(attendeeStubs),
            .corrections = Corrections::lines(Corrections::forRecipe(std::move(corrections))),
            .chunk = chunk};
}

std::vector<std::vector<Turn>> chunks(std::vector<Turn> turns, std::size_t maxBytes) {
    std::vector<std::vector<Turn>> result;
    std::size_t chunkCost = 0;
    for (auto& turn : turns) {
        const std::size_t cost = turn.speaker.size() + turn.text.size() + turnOverhead;
        if (result.empty() || cost > maxBytes || chunkCost > maxBytes - cost) {
            result.emplace_back();
            chunkCost = 0;
        }
        result.back().push_back(std::move(turn));
        chunkCost += cost;
    }
    return result;
}

std::vector<Turn> reduceTurns(std::span<const LandOutput> outputs) {
    std::vector<Turn> turns;
    const std::string count = std::to_string(outputs.size());
    for (const auto& output : outputs) {
        const std::string number = std::to_string(turns.size() + 1);
        turns.push_back({.speaker = "Part " + number + " of " + count, .text = linesOf(output)});
    }
    return turns;
}

std::int64_t remoteLabelCount(const std::vector<Turn>& turns, std::string_view userName) {
    const auto userKey = EntityKeys::normalizeKey(userName);
    std::set<std::string, std::less<>> labels;
    for (const auto& turn : turns) {
        std::string label = Text::lowercased(Text::trimmedBlanks(turn.speaker));
        if (std::ranges::find(selfLabels, label) != selfLabels.end()) continue;
        if (labels.contains(label) || EntityKeys::normalizeKey(label) == userKey) continue;
        labels.insert(std::move(label));
    }
    return static_cast<std::int64_t>(labels.size());
}

std::vector<std::string> remoteParticipants(const std::vector<std::string>& participants,
                                            std::string_view userName) {
    const auto userKey = EntityKeys::normalizeKey(userName);
    const auto* namesake = onlyNamesake(participants, userName);
    std::vector<std::string> others;
    for (const auto& participant : participants) {
        const auto key = EntityKeys::normalizeKey(participant);
        if (!key || key == userKey || &participant == namesake ||
            EntityKeys::isGenericLabel(participant))
            continue;
        others.push_back(participant);
    }
    return others;
}
}  // namespace ombrix::LandInputBuilder
