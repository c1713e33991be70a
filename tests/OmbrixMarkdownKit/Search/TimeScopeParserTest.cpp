#include "OmbrixMarkdownKit/Search/TimeScopeParser.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "OmbrixPlatform/Text.h"

namespace ombrix {
namespace {

using TimeScopeParser::Parse;
constexpr auto none = std::nullopt;

const Calendar sundayFirst("UTC", Calendar::Weekday::sunday);
const Calendar mondayFirst("UTC", Calendar::Weekday::monday, 4);

Parse read(std::string_view question, const std::string& day = "2026-03-10",  // a Tuesday
           const Calendar& calendar = sundayFirst) {
    return TimeScopeParser::parse(question, *parseIsoInstant(day + "T12:00:00Z"), calendar);
}

AnswerScope days(const char* from, const char* to) { return {.dateFrom = from, .dateTo = to}; }

const AnswerScope lastWeek = days("2026-03-01", "2026-03-07");
const AnswerScope thisDay = days("2026-03-10", "2026-03-10");

TEST(TimeScopeParser, PhrasesAreTakenOffTheQuestionAndMerge) {
    const struct {
        const char* question;
        Parse parse;
    } cases[] = {
        // what is left reads as one
        {"what did we decide last week?", {lastWeek, "what did we decide?", {"last week"}, none}},
        {"LAST  \n WEEK’S decisions", {lastWeek, "decisions", {"LAST  \n WEEK’S"}, none}},
        {"last week: what  is open ?", {lastWeek, "what is open?", {"last week"}, none}},
        {"last week — pricing", {lastWeek, "pricing", {"last week"}, none}},
        {"last week –, pricing", {lastWeek, ", pricing", {"last week"}, none}},
        {"pricing last week , and notes", {lastWeek, "pricing, and notes", {"last week"}, none}},
        {"price \u0301x last week.", {lastWeek, "price \u0301x.", {"last week"}, none}},
        {"last week.", {lastWeek, "", {"last week"}, none}},
        {"in may 20245", {days("2025-05-01", "2025-05-31"), "20245", {"in may"}, none}},
        {"last meeting's notes", {{.lastN = 1}, "notes", {"last meeting's"}, none}},
        {"the past three meetings", {{.lastN = 3}, "", {"the past three meetings"}, none}},
        // several phrases, none of them read twice
        {"last 3 meetings with Ann last week",
         {{.dateFrom = "2026-03-01", .dateTo = "2026-03-07", .lastN = 3},
          "with Ann",
          {"last 3 meetings", "last week"},
          none}},
        {"this week and last week",
         {days("2026-03-08", "2026-03-07"), "and", {"this week", "last week"}, none}},
        {"by tomorrow or next week", {{}, "or", {"by tomorrow", "next week"}, 7}},
        {"next 2 days until end of this month",
         {{}, "", {"next 2 days", "until end of this month"}, 21}},
        // quoted words are no time
        {R"("last week" review)", {{}, R"("last week" review)", {}, none}},
        {"„next week\" review", {{}, "„next week\" review", {}, none}},
        {R"("today)", {thisDay, "\"", {"today"}, none}},
        {R"("today" last week "tomorrow)",
         {lastWeek, R"("today" ")", {"last week", "tomorrow"}, 1}},
    };
    for (const auto& [question, parse] : cases) EXPECT_EQ(read(question), parse) << question;
}

TEST(TimeScopeParser, AQuestionWithoutATimeStaysAsItIs) {
    const std::string_view questions =
        "| what  is open ?|last weeks|lastweek|blast week|last days|last 1000 days|since mayhem"
        "|in mar|today1|last ３ days|next meeting|end of month|since 2026-3-5|since 2026-03-011"
        "|\u0301|last\xffweek|l\u0430st week";
    for (const auto question : Text::split(questions, "|"))
        EXPECT_EQ(read(question), (Parse{.strippedQuestion = std::string(question)})) << question;
}

TEST(TimeScopeParser, LookingBackGivesAWindow) {
    const struct {
        const char *today, *question, *from, *to;
    } cases[] = {
        // rolling windows end today
        {"2026-03-10", "last 7 days", "2026-03-04", "2026-03-10"},
        {"2026-03-10", "last 1 days", "2026-03-10", "2026-03-10"},
        {"2026-03-10", "last 0 days", "2026-03-11", "2026-03-10"},
        {"2026-03-10", "past 100 days", "2025-12-01", "2026-03-10"},
        {"2026-03-10", "past 2 weeks", "2026-02-25", "2026-03-10"},
        {"2026-03-31", "last 2 months", "2026-02-01", "2026-03-31"},
        {"2026-03-31", "last 1 month", "2026-03-01", "2026-03-31"},  // clipped to 02-28 first
        // periods of the calendar are whole
        {"2026-03-10", "this week", "2026-03-08", "2026-03-14"},
        {"2026-01-01", "past week", "2025-12-21", "2025-12-27"},
        {"2026-03-10", "this month", "2026-03-01", "2026-03-31"},
        {"2026-03-31", "last month", "2026-02-01", "2026-02-28"},
        {"2026-12-31", "this year", "2026-01-01", "2026-12-31"},
        {"2026-01-01", "last year's", "2025-01-01", "2025-12-31"},
        {"2026-01-01", "yesterday's", "2025-12-31", "2025-12-31"},
        {"2026-03-10", "today", "2026-03-10", "2026-03-10"},
        // months: without a year the latest one that has begun
        {"2026-03-10", "in march", "2026-03-01", "2026-03-31"},
        {"2025-11-01", "in November", "2025-11-01", "2025-11-30"},
        {"2026-10-31", "in November", "2025-11-01", "2025-11-30"},
        {"2026-03-10", "in february 2024", "2024-02-01", "2024-02-29"},
        {"2026-03-10", "in april ２０２４", "2025-04-01", "2025-04-30"},  // no year that parses
        // the end stays open
        {"2026-01-15", "since January", "2026-01-01", nullptr},
        {"2026-03-10", "since May 2024", "2024-05-01", nullptr},
        {"2026-03-10", "since 2026-13-99", "2026-13-99", nullptr},  // the day is passed on unread
    };
    for (const auto& [today, question, from, to] : cases) {
        AnswerScope scope{.dateFrom = from};
        if (to) scope.dateTo = to;
        EXPECT_EQ(read(question, today), (Parse{scope, "", {question}, none})) << question;
    }
}

TEST(TimeScopeParser, LookingAheadGivesAHorizonAndNoWindow) {
    const struct {
        const char *today, *question;
        std::int64_t horizon;
    } cases[] = {
        {"2026-03-10", "next 0 days", 0},
        {"2026-03-10", "within the next twelve weeks", 84},
        {"2026-03-10", "in next one month's", 31},
        {"2027-03-10", "next 12 months", 366},
        {"2026-03-10", "for the coming week", 7},
        {"2026-03-10", "this coming week", 7},
        {"2026-01-31", "during the upcoming month", 28},  // clipped to 02-28
        {"2026-03-10", "by the end of this week", 4},
        {"2026-03-14", "till end of week", 1},
        {"2026-03-10", "before the end of the month", 21},
        {"2026-12-31", "until end of month's", 1},
        {"2026-03-10", "tomorrow's", 1},
    };
    for (const auto& [today, question, horizon] : cases)
        EXPECT_EQ(read(question, today), (Parse{{}, "", {question}, horizon})) << question;
}

TEST(TimeScopeParser, NumbersInWordsReachTwelveAheadAndTenBack) {
    const std::vector<std::string> words = {"one",    "two",    "three",   "four", "five",
                                            "six",    "seven",  "eight",   "nine", "ten",
                                            "eleven", "twelve", "thirteen"};
    for (std::int64_t n = 1; n <= 13; ++n) {
        const std::string& word = words[static_cast<std::size_t>(n) - 1];
        const auto known = [&](bool is) { return is ? std::optional(n) : none; };
        EXPECT_EQ(read("next " + word + " days").horizonDays, known(n <= 12)) << word;
        EXPECT_EQ(read("last " + word + " meetings").scope.lastN, known(n >= 2 && n <= 10)) << word;
        EXPECT_EQ(read("past " + word + " days").scope.dateTo.has_value(), n >= 2 && n <= 10)
            << word;
    }
}

// Letters beyond ASCII that fold to ASCII ones belong to the words as the expressions see them.
TEST(TimeScopeParser, CaseIsIgnoredAsUnicodeHasIt) {
    for (const char* question : {"LaSt WeEk", "laſt week", "last wee\u212A", "la\uFB06 week"})
        EXPECT_EQ(read(question), (Parse{lastWeek, "", {question}, none})) << question;
    EXPECT_EQ(read("thi\u017F week").scope, days("2026-03-08", "2026-03-14"));
    EXPECT_EQ(read("next six day\u017F").horizonDays, 6);
    // The tables of numbers and months are looked up in lower case, where a long s stays itself.
    for (const char* question : {"next \u017Fix days", "in augu\u017Ft"})
        EXPECT_EQ(read(question), (Parse{.strippedQuestion = question})) << question;
}

TEST(TimeScopeParser, TheCalendarSaysWhenAWeekBegins) {
    const auto monday = [](const char* question, const char* day) {
        return read(question, day, mondayFirst);
    };
    EXPECT_EQ(monday("last week", "2026-03-08").scope, days("2026-02-23", "2026-03-01"));
    EXPECT_EQ(read("last week", "2026-03-08").scope, days("2026-03-01", "2026-03-07"));
    EXPECT_EQ(monday("this week", "2026-01-01").scope, days("2025-12-29", "2026-01-04"));
    EXPECT_EQ(monday("by end of week", "2026-03-10").horizonDays, 5);
    EXPECT_EQ(monday("by end of week", "2026-03-15").horizonDays, 1);
}

TEST(TimeScopeParser, DaysAreThoseOfTheCalendarsZone) {
    const Calendar berlin("Europe/Berlin", Calendar::Weekday::monday, 4);
    const Calendar newYork("America/New_York", Calendar::Weekday::sunday);
    const struct {
        const Calendar& calendar;
        const char *now, *question;
        AnswerScope scope;
        std::optional<std::int64_t> horizon;
    } cases[] = {
        // already tomorrow in the east, still yesterday in the west
        {berlin, "2026-03-10T23:30:00Z", "today", days("2026-03-11", "2026-03-11"), none},
        {newYork, "2026-03-10T03:30:00Z", "today", days("2026-03-09", "2026-03-09"), none},
        // 2026-03-29 has 23 hours in Berlin: from the day after it, over it and up to it
        {berlin, "2026-03-29T22:30:00Z", "yesterday", days("2026-03-29", "2026-03-29"), none},
        {berlin, "2026-03-29T22:30:00Z", "last week", days("2026-03-23", "2026-03-29"), none},
        {berlin, "2026-03-28T23:30:00Z", "by end of month", {}, 2},
        // 2026-11-01 has 25 hours in New York
        {newYork, "2026-11-02T04:45:00Z", "last 2 days", days("2026-10-31", "2026-11-01"), none},
        {newYork, "2026-11-02T04:45:00Z", "in november", days("2026-11-01", "2026-11-30"), none},
    };
    for (const auto& [calendar, now, question, scope, horizon] : cases) {
        EXPECT_EQ(TimeScopeParser::parse(question, *parseIsoInstant(now), calendar),
                  (Parse{scope, "", {question}, horizon}))
            << question << " at " << now;
    }
}

TEST(TimeScopeParser, ALongQuestionIsReadToItsEnd) {
    std::string question;
    for (int i = 0; i < 20'000; ++i) question += "today \"x\" ";
    const auto parse = read(question + "by tomorrow");
    ASSERT_EQ(parse.matchedPhrases.size(), 20'001U);
    EXPECT_EQ(parse.matchedPhrases.back(), "by tomorrow");
    EXPECT_EQ(parse.strippedQuestion.size(), 20'000 * 4 - 1U);

    const std::string gap(300'000, ' ');
    const std::string wide = "by" + gap + "the" + gap + "end" + gap + "of" + gap + "this week";
    EXPECT_EQ(read(wide + " or today"), (Parse{thisDay, "or", {wide, "today"}, 4}));
}
}  // namespace
}  // namespace ombrix
