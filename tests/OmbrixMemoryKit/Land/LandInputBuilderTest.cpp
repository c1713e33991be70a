#include "OmbrixMemoryKit/Land/LandInputBuilder.h"

#include "OmbrixPlatform/Digest.h"

namespace ombrix {
namespace {

using LandInputBuilder::Turn;
using Turns = std::vector<Turn>;

TranscriptDocument meeting() {
    return {
        .title = "Pricing",
        .date = "2026-09-01",
        .participants = {"Ana Ruiz", "Ben"},
        .turns = {{"Me", "Hi / hello"}, {"Speaker 2", "Hi"}, {"speaker 2 ", "So"}, {"Ana", "-"}}};
}

TEST(LandInput, IsTheObjectOfThePromptWithTheHashOfItself) {
    const auto input = LandInputBuilder::build(
        meeting(), "Ben", {{"c-0a1b2c3d", "user_owes", "Ana", "Call", std::nullopt}},
        {{"name:a", "A"}, {"name:b", "B"}, {"name:c", "C"}, {"name:d", "D"}},
        {{.kind = Correction::Kind::important, .id = "c-0a1b2c3d"},
         {.kind = Correction::Kind::alias, .text = "Ana R."}},
        Turns{{"Me", "Hi / hello"}}, LandChunk{1, 2});
    const std::string head =
        R"({"attendee_stubs":[{"key":"name:a","one_line":"A"},{"key":"name:b","one_line":"B"},)"
        R"({"key":"name:c","one_line":"C"}],"chunk":{"i":1,"n":2},"corrections":["alias: Ana R."],)"
        R"("hash":")";
    const std::string tail =
        R"(","meeting":{"date":"2026-09-01","participants":["Ana Ruiz","Ben"],)"
        R"("remote_label_count":2,"title":"Pricing",)"
        R"("turns":[{"speaker":"Me","text":"Hi / hello"}]},)"
        R"("open_follow_ups":[{"direction":"user_owes","id":"c-0a1b2c3d","what":"Call",)"
        R"("who":"Ana"}],"user_name":"Ben","version":1})";
    const std::string hash = "sha256:" + Digest::sha256Hex(head + tail);
    EXPECT_EQ(input.canonical(), (CanonicalInput{head + hash + tail, hash}));

    LandInput again = input;
    again.hash = hash;
    EXPECT_EQ(again.canonical(), input.canonical());
    again.corrections = {"alias: Ana B."};
    EXPECT_NE(again.canonical().hash, hash);
    EXPECT_EQ(LandInputBuilder::build(meeting(), "Ben", {}, {}, {}).meeting.turns, meeting().turns);
}

TEST(LandInputBuilder, ChunksKeepTheOrderAndTheBudget) {
    using LandInputBuilder::chunks;
    using Chunks = std::vector<Turns>;
    const Turn small = {"é", "12345678"}, large = {"abcd", "1234567890123456"};  // 42, 52 bytes
    EXPECT_EQ(chunks({small, large, small}, 94), (Chunks{{small, large}, {small}}));
    EXPECT_EQ(chunks({small, large, small}, 93), (Chunks{{small}, {large}, {small}}));
    EXPECT_EQ(chunks({small, small, large, small}, 42),
              (Chunks{{small}, {small}, {large}, {small}}));
    EXPECT_EQ(chunks({}), Chunks{});
}

TEST(LandInputBuilder, ARecordBecomesOneTurnWithALineForEachClaim) {
    const LandOutput full = {
        .summary = "S.",
        .decisions = {{"By sensor", "We go.", "Ana"}},
        .openQuestions = {{"When?", "So when?"}},
        .commitments = {{CommitmentDirection::owedToUser, "Ana", "name:ana", "Send it", "I will.",
                         "Ana", "Friday", std::nullopt, Certainty::calendarInferred}},
        .resolutions = {{"c-1", LandResolution::Status::done, "Sent.", "2026-09-01"}},
        .memory = {{"thread:launch", LandMemoryFact::Kind::thread, "Is near.", "Soon.",
                    Certainty::read}},
        .unresolvedSpeakers = {"Speaker 2", "Speaker 3"},
        .notSure = {"One.", "Two."}};
    const std::vector<LandOutput> outputs = {full, LandOutput{}};
    EXPECT_EQ(LandInputBuilder::reduceTurns(outputs),
              (Turns{{"Part 1 of 2",
                      "Summary: S.\n"
                      "Decision (Ana): By sensor — \"We go.\"\n"
                      "Open question: When? — \"So when?\"\n"
                      "Commitment [owed_to_user, calendar-inferred] Ana → Ana (name:ana): Send it; "
                      "due null (\"Friday\") — \"I will.\"\n"
                      "Resolution c-1: done new_due 2026-09-01 — \"Sent.\"\n"
                      "Memory [thread, read] thread:launch: Is near. — \"Soon.\"\n"
                      "Unresolved speakers: Speaker 2, Speaker 3\n"
                      "Not sure: One.\n"
                      "Not sure: Two."},
                     {"Part 2 of 2", "Summary: "}}));
}

TEST(LandInputBuilder, CountsTheLabelsThatAreNotTheUser) {
    const auto count = [](const std::vector<std::string>& labels, std::string_view user) {
        Turns turns;
        for (const auto& label : labels) turns.push_back({label, ""});
        return LandInputBuilder::remoteLabelCount(turns, user);
    };
    EXPECT_EQ(count({"Me", "YOU ", "me"}, ""), 0);
    EXPECT_EQ(count({"Speaker 2", "speaker 2", "\tSPEAKER 2"}, "Ana"), 1);
    EXPECT_EQ(count({"Ana  Ruiz", "ana ruiz", "Ana"}, "Ana Ruiz"), 1);  // "Ana" is another label
    EXPECT_EQ(count({"", " "}, "Ana"), 1);
    EXPECT_EQ(count({"", " "}, " "), 0);
}

TEST(LandInputBuilder, TheUserIsNoRemoteParticipant) {
    using Names = std::vector<std::string>;
    using LandInputBuilder::remoteParticipants;
    EXPECT_EQ(remoteParticipants({"Ana Ruiz", "Ben"}, "ana"), Names{"Ben"});
    EXPECT_EQ(remoteParticipants({"Ana Ruiz", "Ana Bo"}, "Ana"), (Names{"Ana Ruiz", "Ana Bo"}));
    EXPECT_EQ(remoteParticipants({"Ana Ruiz", "Ana"}, "Ana"), Names{"Ana Ruiz"});
    EXPECT_EQ(remoteParticipants({"Ana Ruiz", "Ana"}, "Ana Ruiz"), Names{"Ana"});
    EXPECT_EQ(remoteParticipants({"Ben", " ", "Speaker 2", "Ben"}, ""), (Names{"Ben", "Ben"}));
}
}  // namespace
}  // namespace ombrix
