#include "OmbrixMemoryKit/Memory/ConsolidateModels.h"

#include <gtest/gtest.h>

#include <algorithm>

#include "OmbrixMemoryKit/Memory/MemoryCandidates.h"
#include "OmbrixPlatform/Text.h"

namespace ombrix {
namespace {

using Error = LandOutput::DecodeError;
using Candidate = ConsolidateCandidate;
using Strings = std::vector<std::string>;

const std::string answer = R"({"version": 1, "kind": "thread", "who": [], "ignored": 7,
  "what_this_is": [{"text": "The launch.", "sources": ["[Weekly, 2026-09-01]"]}],
  "through_line": "One story.",
  "decisions": [{"text": "October", "by": "Ana", "date": "2026-09-01", "sources": []}],
  "open": [{"text": "The deck", "direction": "owed_to_user", "due": null, "sources": []}],
  "not_sure": ["x"]})";

TEST(ConsolidateOutput, AnAnswerIsTakenWholeOrRefused) {
    const auto output = ConsolidateOutput::decode(answer);
    EXPECT_EQ(output.open,
              (std::vector<ConsolidateOpen>{
                  {.text = "The deck", .direction = ConsolidateOpen::Direction::owedToUser}}));
    EXPECT_EQ(ConsolidateOutput::decode(Json::write(encode(output), Json::Style::file)), output);

    const struct {
        const char *from, *to;
        Error error;
    } cases[] = {
        {"{\"version\"", "\"version\"", Error::notJSON()},
        {"\"through_line\"", "\"line\"", Error::notJSON()},
        {"owed_to_user", "owed", Error::notJSON()},
        {"\"version\": 1", "\"version\": 2", Error::unsupportedVersion(2)},
        {"\"2026-09-01\",", "\"sep 1\",", Error::invalidDate("decisions.date", "sep 1")},
        {"\"due\": null", "\"due\": \"2026-02-31\"", Error::invalidDate("open.due", "2026-02-31")},
    };
    for (const auto& [from, to, error] : cases) {
        try {
            ConsolidateOutput::decode(Text::replacingAll(answer, from, to));
            ADD_FAILURE() << to;
        } catch (const Error& thrown) {
            EXPECT_EQ(thrown, error) << to;
        }
    }
}

LandSidecar meeting(const char* key, const char* date, LandOutput output) {
    return {.meetingKey = key,
            .title = std::string("Title ") + key,
            .date = date,
            .participants = {"Ben", "ANA  Ruiz"},
            .output = std::move(output)};
}

LandMemoryFact fact(const char* key, const char* words, Certainty certainty) {
    return {.entityKey = key, .fact = words, .quote = "q", .certainty = certainty};
}

Candidate candidate(const char* words, const char* title, const char* date, Certainty certainty) {
    return {
        .fact = words, .quote = "q", .meetingTitle = title, .date = date, .certainty = certainty};
}

const std::vector<LandSidecar> sidecars = {
    meeting("m1", "2026-06-02",
            {.decisions = {{.text = "October", .quote = "q", .speaker = "ME"}},
             .memory = {fact("Name:Ana Ruiz", "old", Certainty::calendarInferred),
                        fact("thread:Q3-launch", "slow", Certainty::read)}}),
    meeting("m2", "2026-09-01",
            {.decisions = {{.text = "No fair", .quote = "q", .speaker = "Ben"}},
             .openQuestions = {{.text = "Who pays?", .quote = "q"}},
             .commitments = {{.whoKey = "name:CARL"}},
             .memory = {fact("email:a@b", "new", Certainty::recorded),
                        fact("name:ana", "other", Certainty::read)}}),
};

TEST(MemoryCandidates, FactsComeNewestFirstUnderAllKeys) {
    const Strings aliases = {"EMAIL:a@b"};
    EXPECT_EQ(
        MemoryCandidates::collect("name:ana ruiz", aliases, sidecars),
        (std::vector<Candidate>{candidate("new", "Title m2", "2026-09-01", Certainty::recorded),
                                candidate("old", "Title m1", "2026-06-02", Certainty::recorded)}));
    EXPECT_TRUE(MemoryCandidates::collect("name:nobody", {}, sidecars).empty());
}

TEST(MemoryCandidates, AThreadGoesMeetingByMeeting) {
    auto fair = candidate("No fair", "Title m2", "2026-09-01", Certainty::recorded),
         pays = candidate("Who pays?", "Title m2", "2026-09-01", Certainty::recorded),
         october = candidate("October", "Title m1", "2026-06-02", Certainty::recorded);
    fair.kind = october.kind = Candidate::Kind::decision;
    fair.who = "Ben";
    october.who = "Dana";
    pays.kind = Candidate::Kind::openQuestion;
    const auto slow = candidate("slow", "Title m1", "2026-06-02", Certainty::read);
    const auto thread = [&](const Strings& keys) {
        return MemoryCandidates::thread("thread:q3-LAUNCH", keys, sidecars, "Dana");
    };
    EXPECT_EQ(thread({"m1", "m2"}), (std::vector<Candidate>{fair, pays, slow, october}));
    EXPECT_EQ(thread({"m1", "M2"}), (std::vector<Candidate>{slow, october}));
}

TEST(MemoryCandidates, OldFactsFoldIntoOneThatCountsThem) {
    std::vector<Candidate> eleven(10, candidate("x", "t", "2026-09-01", Certainty::recorded));
    eleven.push_back(candidate("y", "t", "2026-01-02", Certainty::recorded));
    EXPECT_EQ(MemoryCandidates::fold(eleven, 11), eleven);
    auto folded = MemoryCandidates::fold(eleven, 9);
    EXPECT_EQ(folded.back(), (Candidate{.fact = "earlier: 2 facts from meetings back to 2026-01-02",
                                        .meetingTitle = "(folded)",
                                        .date = "2026-01-02",
                                        .certainty = Certainty::read}));
    folded.pop_back();
    EXPECT_EQ(folded, std::vector<Candidate>(eleven.begin(), eleven.begin() + 9));
    EXPECT_EQ(MemoryCandidates::fold(eleven, 0).size(), 1U);
}

TEST(MemoryCandidates, MeetingsOfAPersonAndOfAThreadComeOldestFirst) {
    const auto keys = [](const std::vector<LandSidecar>& meetings) {
        Strings found;
        for (const auto& each : meetings) found.push_back(each.meetingKey);
        return found;
    };
    auto shuffled = sidecars;
    std::ranges::reverse(shuffled);
    EXPECT_EQ(keys(MemoryCandidates::meetings("name:ana ruiz", {}, shuffled)),
              (Strings{"m1", "m2"}));
    EXPECT_EQ(keys(MemoryCandidates::meetings("name:carl", {}, shuffled)), (Strings{"m2"}));
    EXPECT_EQ(keys(MemoryCandidates::meetings("x", Strings{"Email:A@B"}, shuffled)),
              (Strings{"m2"}));
    EXPECT_EQ(keys(MemoryCandidates::meetings(Strings{"m2", "m1"}, shuffled)),
              (Strings{"m1", "m2"}));
}

TEST(MemoryCandidates, AnEntityIsShownAsTheNewestMeetingSpellsIt) {
    auto named = sidecars;
    named[1].participants = {"Ana Ruiz"};
    const std::pair<const char*, std::optional<std::string>> cases[] = {
        {"NAME:ana ruiz", "Ana Ruiz"},
        {"name:éva o'neil", "Éva O'neil"},
        {"thread:q3-launch", "Q3 Launch"},
        {"email:a@b", std::nullopt},
    };
    for (const auto& [key, shown] : cases) EXPECT_EQ(MemoryCandidates::display(key, named), shown);
}

TEST(ConsolidateInput, TheHashIsOfWhatTheModelSees) {
    ConsolidateInput input{.entity = {.key = "name:ana"},
                           .candidates = {{.kind = Candidate::Kind::openQuestion}},
                           .openFollowUps = {{.id = "c-0a1b2c3d"}}};
    const auto first = input.canonical();
    EXPECT_EQ(
        first.json,
        R"({"candidates":[{"certainty":"recorded","date":"","fact":"","kind":"open_question",)"
        R"("meeting_title":"","quote":""}],"corrections":[],"entity":{"aliases":[],"display":)"
        R"("","key":"name:ana","kind":"person"},"hash":")" +
            first.hash +
            R"(","open_follow_ups":[{"direction":"","id":"c-0a1b2c3d","said":"","source":"",)"
            R"("what":"","who":""}],"prior_not_sure":[],"today":"","user_name":"","version":1})");
    input.priorNotSure = {"x"};
    EXPECT_NE(input.canonical().hash, first.hash);
}
}  // namespace
}  // namespace ombrix
