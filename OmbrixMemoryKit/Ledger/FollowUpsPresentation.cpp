#include "OmbrixMemoryKit/Ledger/FollowUpsPresentation.h"

#include <algorithm>
#include <cstddef>
#include <functional>
#include <tuple>
#include <unordered_map>
#include <utility>

#include "OmbrixMemoryKit/Identity/EntityKeys.h"
#include "OmbrixMemoryKit/Identity/ISODate.h"
#include "OmbrixPlatform/Text.h"
#include "OmbrixPlatform/Utf8.h"

namespace ombrix::FollowUpsPresentation {
namespace {

/// After every day.
constexpr std::string_view noDay = "9999";

enum Rank { late, due, undated, done };

Rank rankOf(const FollowUpRow& row) {
    if (row.isDone()) return Rank::done;
    if (row.statusAs<FollowUpRow::Late>() != nullptr) return Rank::late;
    return row.due ? Rank::due : Rank::undated;
}

bool comesFirst(const FollowUpRow& a, const FollowUpRow& b) {
    const auto group = [](const FollowUpRow& row) {
        return std::tuple(!row.important || row.isDone(), rankOf(row));
    };
    if (group(a) != group(b)) return group(a) < group(b);
    switch (rankOf(a)) {
        case Rank::late:
        case Rank::due: {
            const auto day = [](const FollowUpRow& row) {
                return row.due ? std::string_view(*row.due) : noDay;
            };
            return day(a) < day(b);
        }
        case Rank::undated:
            return a.said < b.said;
        case Rank::done:
            break;
    }
    return a.statusAs<FollowUpRow::Done>()->confirmedOn >
           b.statusAs<FollowUpRow::Done>()->confirmedOn;
}

bool beginsInUpperCase(std::string_view name) {
    return !name.empty() && Text::isUppercase(Utf8::decode(name, 0).scalar);
}

/// The name of a group whose rows are in their order.
std::string nameOf(const FollowUpRows& rows) {
    const auto named = std::ranges::find_if(rows, beginsInUpperCase, &FollowUpRow::who);
    return named == rows.end() ? rows.front().who : named->who;
}

StatusPill undatedPill(const FollowUpRow& row) {
    if (row.dueRaw.empty()) return {.kind = StatusPill::Kind::noDate};
    return {.kind = StatusPill::Kind::saidAs, .payload = row.dueRaw};
}

StatusPill movedPill(const FollowUpRow& row, const FollowUpRow::Renegotiated& moved,
                     std::string_view today) {
    std::string to = moved.to             ? dueLabel(*moved.to, today)
                     : row.dueRaw.empty() ? "no date"
                                          : row.dueRaw;
    return {.kind = StatusPill::Kind::moved, .payload = std::move(to)};
}
}  // namespace

std::int64_t PersonGroup::openCount() const {
    return std::ranges::count_if(rows, [](const FollowUpRow& row) { return !row.isDone(); });
}

std::string StatusPill::text() const {
    switch (kind) {
        case Kind::late:
        case Kind::saidAs:
            return payload;
        case Kind::moved:
            return "Moved · " + payload;
        case Kind::due:
            return "Due " + payload;
        case Kind::done:
            return "Done";
        case Kind::noDate:
            break;
    }
    return "No date";
}

FollowUpRows openRows(const FollowUpsLedger& ledger) {
    FollowUpRows all;
    for (const auto* rows : {&ledger.youOweLate, &ledger.youOweLive, &ledger.owedLate,
                             &ledger.owedLive, &ledger.changed})
        all.insert(all.end(), rows->begin(), rows->end());
    return all;
}

FollowUpRows byTime(FollowUpRows rows) {
    std::ranges::stable_sort(rows, comesFirst);
    return rows;
}

std::vector<PersonGroup> byPerson(FollowUpRows rows) {
    std::vector<PersonGroup> groups;
    std::unordered_map<std::string, std::size_t> numbers;
    for (auto& row : byTime(std::move(rows))) {
        auto key = row.whoKey.empty() ? Text::lowercased(row.who) : row.whoKey;
        const auto [place, isNew] = numbers.try_emplace(std::move(key), groups.size());
        if (isNew) groups.push_back({.whoKey = row.whoKey});
        groups[place->second].rows.push_back(std::move(row));
    }
    for (auto& group : groups) group.who = nameOf(group.rows);
    std::ranges::stable_sort(groups, std::ranges::greater(), &PersonGroup::openCount);
    return groups;
}

StatusPill statusPill(const FollowUpRow& row, std::string_view today) {
    using Kind = StatusPill::Kind;
    if (const auto* late = row.statusAs<FollowUpRow::Late>())
        return {.kind = Kind::late, .payload = lateBy(late->days)};
    if (row.isDone()) return {.kind = Kind::done};
    if (const auto* moved = row.statusAs<FollowUpRow::Renegotiated>())
        return movedPill(row, *moved, today);
    if (row.due) return {.kind = Kind::due, .payload = dueLabel(*row.due, today)};
    return undatedPill(row);
}

std::string dueLabel(std::string_view due, std::string_view today) {
    const auto days = ISODate::days(today, due);
    if (!days) return std::string(due);
    if (*days == 0) return "today";
    if (*days == 1) return "tomorrow";
    return ISODate::shortDay(due, today);
}

std::string lateBy(std::int64_t days) {
    return days == 1 ? "1 day late" : std::to_string(days) + " days late";
}

std::string counterpart(const FollowUpRow& row) {
    return (row.direction == CommitmentDirection::userOwes ? "to " : "from ") + row.who;
}

std::optional<std::string> directionLabel(const FollowUpRow& row) {
    if (row.statusAs<FollowUpRow::NotSure>() != nullptr) return std::nullopt;
    return row.direction == CommitmentDirection::userOwes ? "You owe" : "Owed to you";
}

bool showsAvatar(const FollowUpRow& row) {
    return !EntityKeys::isGenericKey(row.whoKey) && !EntityKeys::isGenericLabel(row.who);
}

std::string sourceLabel(const FollowUpRow& row, std::string_view today) {
    return row.sourceTitle + " · " + ISODate::monthDay(row.sourceDate, today);
}

std::optional<std::string> recurrenceLabel(const FollowUpRow& row, std::string_view today) {
    if (!row.recurrence) return std::nullopt;
    return "Came up " + std::to_string(row.recurrence->count) + " times since " +
           ISODate::monthDay(row.recurrence->firstSaid, today);
}

std::optional<std::string> speakerLabel(const FollowUpRow& row) {
    if (row.speaker.empty()) return std::nullopt;
    return row.speaker == "Me" ? "You" : row.speaker;
}
}  // namespace ombrix::FollowUpsPresentation
