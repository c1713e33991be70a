#include "OmbrixAnswerKit/Ask/ViewContext.h"

#include <algorithm>
#include <chrono>

#include "OmbrixAnswerKit/Ask/ShortDate.h"
#include "OmbrixPlatform/Text.h"

namespace ombrix::AskContext {
namespace {

using Ids = std::vector<std::string>;

bool isAtMeeting(const AskViewContext& context) {
    return (context.place == AskPlace::meeting || context.place == AskPlace::call) &&
           context.meetingID;
}

bool hasSelection(const AskViewContext& context) {
    return context.selectedMeetingIDs && !context.selectedMeetingIDs->empty();
}

std::string_view folderOf(const AskViewContext& context) {
    return context.folder ? std::string_view(*context.folder) : std::string_view();
}

std::vector<std::string> idsOf(std::span<const AskMeeting> meetings) {
    Ids ids;
    for (const AskMeeting& meeting : meetings) ids.push_back(meeting.id);
    return ids;
}

/// The meeting, then the rest of its series.
Ids withSeries(const std::string& meetingID, std::span<const std::string> series) {
    Ids ids{meetingID};
    for (const std::string& id : series)
        if (id != meetingID) ids.push_back(id);
    return ids;
}

// ---- the sentence ------------------------------------------------------------------------------

AskPlace placeOf(AskTab tab) {
    // The settings have no material of their own.
    return fromRawValue<AskPlace>(rawValue(tab)).value_or(AskPlace::recent);
}

std::string_view labelOf(AskPlace place) {
    switch (place) {
        case AskPlace::recent:
            return "Recent";
        case AskPlace::meetings:
            return "Meetings";
        case AskPlace::followups:
            return "Follow-ups";
        case AskPlace::actions:
            return "Skills";  // what that tab shows
        case AskPlace::meeting:
        case AskPlace::call:
            break;
    }
    return "a meeting page";
}

/// " (Aug 3)"; empty without a day.
std::string dateTail(const std::optional<std::string>& date) {
    const auto day = date ? shortDate(*date) : std::nullopt;
    return day ? " (" + *day + ")" : "";
}

std::string placeSentence(const AskViewContext& context, const std::optional<std::string>& title) {
    if (isAtMeeting(context)) {
        const bool isNamed = title && !title->empty();
        return "The user is on the " + std::string(rawValue(context.place)) + " page for '" +
               (isNamed ? *title : "this meeting") + "'" + dateTail(context.meetingDate) +
               ". Answer from it first.";
    }
    if (context.place == AskPlace::meetings && hasSelection(context)) {
        const std::size_t count = context.selectedMeetingIDs->size();
        return "The user has " + std::to_string(count) + " meeting" + (count == 1 ? "" : "s") +
               " selected in Meetings. Answer from those.";
    }
    const std::string_view folder = folderOf(context);
    const std::string where = folder.empty() ? std::string(labelOf(context.place))
                                             : "the " + std::string(folder) + " folder in Meetings";
    return "The user is on " + where + ". Prefer the last two weeks.";
}
}  // namespace

AskViewContext day(Instant now, const Calendar& calendar) {
    return {.place = AskPlace::recent, .today = calendar.dayString(now)};
}

AskViewContext context(const AskViewInput& input) {
    AskViewContext context{.place = placeOf(input.tab), .today = input.today};
    if (!input.filters.empty()) context.filters = input.filters;
    if (input.meeting) {
        context.place = AskPlace::meeting;
        context.meetingID = input.meeting->id;
        context.meetingDate = input.meeting->date;
    } else if (input.call && input.call->meetingID) {
        context.place = AskPlace::call;
        context.meetingID = input.call->meetingID;
        context.meetingDate = input.call->date;
    } else if (input.tab == AskTab::meetings) {
        context.folder = input.folder;
        if (!input.selection.empty()) context.selectedMeetingIDs = input.selection;
    }
    return context;
}

std::string statement(const AskViewContext& context, const std::optional<std::string>& title) {
    std::string sentence = placeSentence(context, title);
    if (context.filters && !context.filters->empty())
        sentence += " Filters: " + Text::joined(*context.filters, ", ") + ".";
    return sentence;
}

std::string recentSince(std::string_view today) {
    const auto start = Calendar::gregorianUtc().parseDay(today);
    if (!start) return std::string(today);
    auto day = std::chrono::floor<std::chrono::days>(*start);
    for (std::size_t weekdays = 0;; day -= std::chrono::days(1)) {
        const std::chrono::weekday weekday(day);
        const bool isWeekend = weekday == std::chrono::Saturday || weekday == std::chrono::Sunday;
        if (!isWeekend && ++weekdays == recentWeekdays) break;
    }
    return Calendar::gregorianUtc().dayString(day);
}

std::vector<std::string> material(const AskViewContext& context, std::span<const AskMeeting> pool,
                                  const AnswerScope& scope, std::span<const std::string> series) {
    if (isAtMeeting(context)) return withSeries(*context.meetingID, series);
    if (hasSelection(context)) {
        const auto& selected = *context.selectedMeetingIDs;
        return idsOf(
            apply({.meetingIDs = AnswerScope::IDs(selected.begin(), selected.end())}, pool));
    }
    if (!scope.isAll()) return idsOf(apply(scope, pool));

    const std::string since = recentSince(context.today);
    Ids visible, recent;
    for (const AskMeeting& meeting : pool) {
        if (!inFolder(meeting, folderOf(context))) continue;
        visible.push_back(meeting.id);
        if (meeting.date >= since) recent.push_back(meeting.id);
    }
    if (recent.size() >= enoughRecent) return recent;
    if (visible.size() > enoughRecent) visible.resize(enoughRecent);
    return visible;
}

AnswerScope baseScope(const AskViewContext& context, std::span<const std::string> series) {
    AnswerScope scope;
    const auto narrowTo = [&](const Ids& ids) {
        scope.meetingIDs = AnswerScope::IDs(ids.begin(), ids.end());
    };
    if (isAtMeeting(context)) {
        narrowTo(withSeries(*context.meetingID, series));
        return scope;
    }
    if (hasSelection(context)) narrowTo(*context.selectedMeetingIDs);
    const std::string_view folder = folderOf(context);
    if (!folder.empty() && folder != unfiledFolderName) scope.folder = folder;
    return scope;
}
}  // namespace ombrix::AskContext
