#include "OmbrixMemoryKit/Land/LandModels.h"

#include "OmbrixMemoryKit/Land/LandSidecar.h"
#include "OmbrixPlatform/Text.h"

namespace ombrix {
namespace {

using Error = LandOutput::DecodeError;

/// An answer with one of everything.
const std::string answer = R"({"version":1,"summary":"Settled the price.",
"notes":[{"topic":"Price list","bullets":["By the sensor."]}],
"decisions":[{"text":"Use the sensor","quote":"We go by the sensor.","speaker":"Ana"}],
"open_questions":[{"text":"When?","quote":"When do we start?"}],
"commitments":[{"direction":"user_owes","who":"Ana Bo","who_key":"name:ana","what":"Send the list",
"quote":"I'll send it.","speaker":"Me","due_raw":"Friday","due":"2026-09-04",
"certainty":"calendar-inferred"}],
"resolutions":[{"id":"c-0a1b2c3d","status":"renegotiated","quote":"Next week.",
"new_due":"2026-09-11"}],
"memory":[{"entity_key":"name:ana","kind":"person","fact":"Owns pricing.",
"quote":"Pricing is mine.","certainty":"recorded"}],
"unresolved_speakers":["Speaker 2"],"not_sure":["A joke?"]})";

const LandOutput record = {
    .summary = "Settled the price.",
    .notes = {{"Price list", {"By the sensor."}}},
    .decisions = {{"Use the sensor", "We go by the sensor.", "Ana"}},
    .openQuestions = {{"When?", "When do we start?"}},
    .commitments = {{CommitmentDirection::userOwes, "Ana Bo", "name:ana", "Send the list",
                     "I'll send it.", "Me", "Friday", "2026-09-04", Certainty::calendarInferred}},
    .resolutions = {{"c-0a1b2c3d", LandResolution::Status::renegotiated, "Next week.",
                     "2026-09-11"}},
    .memory = {{"name:ana", LandMemoryFact::Kind::person, "Owns pricing.", "Pricing is mine.",
                Certainty::recorded}},
    .unresolvedSpeakers = {"Speaker 2"},
    .notSure = {"A joke?"}};

std::optional<Error> refusal(std::string_view text) {
    try {
        LandOutput::decode(text);
        return std::nullopt;
    } catch (const Error& error) {
        return error;
    }
}

std::string with(std::string_view from, std::string_view to) {
    EXPECT_TRUE(Text::contains(answer, from)) << from;
    return Text::replacingAll(answer, from, to);
}

TEST(LandOutput, IsReadAsItStandsAndWrittenBack) {
    EXPECT_EQ(LandOutput::decode(answer), record);
    LandSidecar sidecar{.meetingKey = "m-1",
                        .relativePath = "a/b.md",
                        .landedAt = *parseIsoInstant("2026-09-01T14:03:22Z"),
                        .output = record};
    EXPECT_EQ(LandSidecar::decode(sidecar.encode()), sidecar);
    EXPECT_TRUE(Text::contains(sidecar.encode(), R"("landedAt" : "2026-09-01T14:03:22Z")"));
    sidecar.output.commitments[0].due.reset();
    sidecar.output.resolutions[0].newDue.reset();
    EXPECT_EQ(LandSidecar::decode(sidecar.encode()), sidecar);
    EXPECT_FALSE(Text::contains(sidecar.encode(), "\"due\""));
    EXPECT_THROW(LandSidecar::decode("{}"), Json::DecodingError);
}

TEST(LandOutput, ACutAnswerIsRefused) {
    for (std::size_t size = 0; size < answer.size(); ++size)
        EXPECT_EQ(refusal(answer.substr(0, size)), Error::notJSON()) << size;
}

TEST(LandOutput, WhatIsWrongIsSaidInTheOrderOfTheChecks) {
    const std::string long120(120, 'x'), long500(500, 'x'),
        topic = R"({"topic":"a","bullets":["b"]},)";
    const std::string notes = R"("notes":[{"topic":"Price list","bullets":["By the sensor."]}],)";
    const std::optional<Error> fine, notJSON = Error::notJSON(), badNotes = Error::invalidNotes();
    const struct {
        std::string from, to;
        std::optional<Error> expected;
    } cases[] = {
        {R"("summary":"Settled the price.",)", "", notJSON},
        {"\"Settled the price.\"", R"("\ud800")", notJSON},
        {"calendar-inferred", "certain", notJSON},
        {"\"2026-09-11\"", "[]", notJSON},
        {"[\"Speaker 2\"]", "\"Speaker 2\"", notJSON},
        {notes, R"("notes":null,)", notJSON},
        {notes, "", fine},
        {notes, R"("notes":[],)", fine},
        {R"("due":"2026-09-04",)", "", fine},
        {"\"2026-09-11\"", "null", fine},
        {"\"version\":1", R"("version":2,"version":1.0,"extra":{"a":[1e5]})", fine},
        {"\"version\":1", "\"version\":1e300", notJSON},
        {R"("version":1)", R"("version":2)", Error::unsupportedVersion(2)},
        {"Price list", " KEY moments ", badNotes},
        {"Price list", "decisions", badNotes},
        {"Price list", "Decisions made", fine},
        {"Price list", " \\n", badNotes},
        {"Price list", " " + long120 + " ", fine},
        {"Price list", "x" + long120, badNotes},
        {"[\"By the sensor.\"]", "[]", badNotes},
        {"[\"By the sensor.\"]", R"(["a","b","c"])", fine},
        {"[\"By the sensor.\"]", R"(["a","b","c","d"])", badNotes},
        {"By the sensor.", " ", badNotes},
        {"By the sensor.", "e\u0301" + long500.substr(1), fine},
        {"By the sensor.", long500 + " ", badNotes},
        {"\"notes\":[", "\"notes\":[" + topic + topic, fine},
        {"\"notes\":[", "\"notes\":[" + topic + topic + topic, badNotes},
        {"2026-09-04", "2026-02-29", Error::invalidDate("commitments.due", "2026-02-29")},
        {"2026-09-11", "2026-9-011", Error::invalidDate("resolutions.new_due", "2026-9-011")},
        {R"("due":"2026-09-04",)", R"("what":"I think","due":"",)",
         Error::invalidDate("commitments.due", "")},  // days come before the prose
    };
    for (const auto& [from, to, expected] : cases)
        EXPECT_EQ(refusal(with(from, to)), expected) << from << " to " << to;
}

TEST(LandOutput, TalkAboutTheProcessIsRefusedInProseAlone) {
    const char* talk = "I think so";
    for (const auto* prose :
         {"Settled the price.", "Price list", "By the sensor.", "A joke?", "Use the sensor",
          "When?", "Send the list", "Ana Bo", "Owns pricing."})
        EXPECT_EQ(refusal(with(prose, talk)), Error::notesCommentary()) << prose;
    for (const auto* other : {"We go by the sensor.", "When do we start?", "I'll send it.",
                              "Friday", "Next week.", "Pricing is mine.", "Speaker 2", "name:ana"})
        EXPECT_EQ(refusal(with(other, talk)), std::nullopt) << other;
    for (const auto* refused : {"The transcript is in", "this transcript labels", "turn label",
                                "speaker-identity", "transcription errors", "I concluded",
                                "speaker 12 might be Ana", "the model’s reasoning", "<\\/think>"})
        EXPECT_EQ(refusal(with("A joke?", refused)), Error::notesCommentary()) << refused;
    for (const auto* passed : {"the Transcript is in", "a transcript isolated",
                               "the transcript is, in", "Speaker labels", "my reasonings",
                               "speaker 12 might say", "<thinking>", "Alibi think tank"})
        EXPECT_EQ(refusal(with("A joke?", passed)), std::nullopt) << passed;
}
}  // namespace
}  // namespace ombrix
