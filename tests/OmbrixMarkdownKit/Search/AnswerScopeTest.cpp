#include "OmbrixMarkdownKit/Search/AnswerScope.h"

#include <gtest/gtest.h>

#include <limits>
#include <string>
#include <vector>

namespace ombrix {
namespace {

using IDs = AnswerScope::IDs;

TranscriptDocument meeting(std::string date, std::vector<std::string> participants = {}) {
    return {.date = std::move(date),
            .participants = std::move(participants),
            .turns = {{"Tomas", "we could keep the old price"}, {"Ann", "fine"}}};
}

TEST(AnswerScope, EveryPresentFieldMustPass) {
    const auto march = meeting("2026-03-01", {"Anne Jones", "Søren Ösmann"});
    const auto undated = meeting("", {"Anne Jones"});
    const struct {
        const char* why;
        AnswerScope scope;
        TranscriptDocument document;
        bool admitted;
    } cases[] = {
        {"an id of the set", {.meetingIDs = IDs{"a", "b"}}, march, true},
        {"an id outside it", {.meetingIDs = IDs{"A", "aa"}}, march, false},
        {"a set without ids", {.meetingIDs = IDs{}}, march, false},
        {"another case and a diacritic", {.participant = "ÄNN"}, march, true},
        {"a letter of its own", {.participant = "soren"}, march, false},
        {"a part over two names", {.participant = "Jones S"}, march, false},
        {"from that day on", {.dateFrom = "2026-03-01"}, march, true},
        {"from the next day on", {.dateFrom = "2026-03-02"}, march, false},
        {"up to that day", {.dateTo = "2026-03-01"}, march, true},
        {"up to the day before", {.dateTo = "2026-02-28"}, march, false},
        {"no day and a first day", {.dateFrom = "0000-01-01"}, undated, false},
        {"no day and a last day", {.dateTo = "2026-02-28"}, undated, true},
        {"the user spoke", {.speaker = SpeakerFilter{"Tomas Reyes", 1}}, march, true},
        {"the user spoke too little", {.speaker = SpeakerFilter{"Tomas Reyes", 2}}, march, false},
        {"nobody", {.speaker = SpeakerFilter{"", 0}}, march, false},
        {"empty texts ask for nothing",
         {.dateFrom = "", .dateTo = "", .participant = "", .folder = ""},
         undated,
         true},
        {"the folder is not the document's", {.folder = "Elsewhere"}, march, true},
    };
    for (const auto& [why, scope, document, admitted] : cases)
        EXPECT_EQ(scope.admits("a", document), admitted) << why;
}

TEST(AnswerScope, AFolderIsARunOfWholePieces) {
    const std::tuple<const char*, const char*, bool> cases[] = {
        {"/x/Acme/Weekly/a.md", "/acme//WEEKLY/", true},
        {"/x/ÅCME/a.md", "åcme", true},
        {"/x/Acme2/a.md", "Acme", false},
        {"/x/Acme/y/Weekly/a.md", "Acme/Weekly", false},
        {"/Acme/Acme/Weekly/a", "Acme/Weekly", true},
        {"Acme", "Acme/Weekly", false},
        {"/x/a.md", "//", false},
    };
    for (const auto& [path, folder, inside] : cases)
        EXPECT_EQ(AnswerScope::pathIsInFolder(path, folder), inside) << path << " in " << folder;
}

TEST(AnswerScope, ApplyKeepsTheOrderAndCountsOnlyWhatPassed) {
    const std::vector<IdentifiedDocument> pool = {{"/Acme/4.md", meeting("2026-03-04")},
                                                  {"/Other/3.md", meeting("2026-03-03")},
                                                  {"/Acme/2.md", meeting("2026-03-02")},
                                                  {"/Acme/1.md", meeting("2026-03-01")}};
    const struct {
        const char* why;
        AnswerScope scope;
        std::vector<std::size_t> kept;
    } cases[] = {
        {"all", AnswerScope::all, {0, 1, 2, 3}},
        {"a folder that is no folder", {.folder = "/"}, {}},
        {"the first two of a folder", {.lastN = 2, .folder = "acme"}, {0, 2}},
        {"more than there are",
         {.dateTo = "2026-03-02", .lastN = std::numeric_limits<std::int64_t>::max()},
         {2, 3}},
        {"none", {.lastN = 0}, {}},
        {"fewer than none", {.lastN = -1}, {}},
    };
    for (const auto& [why, scope, kept] : cases) {
        std::vector<IdentifiedDocument> expected;
        for (const std::size_t i : kept) expected.push_back(pool[i]);
        EXPECT_EQ(scope.apply(pool), expected) << why;
    }
}

TEST(AnswerScope, MergingNarrows) {
    const struct {
        const char* why;
        AnswerScope mine, others, merged;
    } cases[] = {
        {"later start, earlier end, fewer meetings",
         {.dateFrom = "2026-03-01", .dateTo = "2026-03-31", .lastN = 5},
         {.dateFrom = "2026-02-01", .dateTo = "2026-03-15", .lastN = 3},
         {.dateFrom = "2026-03-01", .dateTo = "2026-03-15", .lastN = 3}},
        {"this week and last week do not meet",
         {.dateFrom = "2026-03-08", .dateTo = "2026-03-14"},
         {.dateFrom = "2026-03-01", .dateTo = "2026-03-07"},
         {.dateFrom = "2026-03-08", .dateTo = "2026-03-07"}},
        {"empty days are absent",
         {.dateFrom = "", .dateTo = ""},
         {.dateFrom = "2026-02-01", .dateTo = ""},
         {.dateFrom = "2026-02-01"}},
        {"ids of both, the other's names, the greater number of turns",
         {.participant = "Ann",
          .meetingIDs = IDs{"a", "b"},
          .speaker = SpeakerFilter{"Ann", 4},
          .folder = "A"},
         {.participant = "Bo",
          .meetingIDs = IDs{"b", "c"},
          .speaker = SpeakerFilter{"Bo", 2},
          .folder = "B"},
         {.participant = "Bo",
          .meetingIDs = IDs{"b"},
          .speaker = SpeakerFilter{"Bo", 4},
          .folder = "B"}},
        {"no id of both, names that are empty",
         {.participant = "Ann",
          .meetingIDs = IDs{"a"},
          .speaker = SpeakerFilter{"Ann", 1},
          .folder = "Acme"},
         {.participant = "", .meetingIDs = IDs{"c"}, .speaker = SpeakerFilter{"", 2}, .folder = ""},
         {.participant = "Ann",
          .meetingIDs = IDs{},
          .speaker = SpeakerFilter{"Ann", 2},
          .folder = "Acme"}},
    };
    for (const auto& [why, mine, others, merged] : cases)
        EXPECT_EQ(mine.merging(others), merged) << why;
}

TEST(AnswerScope, JsonHoldsThePresentFieldsAndReadsBack) {
    const AnswerScope full{.dateFrom = "2026-03-01",
                           .dateTo = "2026-03-15",
                           .lastN = 3,
                           .participant = "Ann",
                           .meetingIDs = IDs{"b", "a"},
                           .speaker = SpeakerFilter{"Tomas", 2},
                           .folder = "Acme/Weekly"};
    const std::string text = Json::write(encode(full), Json::Style::canonical);
    EXPECT_EQ(text,
              R"({"dateFrom":"2026-03-01","dateTo":"2026-03-15","folder":"Acme/Weekly","lastN":3,)"
              R"("meetingIDs":["a","b"],"participant":"Ann",)"
              R"("speaker":{"minTurns":2,"userName":"Tomas"}})");
    EXPECT_EQ(Json::decode<AnswerScope>(text), full);
    EXPECT_EQ(Json::write(encode(AnswerScope::all), Json::Style::canonical), "{}");

    const auto sparse = R"({"speaker":null,"folder":"","meetingIDs":["a","a"],"x":1})";
    EXPECT_EQ(Json::decode<AnswerScope>(sparse),
              (AnswerScope{.meetingIDs = IDs{"a"}, .folder = ""}));
    for (const char* wrong :
         {R"({"lastN":"3"})", R"({"lastN":2.5})", R"({"meetingIDs":"a"})", R"({"meetingIDs":[1]})",
          R"({"speaker":{"userName":"Ann"}})", R"({"speaker":[]})", R"({"dateFrom":20260301})"}) {
        EXPECT_THROW(Json::decode<AnswerScope>(wrong), Json::DecodingError) << wrong;
    }
}

}  // namespace
}  // namespace ombrix
