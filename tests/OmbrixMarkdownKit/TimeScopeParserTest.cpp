#include "OmbrixMarkdownKit/TimeScopeParser.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace ombrix {
namespace {

using TimeScopeParser::Parse;
using Phrases = std::vector<std::string>;
constexpr auto none = std::nullopt;

const Calendar sundayFirst("UTC", Calendar::Weekday::sunday);
const Calendar mondayFirst("UTC", Calendar::Weekday::monday, 4);

Instant noon(const std::string& day) { return *parseIsoInstant(day + "T12:00:00Z"); }

Parse read(std::string_view question, const char* day = "2026-03-10",  // a Tuesday
           const Calendar& calendar = sundayFirst) {
    return TimeScopeParser::parse(question, noon(day), calendar);
}

AnswerScope days(const char* from, const char* to) { return {.dateFrom = from, .dateTo = to}; }

TEST(TimeScopeParser, APhraseIsTakenOffTheQuestion) {
    const auto week = days("2026-03-01", "2026-03-07");
    const struct {
        const char* question;
        Parse parse;
    } cases[] = {
        {"what did we decide last week?", {week, "what did we decide?", {"last week"}, none}},
        {"last week's decisions", {week, "decisions", {"last week's"}, none}},
        {"LAST  \n WEEK’S decisions", {week, "decisions", {"LAST  \n WEEK’S"}, none}},
        {"last week: what  is open ?", {week, "what is open?", {"last week"}, none}},
        {"last week — pricing", {week, "pricing", {"last week"}, none}},
        {"last week –, pricing", {week, ", pricing", {"last week"}, none}},
        {"pricing last week , and notes", {week, "pricing, and notes", {"last week"}, none}},
        {"last week", {week, "", {"last week"}, none}},
        {"price \u0301x last week", {week, "price \u0301x", {"last week"}, none}},
        {"last week.", {week, "", {"last week"}, none}},
        {"last meeting's notes", {{.lastN = 1}, "notes", {"last meeting's"}, none}},
        {"from the last meeting", {{.lastN = 1}, "from", {"the last meeting"}, none}},
        {"the past three meetings", {{.lastN = 3}, "", {"the past three meetings"}, none}},
        {"plan over the next 2 weeks", {{}, "plan", {"over the next 2 weeks"}, 14}},
    };
    for (const auto& [question, parse] : cases) EXPECT_EQ(read(question), parse) << question;
}

TEST(TimeScopeParser, AQuestionWithoutATimeStaysAsItIs) {
    for (const char* question : {"",
                                 "  what   did we decide ?",
                                 "past eleven days",
                                 "next thirteen days",
                                 "last weeks",
                                 "lastweek",
                                 "blast week",
                                 "last 1000 days",
                                 "the last mile",
                                 "I may go",
                                 "since mayhem",
                                 "in mar",
                                 "today1",
                                 "last ３ days",
                                 "last days",
                                 "next meeting",
                                 "end of month",
                                 "since 2026-3-5",
                                 "\u0301",
                                 "last\xffweek",
                                 "lаst week (with a Cyrillic letter)"})
        EXPECT_EQ(read(question), (Parse{.strippedQuestion = question})) << question;
}

TEST(TimeScopeParser, LookingBackGivesAWindow) {
    const struct {
        const char* today;
        const char* question;
        const char* from;
        const char* to;
    } cases[] = {
        // rolling windows end today
        {"2026-03-10", "last 7 days", "2026-03-04", "2026-03-10"},
        {"2026-03-10", "last 1 days", "2026-03-10", "2026-03-10"},
        {"2026-03-10", "last 0 days", "2026-03-11", "2026-03-10"},
        {"2026-03-10", "past ten days", "2026-03-01", "2026-03-10"},
        {"2026-03-10", "past 100 days", "2025-12-01", "2026-03-10"},
        {"2026-03-10", "past 2 weeks", "2026-02-25", "2026-03-10"},
        {"2026-03-31", "last 2 months", "2026-02-01", "2026-03-31"},
        {"2026-03-31", "last 1 month", "2026-03-01", "2026-03-31"},  // clipped to 02-28 first
        {"2026-03-10", "last 12 months'", "2025-03-11", "2026-03-10"},
        // periods of the calendar are whole
        {"2026-03-10", "this week", "2026-03-08", "2026-03-14"},
        {"2026-03-10", "past week", "2026-03-01", "2026-03-07"},
        {"2026-01-01", "this week", "2025-12-28", "2026-01-03"},
        {"2026-03-10", "this month", "2026-03-01", "2026-03-31"},
        {"2026-03-31", "last month", "2026-02-01", "2026-02-28"},
        {"2026-01-31", "past month", "2025-12-01", "2025-12-31"},
        {"2026-12-31", "this year", "2026-01-01", "2026-12-31"},
        {"2026-01-01", "last year's", "2025-01-01", "2025-12-31"},
        // days
        {"2026-03-01", "yesterday", "2026-02-28", "2026-02-28"},
        {"2026-01-01", "yesterday's", "2025-12-31", "2025-12-31"},
        {"2026-03-10", "today", "2026-03-10", "2026-03-10"},
        // months: without a year the latest one that has begun
        {"2026-03-10", "in march", "2026-03-01", "2026-03-31"},
        {"2026-03-10", "in November", "2025-11-01", "2025-11-30"},
        {"2025-11-01", "in November", "2025-11-01", "2025-11-30"},
        {"2026-03-10", "in December 2025", "2025-12-01", "2025-12-31"},
        {"2026-03-10", "in february 2024", "2024-02-01", "2024-02-29"},
        {"2026-03-10", "in april ２０２４", "2025-04-01", "2025-04-30"},  // no year that parses
    };
    for (const auto& [today, question, from, to] : cases)
        EXPECT_EQ(read(question, today).scope, days(from, to)) << question << " on " << today;
}

TEST(TimeScopeParser, SinceLeavesTheEndOpen) {
    const struct {
        const char* today;
        const char* question;
        const char* from;
    } cases[] = {
        {"2026-01-15", "since January", "2026-01-01"},
        {"2026-03-10", "since may", "2025-05-01"},
        {"2026-03-10", "since May 2024", "2024-05-01"},
        {"2026-03-10", "since 2026-02-03", "2026-02-03"},
        {"2026-03-10", "since 2026-13-99", "2026-13-99"},  // the day is passed on unread
    };
    for (const auto& [today, question, from] : cases)
        EXPECT_EQ(read(question, today), (Parse{{.dateFrom = from}, "", {question}, none}));
}

TEST(TimeScopeParser, LookingAheadGivesAHorizonAndNoWindow) {
    const struct {
        const char* today;
        const char* question;
        std::int64_t horizon;
    } cases[] = {
        {"2026-03-10", "next 3 days", 3},
        {"2026-03-10", "next 0 days", 0},
        {"2026-03-10", "within the next twelve weeks", 84},
        {"2026-03-10", "in next one month's", 31},
        {"2026-03-10", "next 12 months", 365},
        {"2027-03-10", "next 12 months", 366},
        {"2026-03-10", "for the coming week", 7},
        {"2026-03-10", "this coming week", 7},
        {"2026-01-31", "upcoming month", 28},  // clipped to 02-28
        {"2026-03-10", "by the end of this week", 4},
        {"2026-03-14", "till end of week", 1},
        {"2026-03-10", "before the end of the month", 21},
        {"2026-03-31", "by end of month", 1},
        {"2026-12-31", "until end of month's", 1},
        {"2026-03-10", "by tomorrow", 1},
        {"2026-03-10", "tomorrow's", 1},
    };
    for (const auto& [today, question, horizon] : cases)
        EXPECT_EQ(read(question, today), (Parse{{}, "", {question}, horizon})) << question;
}

TEST(TimeScopeParser, PhrasesMergeAndNoneIsReadTwice) {
    const struct {
        const char* question;
        Parse parse;
    } cases[] = {
        {"last 3 meetings with Ann last week",
         {{.dateFrom = "2026-03-01", .dateTo = "2026-03-07", .lastN = 3},
          "with Ann",
          {"last 3 meetings", "last week"},
          none}},
        {"this week and last week",
         {days("2026-03-08", "2026-03-07"), "and", {"this week", "last week"}, none}},
        {"today and tomorrow", {days("2026-03-10", "2026-03-10"), "and", {"today", "tomorrow"}, 1}},
        {"by tomorrow or next week", {{}, "or", {"by tomorrow", "next week"}, 7}},
        {"last meeting, last 4 meetings",
         {{.lastN = 1}, "", {"last meeting", "last 4 meetings"}, none}},
        {"until end of this month", {{}, "", {"until end of this month"}, 21}},
    };
    for (const auto& [question, parse] : cases) EXPECT_EQ(read(question), parse) << question;
}

TEST(TimeScopeParser, QuotedWordsAreNoTime) {
    const auto week = days("2026-03-01", "2026-03-07");
    const struct {
        const char* question;
        Parse parse;
    } cases[] = {
        {R"("last week" review)", {{}, R"("last week" review)", {}, none}},
        {"“last week” review", {{}, "“last week” review", {}, none}},
        {"„next week\" review", {{}, "„next week\" review", {}, none}},
        {R"("today)", {days("2026-03-10", "2026-03-10"), "\"", {"today"}, none}},
        {R"("a" last week "tomorrow")", {week, R"("a" "tomorrow")", {"last week"}, none}},
        {R"("today" "last week)", {week, R"("today" ")", {"last week"}, none}},
    };
    for (const auto& [question, parse] : cases) EXPECT_EQ(read(question), parse) << question;
}

// Letters beyond ASCII that fold to ASCII ones belong to the words as the expressions see them.
TEST(TimeScopeParser, CaseIsIgnoredAsUnicodeHasIt) {
    const auto week = days("2026-03-01", "2026-03-07");
    for (const char* question : {"LaSt WeEk", "laſt week", "last wee\u212A", "la\uFB06 week"})
        EXPECT_EQ(read(question), (Parse{week, "", {question}, none})) << question;
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
    EXPECT_EQ(monday("last week", "2026-03-10").scope, days("2026-03-02", "2026-03-08"));
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
        const char* why;
        const Calendar& calendar;
        const char* now;
        const char* question;
        Parse parse;
    } cases[] = {
        {"already tomorrow in Berlin",
         berlin,
         "2026-03-10T23:30:00Z",
         "today",
         {days("2026-03-11", "2026-03-11"), "", {"today"}, none}},
        {"still yesterday in New York",
         newYork,
         "2026-03-10T03:30:00Z",
         "today",
         {days("2026-03-09", "2026-03-09"), "", {"today"}, none}},
        // 2026-03-29 has 23 hours in Berlin; now is half past midnight of the day after it
        {"behind the short day",
         berlin,
         "2026-03-29T22:30:00Z",
         "yesterday",
         {days("2026-03-29", "2026-03-29"), "", {"yesterday"}, none}},
        {"the week of the short day",
         berlin,
         "2026-03-29T22:30:00Z",
         "last week",
         {days("2026-03-23", "2026-03-29"), "", {"last week"}, none}},
        {"over the short day",
         berlin,
         "2026-03-28T23:30:00Z",
         "by end of month",
         {{}, "", {"by end of month"}, 2}},
        {"from before the short day",
         berlin,
         "2026-03-10T22:30:00Z",
         "next month",
         {{}, "", {"next month"}, 31}},
        {"the month of the short day",
         berlin,
         "2026-03-31T21:30:00Z",
         "last 1 months",
         {days("2026-03-01", "2026-03-31"), "", {"last 1 months"}, none}},
        // 2026-11-01 has 25 hours in New York; now is a quarter to midnight of it
        {"at the end of the long day",
         newYork,
         "2026-11-02T04:45:00Z",
         "last 2 days",
         {days("2026-10-31", "2026-11-01"), "", {"last 2 days"}, none}},
        {"from the long day",
         newYork,
         "2026-11-02T04:45:00Z",
         "in november",
         {days("2026-11-01", "2026-11-30"), "", {"in november"}, none}},
    };
    for (const auto& [why, calendar, now, question, parse] : cases)
        EXPECT_EQ(TimeScopeParser::parse(question, *parseIsoInstant(now), calendar), parse) << why;
}

TEST(TimeScopeParser, ALongQuestionIsReadToItsEnd) {
    std::string question;
    for (int i = 0; i < 20'000; ++i) question += "today \"x\" ";
    const auto parse = read(question + "by tomorrow");
    EXPECT_EQ(parse.scope, days("2026-03-10", "2026-03-10"));
    EXPECT_EQ(parse.horizonDays, 1);
    ASSERT_EQ(parse.matchedPhrases.size(), 20'001U);
    EXPECT_EQ(parse.matchedPhrases.back(), "by tomorrow");
    EXPECT_EQ(parse.strippedQuestion.size(), 20'000 * 4 - 1U);

    const std::string gap(300'000, ' ');
    const std::string wide = "by" + gap + "the" + gap + "end" + gap + "of" + gap + "this week";
    EXPECT_EQ(read(wide + " or today"),
              (Parse{days("2026-03-10", "2026-03-10"), "or", {wide, "today"}, 4}));
}

TEST(TimeScopeParser, EveryPrefixOfAQuestionIsReadWithoutHarm) {
    const std::string question =
        "„next week“ in the last 3 meetings, laﬆ week’s since May 2024\xF0\x9F \r\n “today";
    for (std::size_t size = 0; size <= question.size(); ++size) {
        const std::string_view prefix = std::string_view(question).substr(0, size);
        const auto parse = read(prefix);
        std::size_t left = prefix.size();
        for (const auto& phrase : parse.matchedPhrases) {
            EXPECT_NE(prefix.find(phrase), std::string_view::npos) << phrase;
            left -= phrase.size();
        }
        EXPECT_LE(parse.strippedQuestion.size(), left) << prefix;
    }
}
}  // namespace
}  // namespace ombrix
