#include "OmbrixMemoryKit/Memory/EntityInputs.h"

#include <algorithm>
#include <iterator>
#include <set>
#include <unordered_map>
#include <utility>

#include "OmbrixMemoryKit/Identity/EntityKeys.h"
#include "OmbrixMemoryKit/Memory/MemoryCandidates.h"
#include "OmbrixMemoryKit/Memory/MemoryRegionParser.h"
#include "OmbrixPlatform/Text.h"

namespace ombrix::EntityInputs {
namespace {

using Keys = std::set<std::string, std::less<>>;
using Kind = LandMemoryFact::Kind;

constexpr std::string_view notSureTitle = "Not sure";

std::string tag(std::string_view title, std::string_view date) {
    return "[" + std::string(title) + ", " + std::string(date) + "]";
}

std::vector<std::string> keysOf(std::span<const LandSidecar> meetings) {
    std::vector<std::string> keys;
    for (const auto& meeting : meetings) keys.push_back(meeting.meetingKey);
    return keys;
}

/// The meetings with a fact about the thread, the oldest first.
std::vector<LandSidecar> threadMeetings(std::string_view key,
                                        std::span<const LandSidecar> sidecars) {
    std::vector<std::string> keys;
    for (const auto& meeting : sidecars) {
        const auto isAbout = [&](const LandMemoryFact& fact) {
            return Text::lowercased(fact.entityKey) == key;
        };
        if (std::ranges::any_of(meeting.output.memory, isAbout)) keys.push_back(meeting.meetingKey);
    }
    return MemoryCandidates::meetings(keys, sidecars);
}

/// What the last run was unsure about, each line with its sources.
std::vector<std::string> notSure(std::string_view region) {
    std::vector<std::string> lines;
    for (const auto& section : MemoryRegionParser::sections(region)) {
        if (section.title != notSureTitle) continue;
        for (const auto& line : section.lines) {
            std::string text = line.readsAs ? "Reads as: " + line.text : line.text;
            for (const auto& source : line.sources) text += " " + tag(source.title, source.date);
            lines.push_back(std::move(text));
        }
    }
    return lines;
}

/// The keys that a model may see besides `key`.
std::vector<std::string> shownAliases(const MemoryEntity& entity, std::string_view key) {
    std::vector<std::string> shown;
    for (const auto& each : entity.keys) {
        const auto safe = EntityKeys::forModel(each, {});
        if (safe.key == each && each != key) shown.push_back(each);
    }
    return shown;
}
}  // namespace

MemoryEntity entity(std::string_view key, const PersonAliases& aliases,
                    std::span<const LandSidecar> sidecars) {
    MemoryEntity result{.key = Text::lowercased(key)};
    if (result.key.starts_with(EntityKeys::threadPrefix)) {
        result.kind = Kind::thread;
        result.keys = {result.key};
        result.meetings = threadMeetings(result.key, sidecars);
        result.display = MemoryCandidates::display(result.key, result.meetings).value_or("");
        return result;
    }
    for (const auto& each : aliases.aliases(result.key)) {
        result.keys.push_back(Text::lowercased(each));
        // A participant whom a calendar lists by the address.
        if (const std::string last = result.keys.back(); last.starts_with(EntityKeys::emailPrefix))
            result.keys.push_back(std::string(EntityKeys::namePrefix) +
                                  last.substr(EntityKeys::emailPrefix.size()));
    }
    result.key = Text::lowercased(aliases.canonical(result.key));
    result.meetings = MemoryCandidates::meetings(result.key, result.keys, sidecars);
    result.display = aliases.display(result.key).value_or("");
    for (auto each = result.keys.begin(); result.display.empty() && each != result.keys.end();
         ++each) {
        result.display = MemoryCandidates::display(*each, result.meetings).value_or("");
        if (EntityKeys::isAddress(result.display)) result.display.clear();
    }
    return result;
}

std::vector<ConsolidateCandidate> candidates(const MemoryEntity& entity,
                                             std::string_view userName) {
    if (entity.kind == Kind::person)
        return MemoryCandidates::collect(entity.key, entity.keys, entity.meetings);
    return MemoryCandidates::thread(entity.key, keysOf(entity.meetings), entity.meetings, userName);
}

FollowUpRows openRows(std::span<const MemoryEntity> entities, const FollowUpsLedger& ledger) {
    Keys people, meetings;
    for (const auto& entity : entities) {
        if (entity.kind == Kind::person)
            people.insert(entity.keys.begin(), entity.keys.end());
        else
            std::ranges::move(keysOf(entity.meetings), std::inserter(meetings, meetings.end()));
    }
    const auto isWanted = [&](const FollowUpRow& row) {
        return people.contains(Text::lowercased(row.whoKey)) || meetings.contains(row.meetingKey);
    };
    FollowUpRows rows;
    for (const auto* list : {&ledger.youOweLate, &ledger.youOweLive, &ledger.owedLate,
                             &ledger.owedLive, &ledger.changed, &ledger.older})
        std::ranges::copy_if(*list, std::back_inserter(rows), isWanted);
    if (rows.size() > mostFollowUps) rows.resize(mostFollowUps);
    return rows;
}

ConsolidateOpenFollowUp followUp(const FollowUpRow& row) {
    return {.id = row.id,
            .direction = std::string(rawValue(row.direction)),
            .who = EntityKeys::forModel(row.whoKey, row.who).display,
            .what = row.what,
            .due = row.due,
            .said = row.said,
            .source = tag(row.sourceTitle, row.sourceDate)};
}

ConsolidateInput consolidate(const MemoryEntity& entity, std::vector<ConsolidateCandidate> found,
                             const FollowUpRows& rows,
                             const std::optional<MemoryFile::Parsed>& existing,
                             std::string userName, std::string today) {
    auto shown = EntityKeys::forModel(entity.key, entity.display);
    ConsolidateInput input{.entity = {.key = shown.key,
                                      .kind = entity.kind,
                                      .display = std::move(shown.display),
                                      .aliases = shownAliases(entity, shown.key)},
                           .userName = std::move(userName),
                           .candidates = MemoryCandidates::fold(std::move(found), candidatesKept),
                           .today = std::move(today)};
    std::ranges::transform(rows, std::back_inserter(input.openFollowUps), followUp);
    if (existing) {
        input.corrections = Corrections::lines(Corrections::forRecipe(existing->corrections));
        input.priorNotSure = notSure(existing->engineText);
    }
    return input;
}

MemoryFileMeta meta(const MemoryEntity& entity, std::string title) {
    MemoryFileMeta meta{.title = std::move(title),
                        .kind = entity.kind,
                        .key = entity.key,
                        .meetings = static_cast<std::int64_t>(entity.meetings.size())};
    std::ranges::copy_if(
        entity.keys, std::back_inserter(meta.aliases), [&](const std::string& key) {
            const bool isName = key.starts_with(EntityKeys::namePrefix);
            return key != entity.key && !(isName && EntityKeys::forModel(key, {}).key != key);
        });
    if (!entity.meetings.empty()) {
        meta.firstSeen = entity.meetings.front().date;
        meta.lastSeen = entity.meetings.back().date;
    }
    if (entity.kind == Kind::person) return meta;
    Keys members;
    for (const auto& meeting : entity.meetings)
        for (const auto& participant : meeting.participants)
            if (!EntityKeys::isAddress(participant) && !EntityKeys::isGenericLabel(participant))
                members.insert(participant);
    meta.members.assign(members.begin(), members.end());
    return meta;
}

BeforeEntityText beforeText(const MemoryEntity& entity,
                            const std::optional<MemoryFile::Parsed>& file) {
    auto shown = EntityKeys::forModel(entity.key, entity.display);
    return {.key = std::move(shown.key),
            .display = std::move(shown.display),
            .engineRegionText = file ? file->engineText : std::string()};
}

std::unordered_set<std::string_view> sharedMeetings(std::span<const MemoryEntity> people) {
    std::unordered_map<std::string_view, std::size_t> counts;
    for (const auto& person : people)
        for (const auto& meeting : person.meetings) ++counts[meeting.meetingKey];
    std::unordered_set<std::string_view> shared;
    for (const auto& [key, count] : counts)
        if (count == people.size()) shared.insert(key);
    return shared;
}

std::optional<LandSidecar> lastMeeting(std::span<const MemoryEntity> people, std::string_view day) {
    const auto shared = sharedMeetings(people);
    const LandSidecar* last = nullptr;
    bool lastIsShared = false;
    for (const auto& person : people) {
        for (const auto& meeting : person.meetings) {
            if (meeting.date > day) continue;
            const bool isShared = shared.contains(meeting.meetingKey);
            if (last != nullptr && std::pair(isShared, std::string_view(meeting.date)) <
                                       std::pair(lastIsShared, std::string_view(last->date)))
                continue;
            last = &meeting;
            lastIsShared = isShared;
        }
    }
    return last == nullptr ? std::nullopt : std::optional(*last);
}
}  // namespace ombrix::EntityInputs

// ---- what an answer rests on ------------------------------------------------------------------

namespace ombrix::EntityCitations {
namespace {

using Strings = std::vector<std::string>;
using Sources = std::set<std::string, std::less<>>;
using AnswerPath::inQuotes;
using AnswerPath::item;

[[noreturn]] void refuse(AnswerFault::Rule rule, std::string path, std::string problem,
                         std::string text = {}) {
    throw RefusedAnswer({.rule = rule,
                         .path = std::move(path),
                         .problem = std::move(problem),
                         .text = std::move(text)});
}

template <typename IsKnown>
void checkSources(const Strings& sources, const std::string& path, IsKnown isKnown) {
    for (std::size_t i = 0; i < sources.size(); ++i)
        if (!isKnown(sources[i]))
            refuse(AnswerFault::Rule::citation, item(path + ".sources", i),
                   "no source " + inQuotes(sources[i]) + " in the input; copy one as it stands",
                   sources[i]);
}

/// Each item cites a source; `list` names them.
template <typename Items, typename IsKnown>
void checkItems(const Items& items, const std::string& list, IsKnown isKnown) {
    for (std::size_t i = 0; i < items.size(); ++i) {
        if (items[i].sources.empty())
            refuse(AnswerFault::Rule::citation, item(list, i) + ".sources",
                   "none; leave out what has no source");
        checkSources(items[i].sources, item(list, i), isKnown);
    }
}

bool isFolded(const ConsolidateCandidate& candidate) { return candidate.quote.empty(); }
}  // namespace

void check(const ConsolidateOutput& output, const ConsolidateInput& input) {
    if (output.kind != input.entity.kind)
        refuse(AnswerFault::Rule::kind, "kind",
               "the entity of the input is a " + std::string(rawValue(input.entity.kind)),
               std::string(rawValue(output.kind)));
    Sources known;
    for (const auto& each : input.candidates)
        if (!isFolded(each)) known.insert("[" + each.meetingTitle + ", " + each.date + "]");
    Sources followUps;
    for (const auto& each : input.openFollowUps) {
        known.insert(each.source);
        followUps.insert(each.id);
    }
    const auto isKnown = [&](const std::string& source) { return known.contains(source); };
    checkItems(output.who, "who", isKnown);
    checkItems(output.whatThisIs, "what_this_is", isKnown);
    checkItems(output.decisions, "decisions", isKnown);
    checkItems(output.open, "open", isKnown);
    for (std::size_t i = 0; i < output.open.size(); ++i) {
        const auto& id = output.open[i].followUpID;
        if (id && !followUps.contains(*id))
            refuse(AnswerFault::Rule::citation, item("open", i) + ".follow_up_id",
                   "no follow-up " + inQuotes(*id) + " in the input; copy an id, or write null",
                   *id);
    }
}

void check(const BeforeOutput& output, const BeforeInput& input) {
    std::vector<std::string_view> regions;
    for (const auto& each : input.people) regions.push_back(each.engineRegionText);
    if (input.thread) regions.push_back(input.thread->engineRegionText);
    Sources known;
    for (const auto& each : input.openFollowUps) known.insert(each.source);
    if (const auto& last = input.lastSummary)
        known.insert("[" + last->title + ", " + last->date + "]");
    const auto isKnown = [&](const std::string& source) {
        if (known.contains(source)) return true;
        return !BeforeOutput::sources({source}).empty() &&
               std::ranges::any_of(
                   regions, [&](std::string_view text) { return Text::contains(text, source); });
    };
    checkItems(output.notSure, "not_sure", isKnown);
    checkItems(output.youOwe, "you_owe", isKnown);
    checkItems(output.theyOwe, "they_owe", isKnown);
    checkItems(output.unanswered, "unanswered", isKnown);
    checkItems(output.changedSince, "changed_since", isKnown);
    if (output.remember) checkItems(*output.remember, "remember", isKnown);
    if (output.question) checkItems(*output.question, "question", isKnown);
    for (std::size_t i = 0; i < output.openers.size(); ++i)
        checkSources(output.openers[i].sources, item("openers", i), isKnown);
}
}  // namespace ombrix::EntityCitations
