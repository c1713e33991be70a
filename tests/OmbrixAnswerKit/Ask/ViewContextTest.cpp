#include "OmbrixAnswerKit/Ask/ViewContext.h"

#include <gtest/gtest.h>

namespace ombrix {
namespace {

using Ids = std::vector<std::string>;

AskMeeting meeting(std::string id, std::string date, std::string folder = {},
                   std::vector<std::string> participants = {}) {
    return {.id = std::move(id),
            .date = std::move(date),
            .participants = std::move(participants),
            .folder = std::move(folder)};
}

const std::vector<AskMeeting> pool = {
    meeting("g", "2026-08-21", "Acme/Weekly"),
    meeting("f", "2026-08-11", {}, {"Anne Jones"}),
    meeting("e", "2026-08-10", "Acme"),
    meeting("d", "2026-08-07", "Acme2"),
    meeting("c", "2026-07-01", "acme/x"),
    meeting("b", "2026-06-01"),
    meeting("a", "", "Acme"),
};

TEST(ViewContext, EveryPlaceHasItsSentence) {
    const struct {
        AskViewInput view;
        std::optional<std::string> title;
        const char* sentence;
    } cases[] = {
        {{}, {}, "The user is on Recent. Prefer the last two weeks."},
        {{.tab = AskTab::settings}, {}, "The user is on Recent. Prefer the last two weeks."},
        {{.tab = AskTab::followups}, {}, "The user is on Follow-ups. Prefer the last two weeks."},
        {{.tab = AskTab::actions, .selection = {"a"}, .filters = {"mine", "open"}},
         {},
         "The user is on Skills. Prefer the last two weeks. Filters: mine, open."},
        {{.tab = AskTab::meetings, .folder = "", .selection = {}},
         {},
         "The user is on Meetings. Prefer the last two weeks."},
        {{.tab = AskTab::meetings, .folder = "Unfiled"},
         {},
         "The user is on the Unfiled folder in Meetings. Prefer the last two weeks."},
        {{.tab = AskTab::meetings, .folder = "Acme", .selection = {"a"}},
         {},
         "The user has 1 meeting selected in Meetings. Answer from those."},
        {{.tab = AskTab::meetings, .selection = {"a", "gone"}, .filters = {"1:1s"}},
         {},
         "The user has 2 meetings selected in Meetings. Answer from those. Filters: 1:1s."},
        {{.tab = AskTab::meetings, .meeting = {{"a", "2026-08-03"}}, .call = {{"b", {}}}},
         "Lumen",
         "The user is on the meeting page for 'Lumen' (Aug 3). Answer from it first."},
        {{.call = {{"b", "2026-12-31"}}},
         "",
         "The user is on the call page for 'this meeting' (Dec 31). Answer from it first."},
        {{.meeting = {{"a", "2026-02-31"}}, .filters = {"x"}},
         {},
         "The user is on the meeting page for 'this meeting'. Answer from it first. Filters: x."},
        {{.tab = AskTab::followups, .call = {{{}, "2026-12-31"}}},
         "Lumen",
         "The user is on Follow-ups. Prefer the last two weeks."},
    };
    for (const auto& [view, title, sentence] : cases)
        EXPECT_EQ(AskContext::statement(AskContext::context(view), title), sentence);
    EXPECT_EQ(AskContext::statement({.place = AskPlace::call}, "Lumen"),
              "The user is on a meeting page. Prefer the last two weeks.");
}

TEST(ViewContext, APlaceReadsItsOwnMeetings) {
    const struct {
        const char* why;
        AskViewInput view;
        AnswerScope scope;
        Ids expected;
    } cases[] = {
        {"three are recent on Friday the 21st, from the 10th on", {}, {}, {"g", "f", "e"}},
        {"two are not enough", {.today = "2026-08-24"}, {}, {"g", "f", "e"}},
        {"no day, and no date is after its text", {.today = "2026-8-3"}, {}, {"g", "f", "e"}},
        {"four in the folder, one recent",
         {.tab = AskTab::meetings, .folder = "acme", .today = "2026-08-28"},
         {},
         {"g", "e", "c"}},
        {"two in no folder", {.tab = AskTab::meetings, .folder = "Unfiled"}, {}, {"f", "b"}},
        {"the selection, in the order of the pool",
         {.tab = AskTab::meetings, .folder = "Acme", .selection = {"b", "gone", "f"}},
         {.folder = "Acme"},
         {"f", "b"}},
        {"a selection that is gone", {.tab = AskTab::meetings, .selection = {"gone"}}, {}, {}},
        {"the page and its series", {.meeting = {{"x", {}}}}, {.folder = "Acme"}, {"x", "s", "a"}},
        {"the scope of the view",
         {},
         {.dateFrom = "2026-06-01", .dateTo = "2026-08-11", .lastN = 3},
         {"f", "e", "d"}},
        {"a participant", {}, {.participant = "jones"}, {"f"}},
        {"none of the last", {}, {.lastN = -1}, {}},
    };
    const Ids series = {"s", "x", "a"};
    for (auto [why, view, scope, expected] : cases) {
        if (view.today.empty()) view.today = "2026-08-21";
        const AskViewContext context = AskContext::context(view);
        EXPECT_EQ(AskContext::material(context, pool, scope, series), expected) << why;
    }
    EXPECT_EQ(AskContext::material({}, {}, {}, {}), Ids());
}

TEST(ViewContext, TenWeekdaysAreRecent) {
    const struct {
        const char *today, *since;
    } cases[] = {
        {"2026-08-24", "2026-08-11"},  // a Monday: back to Tuesday of the week before last
        {"2026-08-21", "2026-08-10"},  // a Friday
        {"2026-08-23", "2026-08-10"},  // a Sunday
        {"2026-03-02", "2026-02-17"}, {"", ""}, {"soon", "soon"},
    };
    for (const auto& [today, since] : cases) EXPECT_EQ(AskContext::recentSince(today), since);
    const Instant lateInUtc = *parseIsoInstant("2026-08-21T23:30:00Z");
    EXPECT_EQ(AskContext::day(lateInUtc, Calendar("Asia/Tokyo", Calendar::Weekday::sunday)),
              (AskViewContext{.place = AskPlace::recent, .today = "2026-08-22"}));
}

TEST(ViewContext, AnAskMayNameMeetingsOfItsPlaceOnly) {
    const Ids series = {"a", "x"};
    const auto scopeAt = [&](const AskViewInput& view) {
        return AskContext::baseScope(AskContext::context(view), series);
    };
    EXPECT_EQ(scopeAt({}), AnswerScope::all);
    EXPECT_EQ(scopeAt({.call = {{"x", {}}}}), (AnswerScope{.meetingIDs = {{"x", "a"}}}));
    EXPECT_EQ(scopeAt({.tab = AskTab::meetings, .folder = "Acme", .selection = {"b"}}),
              (AnswerScope{.meetingIDs = {{"b"}}, .folder = "Acme"}));
    EXPECT_EQ(scopeAt({.tab = AskTab::meetings, .folder = "Unfiled"}), AnswerScope::all);
}
}  // namespace
}  // namespace ombrix
