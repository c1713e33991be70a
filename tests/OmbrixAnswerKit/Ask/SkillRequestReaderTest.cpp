#include "OmbrixAnswerKit/Ask/SkillRequestReader.h"

#include <gtest/gtest.h>

#include "OmbrixAnswerKit/Ask/AskRead.h"

namespace ombrix {
namespace {

using List = std::vector<std::string>;
using SkillRequestReader::Command;
using SkillRequestReader::Read;

const Calendar calendar("UTC", Calendar::Weekday::monday);
const Instant now = *parseIsoInstant("2026-08-21T12:00:00Z");  // a Friday

AskMeeting meeting(std::string id, std::string date, std::string title, List others,
                   std::string folder = {}) {
    others.push_back("Nadia Brandt");
    return {.id = std::move(id),
            .title = std::move(title),
            .date = std::move(date),
            .participants = std::move(others),
            .folder = std::move(folder)};
}

/// Deliberately not in order.
const std::vector<AskMeeting> pool = {
    meeting("b", "2026-07-01", "Design reviews", {"Ilse Aichinger", "Anne Lee"}, "Acme/Weekly"),
    meeting("f", "2026-08-20", "Preview of the launch", {"Ann", "Ilse Aichinger"}, "Acme"),
    meeting("e", "2026-08-12", "Coffee", {"Ilse Aichinger"}, "Café"),
    meeting("d", "2026-08-11", "1:1 Ann / Nadia", {"Anne Lee", "Me"}),
    meeting("c", "2026-07-31", "Lumen: follow-up review", {"Speaker 2", "Zoë O’Neil", "Ann Lee"}),
    meeting("a", "2026-06-01", "Sync 1:15, Lumen weeklies", {"Bo", "Acme", "Ann Lee"}, "Lumen"),
};

Read read(std::string_view request) {
    return SkillRequestReader::read(request, pool, "Nadia Brandt", now, calendar);
}

TEST(SkillRequestReader, ACommandIsASlashAndAName) {
    const struct {
        const char* ask;
        std::optional<Command> expected;
    } cases[] = {
        {" /Slack-Recap x\n", Command{"slack-recap", "x"}},
        {"/slack-recap", Command{"slack-recap", ""}},
        {"/recap\nmy calls", Command{"recap", "my calls"}},
        {"/ÉTÉ2\u00A0x", Command{"été2", "x"}},
        {"/tmp/notes", {}},
        {"/recap!", {}},
        {"/", {}},
        {"/ recap", {}},
        {"recap", {}},
        {"", {}},
    };
    for (const auto& [ask, expected] : cases) EXPECT_EQ(SkillRequestReader::split(ask), expected);
}

TEST(SkillRequestReader, ARequestNamesMeetings) {
    const struct {
        const char* request;
        Read expected;
    } cases[] = {
        // Nothing is named.
        {"", Read::none},
        {"my meetings, short", Read::none},
        {"our recent meetings", Read::none},
        {"…!? 3", Read::none},
        {"write it for Ilse", Read::none},
        {"on the project", Read::none},
        // Times and counts.
        {"what we said in July", {{"in July"}, {"c", "b"}}},
        {"keep it for next week", {{"for next week"}, {"f", "e", "d", "c", "b", "a"}}},
        {"my last 2 meetings", {{"last 2 meetings"}, {"f", "e"}}},
        {"my latest call", {{"my latest call"}, {"f"}}},
        {"THREE sessions and two calls", {{"THREE sessions", "and two calls"}, {"f", "e"}}},
        {"recap from my latest call", {{"from my latest call"}, {"f"}}},
        {"Ilse's last two syncs", {{"Ilse's last two syncs"}, {"f", "e"}, "Ilse Aichinger"}},
        {"Bo’s past sync, the 2 calls", {{"Bo’s past sync", "the 2 calls"}, {"a"}, "Bo"}},
        {"the Lumen 2 calls", {{"the Lumen 2 calls"}, {}, {}, {"Lumen", "2"}}},
        {"of the calls, about 3 calls", {{"about 3 calls"}, {"f", "e", "d"}}},
        {"0 calls", {{"0 calls"}, {}}},
        // Kinds, alone and as alternatives.
        {"last ten 1:1s", {{"last ten 1:1s"}, {"e", "d"}}},
        {"my one-on-one", {{"my one-on-one"}, {"e", "d"}}},
        {"the reviews, the weeklies", {{"the reviews", "the weeklies"}, {"c", "b", "a"}}},
        {"my last review", {{"my last review"}, {"c"}}},
        {"demos", {{"demos"}, {}}},
        // Persons.
        {"Ilse's reviews", {{"Ilse's reviews"}, {"b"}, "Ilse Aichinger"}},
        {"last ANNE lee’s call", {{"last ANNE lee’s call"}, {"d"}, "Anne Lee"}},
        {"Ann's calls", {{"Ann's calls"}, {"f", "d", "c", "b", "a"}, "Ann"}},
        {"Lee meetings", {{"Lee meetings"}, {"d", "b"}, "Anne Lee"}},
        {"Zoe O'Neil chats", {{"Zoe O'Neil chats"}, {"c"}, "Zoë O’Neil"}},
        {"the Acme calls", {{"the Acme calls"}, {"a"}, "Acme"}},
        {"2 Lee meetings in July", {{"in July", "2 Lee meetings"}, {"b"}, "Anne Lee"}},
        {"the Lee Anne calls", {{"the Lee Anne calls"}, {}, {}, {"Lee", "Anne"}}},
        {"the Aich calls", {{"the Aich calls"}, {}, {}, {"Aich"}}},
        {"the Speaker 2 calls", {{"the Speaker 2 calls"}, {}, {}, {"Speaker", "2"}}},
        // Folders and titles.
        {"my cafe meetings", {{"my cafe meetings"}, {"e"}}},
        {"about the Acme account", {{"about the Acme account"}, {"f", "b"}}},
        {"on the Lumen project", {{"on the Lumen project"}, {"a"}}},
        {"review follow-up sessions", {{"review", "follow-up sessions"}, {"c"}}},
        {"for the lumen sync team", {{"for the lumen sync", "for the lumen sync team"}, {"a"}}},
        // Names on no file, and names with others that are.
        {"my last 3 Osterby meetings", {{"my last 3 Osterby meetings"}, {}, {}, {"Osterby"}}},
        {"on the Osterby deal, 100 calls of OSTERBY meetings",
         {{"100 calls", "of OSTERBY meetings", "on the Osterby deal"}, {}, {}, {"100", "OSTERBY"}}},
        {"Bo's calls about the Nix folder",
         {{"Bo's calls", "about the Nix folder"}, {"a"}, "Bo", {"Nix"}}},
    };
    for (const auto& [request, expected] : cases) {
        const Read got = read(request);
        EXPECT_EQ(got.phrases, expected.phrases) << request;
        EXPECT_EQ(got.material, expected.material) << request;
        EXPECT_EQ(got.person, expected.person) << request;
        EXPECT_EQ(got.unmatched, expected.unmatched) << request;
    }
}

TEST(SkillRequestReader, WordsAreSaidBack) {
    AskRead read;
    EXPECT_EQ(read.saidBack(), std::nullopt);
    read.unmatched = {"A", "B", "C"};
    EXPECT_EQ(read.saidBack(), "No meetings on file match A, B or C.");
    read.unmatched = {"A", "B"};
    EXPECT_EQ(read.saidBack(), "No meetings on file match A or B.");
}

TEST(SkillRequestReader, AnAskReadsItsPlaceUnlessItNamesMeetings) {
    using AskContext::Surroundings;
    const AskViewContext inAcme =
        AskContext::context({.tab = AskTab::meetings, .folder = "Acme", .today = "2026-08-21"});
    const Surroundings around{.pool = AskMeeting::newestFirst(pool), .userName = "Nadia"};
    const struct {
        const char* ask;
        AskRead expected;
    } cases[] = {
        {" my last review ", {.request = "my last review", .material = {"f", "b"}}},
        {"/recap", {.command = "recap", .material = {"f", "b"}}},
        {"/recap my calls", {.command = "recap", .request = "my calls", .material = {"f", "b"}}},
        {"/recap my last review",
         {.command = "recap",
          .request = "my last review",
          .material = {"b"},
          .phrases = {"my last review"}}},
        {"/recap the Lumen calls",  // whose meetings are elsewhere
         {.command = "recap",
          .request = "the Lumen calls",
          .unmatched = {"Lumen"},
          .phrases = {"the Lumen calls"}}},
    };
    for (auto [ask, expected] : cases) {
        expected.statement =
            "The user is on the Acme folder in Meetings. Prefer the last two weeks.";
        EXPECT_EQ(AskContext::read(ask, inAcme, around, now, calendar), expected) << ask;
    }
}

TEST(SkillRequestReader, AMegabyteIsReadInTime) {
    for (const char* piece : {"a-", "x's meetings ", "שלום "}) {
        std::string request;
        while (request.size() < 1'000'000) request += piece;
        EXPECT_EQ(read(request + " on the Nix deal").unmatched.back(), "Nix") << piece;
    }
}
}  // namespace
}  // namespace ombrix
