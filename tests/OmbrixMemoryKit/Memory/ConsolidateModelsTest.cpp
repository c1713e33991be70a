#include "OmbrixMemoryKit/Memory/ConsolidateModels.h"

#include <gtest/gtest.h>

#include "OmbrixMemoryKit/Memory/MemoryCandidates.h"
#include "OmbrixPlatform/Text.h"

namespace ombrix {
namespace {

using Error = LandOutput::DecodeError;
using Strings = std::vector<std::string>;

const std::string answer = R"({"version": 1, "kind": "thread", "who": [], "ignored": 7,
  "what_this_is": [{"text": "The launch.", "sources": ["[Weekly, 2026-09-01]"]}],
  "through_line": "One story.",
  "decisions": [{"text": "October", "by": "Ana", "date": "2026-09-01", "sources": []}],
  "open": [{"text": "The deck", "direction": "owed_to_user", "due": null, "sources": []}],
  "not_sure": ["x"]})";

TEST(ConsolidateOutput, AnAnswerIsTakenWholeOrRefused) {
    const auto output = ConsolidateOutput::decode(answer);
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
            .title = key,
            .date = date,
            .participants = {"Ben", "ANA  Ruiz"},
            .output = std::move(output)};
}

LandMemoryFact fact(const char* key, const char* words, Certainty certainty) {
    return {.entityKey = key, .fact = words, .quote = "q", .certainty = certainty};
}

const std::vector<LandSidecar> sidecars = {
    meeting("m1", "2026-06-02",
            {.decisions = {{.text = "October", .quote = "o", .speaker = "ME"}},
             .memory = {fact("Name:Ana Ruiz", "old", Certainty::calendarInferred),
                        fact("thread:Q3-launch", "slow", Certainty::read)}}),
    meeting("m2", "2026-09-01",
            {.decisions = {{.text = "No fair", .quote = "n", .speaker = "Ben"}},
             .openQuestions = {{.text = "Who pays?", .quote = "w"}},
             .commitments = {{.whoKey = "name:CARL"}},
             .memory = {fact("email:a@b", "new", Certainty::recorded),
                        fact("name:ana", "other", Certainty::read)}}),
};

Strings shown(const std::vector<ConsolidateCandidate>& candidates) {
    Strings all;
    for (const auto& [fact, quote, title, date, certainty, kind, who] : candidates) {
        const Strings fields = {fact, quote, title, date, std::string(rawValue(certainty))};
        all.push_back(Text::joined(fields, "|"));
        if (kind) all.back().append("|").append(rawValue(*kind));
        if (who) all.back().append("|").append(*who);
    }
    return all;
}

TEST(MemoryCandidates, FactsComeNewestFirstAndFoldAtTheirEnd) {
    const auto facts = MemoryCandidates::collect("name:ANA ruiz", Strings{"Email:A@B"}, sidecars);
    EXPECT_EQ(shown(facts),
              (Strings{"new|q|m2|2026-09-01|recorded", "old|q|m1|2026-06-02|recorded"}));
    EXPECT_EQ(MemoryCandidates::fold(facts, 2), facts);
    EXPECT_EQ(
        shown(MemoryCandidates::fold(facts, 1)),
        (Strings{shown(facts)[0],
                 "earlier: 1 facts from meetings back to 2026-06-02||(folded)|2026-06-02|read"}));

    const auto thread = [&](const Strings& keys) {
        return shown(MemoryCandidates::thread("thread:q3-LAUNCH", keys, sidecars, "Dana"));
    };
    const Strings old = {"slow|q|m1|2026-06-02|read",
                         "October|o|m1|2026-06-02|recorded|decision|Dana"};
    Strings both = {"No fair|n|m2|2026-09-01|recorded|decision|Ben",
                    "Who pays?|w|m2|2026-09-01|recorded|open_question"};
    both.insert(both.end(), old.begin(), old.end());
    EXPECT_EQ(thread({"m1", "m2"}), both);
    EXPECT_EQ(thread({"m1", "M2"}), old);
}

TEST(MemoryCandidates, MeetingsComeOldestFirst) {
    const std::vector<LandSidecar> turned(sidecars.rbegin(), sidecars.rend());
    const auto keys = [&](std::string_view key, const Strings& aliases) {
        std::string found;
        for (const auto& each : key.empty() ? MemoryCandidates::meetings(aliases, turned)
                                            : MemoryCandidates::meetings(key, aliases, turned))
            found += each.meetingKey;
        return found;
    };
    EXPECT_EQ(keys("name:ana ruiz", {}), "m1m2") << "took part";
    EXPECT_EQ(keys("name:carl", {}), "m2") << "is owed something";
    EXPECT_EQ(keys("x", {"Email:A@B"}), "m2") << "is the subject of a fact";
    EXPECT_EQ(keys("", {"m2", "m1"}), "m1m2") << "of a thread";
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
}  // namespace
}  // namespace ombrix
