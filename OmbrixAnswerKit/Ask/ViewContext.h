// Where the user stands, and what an ask reads that does not name it: the meeting page that is
// open, the meetings that are selected, a folder, or else the last two weeks. `AskRead` joins this
// with what the ask names itself. Nothing here fails: unknown ids and unreadable dates give less
// material.
#pragma once

#include <cstddef>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "OmbrixAnswerKit/Ask/AskMeeting.h"
#include "OmbrixAnswerKit/Ask/AskScope.h"
#include "OmbrixMarkdownKit/Search/AnswerScope.h"
#include "OmbrixPlatform/Calendar.h"
#include "OmbrixPlatform/EnumNames.h"

namespace ombrix {

enum class AskPlace { recent, meetings, followups, actions, meeting, call };

constexpr auto rawValues(AskPlace) {
    return EnumNames::table<AskPlace>({{AskPlace::recent, "recent"},
                                       {AskPlace::meetings, "meetings"},
                                       {AskPlace::followups, "followups"},
                                       {AskPlace::actions, "actions"},
                                       {AskPlace::meeting, "meeting"},
                                       {AskPlace::call, "call"}});
}

enum class AskTab { recent, meetings, followups, actions, settings };

constexpr auto rawValues(AskTab) {
    return EnumNames::table<AskTab>({{AskTab::recent, "recent"},
                                     {AskTab::meetings, "meetings"},
                                     {AskTab::followups, "followups"},
                                     {AskTab::actions, "actions"},
                                     {AskTab::settings, "settings"}});
}

/// The view as the application reports it.
struct AskViewInput {
    struct MeetingPage {
        std::string id;
        std::optional<std::string> date{};  ///< "YYYY-MM-DD"
        bool operator==(const MeetingPage&) const = default;
    };
    struct Call {
        std::optional<std::string> meetingID{};  ///< nothing until the call has a meeting
        std::optional<std::string> date{};       ///< "YYYY-MM-DD"
        bool operator==(const Call&) const = default;
    };

    AskTab tab = AskTab::recent;
    std::optional<MeetingPage> meeting{};  ///< the meeting page that is open
    std::optional<Call> call{};            ///< the live call
    std::optional<std::string> folder{};   ///< the folder that the Meetings tab shows
    std::vector<std::string> selection{};  ///< ids of meetings selected there
    std::vector<std::string> filters{};    ///< as the view words them
    std::string today{};                   ///< "YYYY-MM-DD"
    bool operator==(const AskViewInput&) const = default;
};

/// The place that decides. An empty list counts as absent, and so does an empty folder.
struct AskViewContext {
    AskPlace place = AskPlace::recent;
    std::optional<std::string> meetingID{};
    std::optional<std::string> meetingDate{};  ///< "YYYY-MM-DD"
    std::optional<std::string> folder{};
    std::optional<std::vector<std::string>> selectedMeetingIDs{};
    std::optional<std::vector<std::string>> filters{};
    std::string today{};  ///< "YYYY-MM-DD"
    bool operator==(const AskViewContext&) const = default;
};

namespace AskContext {

constexpr std::size_t enoughRecent = 3;     ///< with fewer recent meetings, the newest ones count
constexpr std::size_t recentWeekdays = 10;  ///< how far back a meeting is recent

/// The context without a view: the place `recent` on the calendar's day of `now`.
AskViewContext day(Instant now, const Calendar& calendar);

/// The context of a view. An open meeting page wins over a call, and a call that has a meeting over
/// the tab. The folder and the selection count in the Meetings tab only, the settings read as
/// Recent.
AskViewContext context(const AskViewInput& input);

/// One sentence that tells a model where the user is, and a second one for the filters. `title` is
/// that of the context's meeting; a missing or empty one reads "this meeting". A date that is no
/// day is left out.
std::string statement(const AskViewContext& context, const std::optional<std::string>& title);

/// The ids of the meetings that an ask at this place reads. `pool` is newest first, `series` holds
/// the ids of the meetings that belong with the context's meeting. In this order: the meeting and
/// its series, known to the pool or not; the selected meetings of the pool; the meetings in
/// `scope`, unless that is all; the recent ones of the folder; its newest three.
std::vector<std::string> material(const AskViewContext& context, std::span<const AskMeeting> pool,
                                  const AnswerScope& scope, std::span<const std::string> series);

/// What an ask at this place may name meetings of: the meeting and its series, or the selection
/// and the folder. "Unfiled" and an empty folder do not narrow.
AnswerScope baseScope(const AskViewContext& context, std::span<const std::string> series);

/// The first day that is recent: the tenth weekday back, `today` included if it is one. A `today`
/// that is no day comes back as it is.
std::string recentSince(std::string_view today);
}  // namespace AskContext
}  // namespace ombrix
