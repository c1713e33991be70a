#include "OmbrixAnswerKit/Key/KeyMatcher.h"

#include <gmock/gmock.h>

namespace ombrix {
namespace {

using namespace KeyMatcher;
using testing::ElementsAre;
using testing::ElementsAreArray;
using testing::IsEmpty;

const std::vector<std::string> userNames{"Tomas Reyes"};
const WordsSet orgs{"lumen"};
constexpr std::string_view today = "2026-07-31";

AskMeeting meeting(std::string id, std::string title, std::vector<std::string> participants,
                   std::string date = "2026-07-31") {
    return {.id = std::move(id),
            .title = std::move(title),
            .date = std::move(date),
            .participants = std::move(participants)};
}

std::vector<std::string> matched(const Surface& surface, const std::vector<AskMeeting>& pool,
                                 const ThreadNames& threads = {}) {
    std::vector<std::string> ids;
    for (const auto& candidate : world(surface, pool, threads, "Tomas Reyes", {}, today).candidates)
        ids.push_back(candidate.id);
    return ids;
}

TEST(KeyMatcher, AParticipantIsAPersonUnlessItNamesNobody) {
    const Me me(userNames);
    const auto named = [](std::string full, std::optional<std::string> first = {}) {
        return Person{.full = std::move(full), .first = std::move(first)};
    };
    const std::string long300(300, 'a');
    const struct {
        std::string raw;
        std::optional<Person> person;
    } cases[] = {
        {"  Ann Ek ", named("ann ek", "ann")},
        {"\"Ek, Ann\" <ann.ek@x.se>", named("ek ann")},
        {"Zoë Hara-Lind", named("zoë hara lind", "zoë")},
        {"Bo Ek", named("bo ek")},
        {"Lumen Desk", named("lumen desk")},
        {"Ann", named("ann")},
        {"ann.ek2@x.se", named("ann ek", "ann")},
        {"jsmith@x.se", Person{.full = "jsmith", .initial = "j", .last = "smith"}},
        {"<Øyvind@x.se>", Person{.full = "øyvind", .initial = "ø", .last = "yvind"}},
        {"bob@x.se", named("bob")},
        {long300 + " Ek", named(long300 + " ek", long300)},
        {"陳美玲", named("陳美玲")},
        {"三木 健", {}},
        {"Ann <", named("ann")},
        {"a.ek@x.se", {}},
        {"ab@x.se", {}},
        {"42@x.se", {}},
        {"@x.se", {}},
        {"", {}},
        {"👋", {}},
        {"lumen@x.se", {}},
        {"treyes@x.se", {}},
        {"Tomas", {}},
        {"Tomas M Reyes", {}},
        {"Dr Tomas Reyes", {}},
        {"You", {}},
        {"Speaker Two", {}},
        {"Room 5", {}},
        {"Design Team", {}},
        {"Ann Ek (guest)", {}},
        {"Ann B Ek", {}},
        {"Zoë O\u2019Hara", {}},
        {"Ann Ek 2", {}},
        {"one two three four five", {}},
    };
    for (const auto& [raw, expected] : cases) EXPECT_EQ(person(raw, me, orgs), expected) << raw;

    EXPECT_THAT(people(meeting("", "", {"Ann Ek", "ANN EK <a@x.se>", "Guest", "Bo Ek"}), me, orgs),
                ElementsAre(named("ann ek", "ann"), named("bo ek")));
    EXPECT_THAT(titleNames("Ann x Bo Ek / Tomas, Lumen Desk and ann", me, orgs),
                ElementsAre(named("ann"), named("bo ek"), named("lumen desk")));
    EXPECT_THAT(titleNames("Lunch With Ann", me, orgs), ElementsAre(named("lunch"), named("ann")));
    EXPECT_THAT(titleNames("Sandbox", me, orgs), IsEmpty());
    EXPECT_THAT(Me(userNames).handles, ElementsAre("tomas", "tomasreyes", "treyes"));
}

TEST(KeyMatcher, CompaniesComeFromAddresses) {
    const std::vector<AskMeeting> pool{
        meeting("", "", {"a@lumen.com", "Ann <b@mail.Acme.co.uk>", "c@my-firm.de"}),
        meeting("", "", {"d@gmail.com", "e@localhost", "f@co.uk", "no address", "g@@x..nu"}),
        meeting("", "", {"h@acne.co.рф", "i@Cafe\u0301.se", "j@a.co.uk9", "k@b.Co.u\u0308k"})};
    EXPECT_THAT(orgNames(pool),
                ElementsAre("acme", "acne", "b", "cafe\u0301", "co", "lumen", "my-firm", "x"));
}

TEST(KeyMatcher, WordsOnManyCalendarsArePlain) {
    std::vector<AskMeeting> pool(100, meeting("", "", {}));
    for (int i = 0; i < 5; ++i) pool.at(i).title = "Osterby osterby";
    for (int i = 0; i < 4; ++i) pool.at(i).title += " Pilot";
    const WordsSet plain = plainWords(pool);
    EXPECT_TRUE(plain.contains("osterby"));
    EXPECT_FALSE(plain.contains("pilot")) << "in four of a hundred titles, the limit";
    EXPECT_TRUE(plain.contains("recruiting"));
    EXPECT_EQ(plain.size(), 401);
}

TEST(KeyMatcher, TheSurfacePicksMeetings) {
    const std::string longDraft(141, 'x');
    const std::vector<std::string> six{"Ann Ek", "Bo Li",  "Cy Dahl",
                                       "Di Roy", "Ed Fox", "Flo Gray"};
    const AskMeeting two = meeting("two", "Catch up", {"Tomas Reyes", "Ann Ek"});
    const AskMeeting many = meeting("many", "Gateway outage review", six);
    const AskMeeting handle = meeting("handle", "", {"jsmith@x.se"});
    AskMeeting filed = meeting("filed", "", six);
    filed.folder = "Clients/Vale Thorn";
    const struct {
        const char* why;
        Surface surface;
        std::vector<AskMeeting> pool;
        std::vector<std::string> ids;
    } cases[] = {
        {"a full name", {.windowTitle = "Ann Ek (DM)"}, {two, many}, {"two"}},
        {"a first name", {.windowTitle = "ann"}, {two}, {"two"}},
        {"not a part of a word", {.windowTitle = "Annika Ekman"}, {two}, {}},
        {"the window's text picks nothing", {.windowTitle = "", .windowText = "Ann Ek"}, {two}, {}},
        {"a short field", {.windowTitle = "", .fieldText = "ask Ann"}, {two}, {"two"}},
        {"a long field", {.windowTitle = "", .fieldText = longDraft + " Ann Ek"}, {two}, {}},
        {"near", {.windowTitle = "", .nearText = "To: Ann Ek"}, {two}, {"two"}},
        {"the user", {.windowTitle = "Tomas Reyes"}, {two}, {}},
        {"one of six is too few", {.windowTitle = "Bo Li"}, {many}, {}},
        {"two of six", {.windowTitle = "Bo Li, Cy Dahl"}, {many}, {"many"}},
        {"two words of the title", {.windowTitle = "gateway outage"}, {many}, {"many"}},
        {"in window and near", {.windowTitle = "gateway", .nearText = "outage"}, {many}, {"many"}},
        {"one is too few", {.windowTitle = "gateway"}, {many}, {}},
        {"one in the field", {.windowTitle = "", .fieldText = "outage"}, {many}, {"many"}},
        {"a stop word in the field", {.windowTitle = "", .fieldText = "review"}, {many}, {}},
        {"a folder", {.windowTitle = "vale-thorn plan"}, {filed}, {"filed"}},
        {"a folder in part", {.windowTitle = "Vale"}, {filed}, {}},
        {"a folder in the field",
         {.windowTitle = "", .fieldText = "Vale Thorn"},
         {filed},
         {"filed"}},
        {"a folder near", {.windowTitle = "", .nearText = "Vale Thorn"}, {filed}, {}},
        {"a handle", {.windowTitle = "John Smith"}, {handle}, {"handle"}},
        {"a handle in two words", {.windowTitle = "Jon Smi Th"}, {handle}, {"handle"}},
        {"an initial alone", {.windowTitle = "J Smith"}, {handle}, {}},
        {"another initial", {.windowTitle = "Kim Smith"}, {handle}, {}},
        {"a name in a title",
         {.windowTitle = "Zoë"},
         {meeting("t", "1:1 / Zoë", {"Tomas Reyes"})},
         {"t"}},
        {"separators only", {.windowTitle = " / <> & + | , x and "}, {two, many, filed}, {}},
        {"an empty pool", {.windowTitle = "Ann"}, {}, {}},
    };
    for (const auto& [why, surface, pool, ids] : cases)
        EXPECT_THAT(matched(surface, pool), ElementsAreArray(ids)) << why;

    const std::string alphabet = "a b c d e f g h i j k l m n o p q r s t u v w x y z";
    const std::string endless(2'000'000, 'x');
    EXPECT_THAT(matched({.windowTitle = alphabet}, {meeting("", "", {endless + "@x.se"})}),
                IsEmpty());
    EXPECT_THAT(matched({.windowTitle = "Lumen pilot"}, {many}, {{"many", " Lumen Pilot "}}),
                ElementsAre("many"));
    EXPECT_THAT(matched({.windowTitle = "x"}, {many}, {{"many", " / "}}), IsEmpty());
}

TEST(KeyMatcher, AgeWeighsAndTheBestFewStay) {
    const auto on = [](std::string date) { return meeting(date, "", {"Ann Ek"}, date); };
    const Surface surface{.windowTitle = "Ann Ek"};
    EXPECT_THAT(matched(surface, {on("2026-07-17"), on("2026-07-31")}), ElementsAre("2026-07-31"));
    // 5 days ago is 0.78 of today, 6 days 0.74.
    EXPECT_THAT(matched(surface, {on("2026-07-25"), on("2026-07-26"), on("2026-07-31")}),
                ElementsAre("2026-07-31", "2026-07-26"));
    EXPECT_THAT(matched(surface, {on("2026-06-01")}), ElementsAre("2026-06-01"));  // 60 days
    EXPECT_THAT(matched(surface, {on("2026-05-31")}), IsEmpty());
    // No day at all counts as 14 days ago; the future beats today.
    for (const char* unknown : {"", "2026-02-31", "2026-7-1", "31.07.2026"}) {
        EXPECT_THAT(matched(surface, {on(unknown), on("2026-07-17")}),
                    ElementsAre(unknown, "2026-07-17"));
    }
    EXPECT_THAT(matched(surface, {on("2026-07-31"), on("2026-08-14")}), ElementsAre("2026-08-14"));

    std::vector<AskMeeting> ties;
    for (const char* id : {"c", "a", "e", "b", "d"}) ties.push_back(meeting(id, "", {"Ann Ek"}));
    EXPECT_THAT(matched(surface, ties), ElementsAre("c", "a", "e", "b"));
}

TEST(KeyMatcher, TermsAreWhatMayPickAMeeting) {
    const AskMeeting one = meeting("m", "The audit of Lumen with Tomas", {"Tomas Reyes", "Ann Ek"});
    const auto found = world({.windowTitle = "Ann Ek"}, std::vector{one}, {{"m", "Lumen Pilot"}},
                             "Tomas", std::vector<std::string>{"Reyes"}, today);
    EXPECT_EQ(found, (KeyPress::World{{{.id = "m",
                                        .title = "The audit of Lumen with Tomas",
                                        .date = "2026-07-31",
                                        .terms = {"audit", "lumen", "ann", "pilot", "1:1"}}}}));
}

TEST(KeyMatcher, DaysAreNumbersThatSubtract) {
    EXPECT_EQ(*day("2026-03-01") - *day("2024-02-29"), 731);
    for (const char* text : {"2026-02-29", "2026-3-1", "2026-03-01T00:00", "", "yyyy-MM-dd"})
        EXPECT_EQ(day(text), std::nullopt) << text;
}
}  // namespace
}  // namespace ombrix
