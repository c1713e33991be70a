#include "OmbrixMemoryKit/Memory/MemoryCandidates.h"

#include <algorithm>
#include <functional>
#include <iterator>
#include <set>

#include "OmbrixMemoryKit/Identity/EntityKeys.h"
#include "OmbrixMemoryKit/Land/LandInputBuilder.h"
#include "OmbrixPlatform/Characters.h"
#include "OmbrixPlatform/Text.h"

namespace ombrix::MemoryCandidates {
namespace {

using Keys = std::set<std::string, std::less<>>;
using Kind = ConsolidateCandidate::Kind;

Keys lowercasedKeys(std::string_view entityKey, std::span<const std::string> aliasKeys) {
    Keys keys{Text::lowercased(entityKey)};
    for (const auto& key : aliasKeys) keys.insert(Text::lowercased(key));
    return keys;
}

std::vector<const LandSidecar*> newestFirst(std::span<const LandSidecar> sidecars) {
    std::vector<const LandSidecar*> sorted;
    for (const auto& sidecar : sidecars) sorted.push_back(&sidecar);
    std::ranges::stable_sort(sorted, std::greater<>(), &LandSidecar::date);
    return sorted;
}

std::vector<LandSidecar> oldestFirst(std::span<const LandSidecar> sidecars,
                                     const std::function<bool(const LandSidecar&)>& counts) {
    std::vector<LandSidecar> sorted;
    std::ranges::copy_if(sidecars, std::back_inserter(sorted), counts);
    std::ranges::stable_sort(sorted, {}, &LandSidecar::date);
    return sorted;
}

ConsolidateCandidate candidate(const LandSidecar& meeting, std::string_view fact,
                               std::string_view quote) {
    return {.fact = std::string(fact),
            .quote = std::string(quote),
            .meetingTitle = meeting.title,
            .date = meeting.date};
}

void appendFacts(std::vector<ConsolidateCandidate>& candidates, const LandSidecar& meeting,
                 const Keys& keys) {
    for (const auto& fact : meeting.output.memory) {
        if (!keys.contains(Text::lowercased(fact.entityKey))) continue;
        auto& added = candidates.emplace_back(candidate(meeting, fact.fact, fact.quote));
        if (fact.certainty == Certainty::read) added.certainty = Certainty::read;
    }
}

bool isSelfLabel(std::string_view speaker) {
    return std::ranges::find(LandInputBuilder::selfLabels, Text::lowercased(speaker)) !=
           LandInputBuilder::selfLabels.end();
}

/// Each word with its first letter in upper case; what is between them is kept.
std::string capitalized(std::string_view text) {
    std::string result;
    std::size_t done = 0;
    for (const auto word : Characters::splitAtWhiteSpace(text)) {
        const auto start = static_cast<std::size_t>(word.data() - text.data());
        result += text.substr(done, start - done);
        result += Text::withUpperCaseFirst(word);
        done = start + word.size();
    }
    result += text.substr(done);
    return result;
}
}  // namespace

std::vector<ConsolidateCandidate> collect(std::string_view entityKey,
                                          std::span<const std::string> aliasKeys,
                                          std::span<const LandSidecar> sidecars) {
    const Keys keys = lowercasedKeys(entityKey, aliasKeys);
    std::vector<ConsolidateCandidate> candidates;
    for (const auto* meeting : newestFirst(sidecars)) appendFacts(candidates, *meeting, keys);
    return candidates;
}

std::vector<ConsolidateCandidate> thread(std::string_view entityKey,
                                         std::span<const std::string> meetingKeys,
                                         std::span<const LandSidecar> sidecars,
                                         std::string_view userName) {
    const Keys keys = lowercasedKeys(entityKey, {});
    const Keys wanted(meetingKeys.begin(), meetingKeys.end());
    std::vector<ConsolidateCandidate> candidates;
    for (const auto* meeting : newestFirst(sidecars)) {
        if (!wanted.contains(meeting->meetingKey)) continue;
        appendFacts(candidates, *meeting, keys);
        for (const auto& decision : meeting->output.decisions) {
            auto& added =
                candidates.emplace_back(candidate(*meeting, decision.text, decision.quote));
            added.kind = Kind::decision;
            added.who = isSelfLabel(decision.speaker) ? std::string(userName) : decision.speaker;
        }
        for (const auto& question : meeting->output.openQuestions)
            candidates.emplace_back(candidate(*meeting, question.text, question.quote)).kind =
                Kind::openQuestion;
    }
    return candidates;
}

std::vector<ConsolidateCandidate> fold(std::vector<ConsolidateCandidate> candidates,
                                       std::size_t keep) {
    if (candidates.size() <= keep) return candidates;
    const std::string oldest = candidates.back().date;
    const std::string fact = "earlier: " + std::to_string(candidates.size() - keep) +
                             " facts from meetings back to " + oldest;
    candidates.resize(keep);
    candidates.push_back(
        {.fact = fact, .meetingTitle = "(folded)", .date = oldest, .certainty = Certainty::read});
    return candidates;
}

std::vector<LandSidecar> meetings(std::string_view entityKey,
                                  std::span<const std::string> aliasKeys,
                                  std::span<const LandSidecar> sidecars) {
    const Keys keys = lowercasedKeys(entityKey, aliasKeys);
    const auto isParticipant = [&](const std::string& participant) {
        const auto key = EntityKeys::normalizeKey(participant);
        return key && keys.contains(*key);
    };
    const auto isParty = [&](const LandCommitment& commitment) {
        return keys.contains(Text::lowercased(commitment.whoKey));
    };
    const auto isSubject = [&](const LandMemoryFact& fact) {
        return keys.contains(Text::lowercased(fact.entityKey));
    };
    return oldestFirst(sidecars, [&](const LandSidecar& meeting) {
        return std::ranges::any_of(meeting.participants, isParticipant) ||
               std::ranges::any_of(meeting.output.commitments, isParty) ||
               std::ranges::any_of(meeting.output.memory, isSubject);
    });
}

std::vector<LandSidecar> meetings(std::span<const std::string> meetingKeys,
                                  std::span<const LandSidecar> sidecars) {
    const Keys wanted(meetingKeys.begin(), meetingKeys.end());
    return oldestFirst(
        sidecars, [&](const LandSidecar& meeting) { return wanted.contains(meeting.meetingKey); });
}

std::optional<std::string> display(std::string_view entityKey,
                                   std::span<const LandSidecar> sidecars) {
    const std::string key = Text::lowercased(entityKey);
    for (const auto* meeting : newestFirst(sidecars))
        for (const auto& participant : meeting->participants)
            if (EntityKeys::normalizeKey(participant) == key) return participant;
    if (key.starts_with(EntityKeys::namePrefix))
        return capitalized(std::string_view(key).substr(EntityKeys::namePrefix.size()));
    if (key.starts_with(EntityKeys::threadPrefix))
        return capitalized(
            Text::replacingAll(key.substr(EntityKeys::threadPrefix.size()), "-", " "));
    return std::nullopt;
}
}  // namespace ombrix::MemoryCandidates
