#include "OmbrixEngine/Steps/LandHistory.h"

#include <algorithm>
#include <unordered_map>
#include <utility>

#include "OmbrixMemoryKit/Identity/CommitmentID.h"
#include "OmbrixMemoryKit/Identity/EntityKeys.h"
#include "OmbrixMemoryKit/Land/LandInputBuilder.h"
#include "OmbrixPlatform/Digest.h"
#include "OmbrixPlatform/Text.h"

namespace ombrix {
namespace {

constexpr std::size_t mostFollowUps = 40;
constexpr std::size_t mostStubs = 3;

using Keys = std::set<std::string, std::less<>>;

/// The open rows of these people that the ledger lists, then those it keeps as older.
std::vector<LandOpenFollowUp> openFollowUps(FollowUpsLedger ledger, const Keys& people) {
    Keys written;  // the same keys as the rows have them
    for (auto* rows : {&ledger.youOweLate, &ledger.youOweLive, &ledger.owedLate, &ledger.owedLive,
                       &ledger.changed, &ledger.older}) {
        std::erase_if(*rows, [&](const FollowUpRow& row) {
            return !people.contains(Text::lowercased(row.whoKey));
        });
        for (const auto& row : *rows) written.insert(row.whoKey);
    }
    auto rows = ledger.open(written, mostFollowUps);
    for (const auto& row : ledger.older) {
        if (rows.size() >= mostFollowUps) break;
        rows.push_back({.id = row.id,
                        .direction = std::string(rawValue(row.direction)),
                        .who = row.who,
                        .what = row.what,
                        .due = row.due});
    }
    return rows;
}

/// The key of the person that everything about them is filed under, in lower case.
std::string canonicalKey(const PersonAliases& aliases, std::string_view key) {
    return Text::lowercased(aliases.canonical(key));
}

/// A key that shows no address: of a person who is filed under one, the first of their names.
std::optional<std::string> nameKey(const PersonAliases& aliases, const std::string& person) {
    for (const auto& key : aliases.aliases(person))
        if (EntityKeys::forModel(key, "").key == key) return key;
    return std::nullopt;
}

/// The newest thing that an earlier meeting says about the person.
const LandMemoryFact* newestFact(EngineWorkspace& workspace, std::span<const LandSidecar> earlier,
                                 const std::string& person) {
    for (auto sidecar = earlier.rbegin(); sidecar != earlier.rend(); ++sidecar) {
        if (workspace.isPrivate(sidecar->meetingKey)) continue;
        for (const auto& fact : sidecar->output.memory)
            if (fact.kind == LandMemoryFact::Kind::person &&
                canonicalKey(workspace.aliases(), fact.entityKey) == person)
                return &fact;
    }
    return nullptr;
}

bool namesCommitment(const Correction& correction) { return !correction.id.empty(); }

void add(Digest::Fnv1a64& digest, std::initializer_list<std::string_view> texts) {
    for (const auto text : texts) {
        digest.add(text);
        digest.add(std::string_view("\0", 1));
    }
}
}  // namespace

LandHistory::LandHistory(EngineWorkspace& workspace) : workspace_(workspace) {
    workspace_.landed();
    workspace_.aliases();
    workspace_.privacy();
}

std::vector<std::string> LandHistory::people(const TranscriptDocument& header,
                                             const std::vector<std::string>& speakers) const {
    std::vector<std::string> keys;
    for (const auto* names : {&header.participants, &speakers}) {
        for (const auto& name :
             LandInputBuilder::remoteParticipants(*names, workspace_.userName())) {
            const auto written = EntityKeys::normalizeKey(name);
            const bool isSelf =
                std::ranges::find(LandInputBuilder::selfLabels, Text::lowercased(name)) !=
                LandInputBuilder::selfLabels.end();
            if (!written || isSelf || workspace_.privacy().hides(*written)) continue;
            std::string key = canonicalKey(workspace_.aliases(), *written);
            if (std::ranges::find(keys, key) == keys.end()) keys.push_back(std::move(key));
        }
    }
    return keys;
}

const std::map<std::string, LandHistory::Owner, std::less<>>& LandHistory::owners() {
    if (owners_) return *owners_;
    owners_.emplace();
    const auto& corrections = workspace_.corrections();
    if (std::ranges::none_of(corrections, namesCommitment)) return *owners_;
    Keys named;
    for (const auto& correction : corrections) named.insert(Text::lowercased(correction.id));
    const auto& aliases = workspace_.aliases();
    for (std::size_t place = 0; const auto& sidecar : workspace_.landed()) {
        for (const auto& commitment : sidecar.output.commitments) {
            const std::string person = canonicalKey(aliases, commitment.whoKey);
            auto keys = aliases.aliases(person);
            keys.push_back(commitment.whoKey);
            for (const auto& key : keys) {
                auto id = CommitmentID::make(sidecar.meetingKey, commitment.what, key);
                if (named.contains(id)) owners_->emplace(std::move(id), Owner{person, place});
            }
        }
        ++place;
    }
    return *owners_;
}

std::vector<Correction> LandHistory::corrections(std::size_t before, std::string_view meetingKey,
                                                 const Keys& people) {
    std::vector<Correction> found;
    for (const auto& correction : workspace_.corrections()) {
        if (correction.kind == Correction::Kind::important) continue;
        if (namesCommitment(correction)) {
            const auto owner = owners().find(Text::lowercased(correction.id));
            if (owner == owners().end()) continue;
            const auto& [person, place] = owner->second;
            const auto& meeting = workspace_.landed()[place].meetingKey;
            const bool isBefore = place < before || meeting == meetingKey;
            if (!isBefore || !people.contains(person) || workspace_.isPrivate(meeting)) continue;
        }
        found.push_back(correction);
    }
    for (const auto& file : workspace_.memoryFiles()) {
        if (!people.contains(canonicalKey(workspace_.aliases(), file.key)) ||
            workspace_.privacy().hides(file.key))
            continue;
        for (const auto& correction : file.corrections) {
            if (correction.kind == Correction::Kind::alias ||
                correction.kind == Correction::Kind::notSame)
                found.push_back(correction);
        }
    }
    return found;
}

LandHistory::Context LandHistory::context(const TranscriptEntry& entry,
                                          const std::vector<std::string>& people) {
    const auto earlier = workspace_.landedBefore(entry);
    const Keys keys(people.begin(), people.end());
    auto ledger = workspace_.publicLedger(earlier, entry.header.date);
    Context context{.openFollowUps = openFollowUps(std::move(ledger), keys),
                    .corrections = corrections(earlier.size(), entry.key, keys)};
    for (const auto& person : people) {
        if (context.stubs.size() == mostStubs) break;
        const auto* fact = newestFact(workspace_, earlier, person);
        auto key = nameKey(workspace_.aliases(), person);
        if (fact != nullptr && key)
            context.stubs.push_back({.key = *std::move(key), .oneLine = fact->fact});
    }
    return context;
}

std::vector<std::uint64_t> LandHistory::digests(const std::vector<Meeting>& meetings) {
    const auto& aliases = workspace_.aliases();
    // How much of the past each meeting sees.
    std::vector<std::pair<std::size_t, std::size_t>> order;
    for (std::size_t i = 0; i < meetings.size(); ++i)
        order.emplace_back(workspace_.landedBefore(*meetings[i].entry).size(), i);
    std::ranges::sort(order);

    std::unordered_map<std::string, Digest::Fnv1a64> past;  // of each person
    std::unordered_map<std::string_view, std::string> canonical;
    const auto person = [&](std::string_view key) -> const std::string& {
        const auto [place, isNew] = canonical.try_emplace(key);
        if (isNew) place->second = canonicalKey(aliases, key);
        return place->second;
    };
    const auto learn = [&](const LandSidecar& sidecar) {
        if (workspace_.isPrivate(sidecar.meetingKey)) return;
        for (const auto& each : sidecar.output.commitments) {
            if (each.direction == CommitmentDirection::other) continue;
            add(past[person(each.whoKey)],
                {sidecar.meetingKey, rawValue(each.direction), each.who, each.what,
                 each.due.value_or(""), rawValue(each.certainty)});
        }
        for (const auto& fact : sidecar.output.memory)
            if (fact.kind == LandMemoryFact::Kind::person)
                add(past[person(fact.entityKey)], {fact.fact});
        if (sidecar.output.resolutions.empty()) return;
        // They are of people who were there.
        for (const auto& key : people({.participants = sidecar.participants}, {}))
            for (const auto& each : sidecar.output.resolutions)
                add(past[key], {each.id, rawValue(each.status), each.newDue.value_or("")});
    };

    std::vector<std::uint64_t> result(meetings.size());
    std::size_t learnt = 0;
    for (const auto& [before, i] : order) {
        for (; learnt < before; ++learnt) learn(workspace_.landed()[learnt]);
        const auto& [entry, people] = meetings[i];
        Digest::Fnv1a64 digest;
        for (const auto& key : people) {
            const auto found = past.find(key);
            const std::uint64_t value = found == past.end() ? 0 : found->second.value();
            add(digest, {key, std::to_string(value)});
        }
        const auto lines =
            Corrections::lines(corrections(before, entry->key, {people.begin(), people.end()}));
        for (const auto& line : lines) add(digest, {line});
        result[i] = digest.value();
    }
    return result;
}
}  // namespace ombrix
