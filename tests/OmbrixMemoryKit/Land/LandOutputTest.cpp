#include "OmbrixMemoryKit/Land/LandModels.h"

#include "OmbrixMemoryKit/Land/LandSidecar.h"
#include "OmbrixPlatform/Text.h"

namespace ombrix {
namespace {

using Error = LandOutput::DecodeError;

/// An answer with one of everything.
const std::string answer = R"({"version":1,"summary":"Settled the price.",
"notes":[{"topic":"Pricing","bullets":["By the sensor."]}],
"decisions":[{"text":"By the sensor","quote":"We go by the sensor.","speaker":"Ana"}],
"open_questions":[{"text":"When?","quote":"When do we start?"}],
"commitments":[{"direction":"user_owes","who":"Ana","who_key":"name:ana","what":"Send the list",
"quote":"I'll send it.","speaker":"Me","due_raw":"Friday","due":"2026-09-04",
"certainty":"calendar-inferred"}],
"resolutions":[{"id":"c-0a1b2c3d","status":"renegotiated","quote":"Next week.",
"new_due":"2026-09-11"}],
"memory":[{"entity_key":"name:ana","kind":"person","fact":"Owns pricing.",
"quote":"Pricing is mine.","certainty":"recorded"}],
"unresolved_speakers":["Speaker 2"],"not_sure":["A joke?"]})";

const LandOutput record = {
    .summary = "Settled the price.",
    .notes = {{"Pricing", {"By the sensor."}}},
    .decisions = {{"By the sensor", "We go by the sensor.", "Ana"}},
    .openQuestions = {{"When?", "When do we start?"}},
    .commitments = {{CommitmentDirection::userOwes, "Ana", "name:ana", "Send the list",
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
    EXPECT_THROW(LandSidecar::decode(Text::replacingAll(sidecar.encode(), ":22Z", ":22.5Z")),
                 Json::DecodingError);
}

TEST(LandOutput, AnAnswerOfAnotherShapeIsRefused) {
    for (std::size_t size = 0; size < answer.size(); ++size)
        EXPECT_EQ(refusal(answer.substr(0, size)), Error::notJSON()) << size;
    const std::pair<std::string_view, std::string_view> wrong[] = {
        {R"("summary":"Settled the price.",)", ""},
        {"\"Settled the price.\"", "null"},
        {"\"Settled the price.\"", "7"},
        {"\"Settled the price.\"", R"("\ud800")"},
        {R"([{"topic":"Pricing","bullets":["By the sensor."]}])", "null"},
        {R"(["By the sensor."])", R"(["By the sensor.",null])"},
        {"\"version\":1", "\"version\":1e300"},
        {"\"version\":1", "\"version\":1.5"},
        {"\"version\":1", "\"version\":true"},
        {"user_owes", "User_owes"},
        {"calendar-inferred", "certain"},
        {"renegotiated", "live"},
        {"\"person\"", "\"team\""},
        {"\"2026-09-11\"", "[]"},
        {"[\"Speaker 2\"]", "\"Speaker 2\""},
        {"[\"A joke?\"]", std::string_view("[\"A joke?\"],")},
    };
    for (const auto& [from, to] : wrong)
        EXPECT_EQ(refusal(with(from, to)), Error::notJSON()) << from << " to " << to;
    const std::pair<std::string_view, std::string_view> tolerated[] = {
        {R"("notes":[{"topic":"Pricing","bullets":["By the sensor."]}],)", ""},
        {"\"due\":\"2026-09-04\",", ""},
        {"\"2026-09-11\"", "null"},
        {"\"version\":1", R"("version":1.0,"extra":{"a":[1e5]})"},
        {"\"version\":1", "\"version\":2,\"version\":1"},
    };
    for (const auto& [from, to] : tolerated)
        EXPECT_EQ(refusal(with(from, to)), std::nullopt) << from;
}

TEST(LandOutput, WhatIsWrongIsSaidInTheOrderOfTheChecks) {
    const std::string long120(120, 'x'), long500(500, 'x');
    const std::string topics = R"({"topic":"a","bullets":["b"]},)";
    const struct {
        std::string text;
        std::optional<Error> expected;
    } cases[] = {
        {with("\"version\":1", "\"version\":2"), Error::unsupportedVersion(2)},
        {with("\"Pricing\"", "\" KEY moments \""), Error::invalidNotes()},
        {with("\"Pricing\"", "\"decisions\""), Error::invalidNotes()},
        {with("\"Pricing\"", "\"Decisions made\""), std::nullopt},
        {with("\"Pricing\"", "\" \\n\""), Error::invalidNotes()},
        {with("\"Pricing\"", "\" " + long120 + " \""), std::nullopt},
        {with("\"Pricing\"", "\"x" + long120 + "\""), Error::invalidNotes()},
        {with("[\"By the sensor.\"]", "[]"), Error::invalidNotes()},
        {with("[\"By the sensor.\"]", R"(["a","b","c"])"), std::nullopt},
        {with("[\"By the sensor.\"]", R"(["a","b","c","d"])"), Error::invalidNotes()},
        {with("\"By the sensor.\"", "\" \""), Error::invalidNotes()},
        {with("\"By the sensor.\"", "\"" + long500 + "\""), std::nullopt},
        {with("\"By the sensor.\"", "\"" + long500 + " \""), Error::invalidNotes()},
        {with("\"By the sensor.\"", "\"e\u0301" + long500.substr(1) + "\""), std::nullopt},
        {with("\"notes\":[", "\"notes\":[" + topics + topics), std::nullopt},
        {with("\"notes\":[", "\"notes\":[" + topics + topics + topics), Error::invalidNotes()},
        {with("2026-09-04", "2026-02-29"), Error::invalidDate("commitments.due", "2026-02-29")},
        {with("2026-09-04", "2024-02-29"), std::nullopt},
        {with("2026-09-04", ""), Error::invalidDate("commitments.due", "")},
        {with("2026-09-11", "2026-9-011"), Error::invalidDate("resolutions.new_due", "2026-9-011")},
        {Text::replacingAll(with("Settled", "My analysis: settled"), "2026-09-04", "soon"),
         Error::invalidDate("commitments.due", "soon")},  // days come before the prose
    };
    for (const auto& [text, expected] : cases) {
        const auto found = refusal(text);
        EXPECT_EQ(found.has_value(), expected.has_value()) << text;
        EXPECT_TRUE(!found || !expected || *found == *expected) << text;
    }
}

TEST(LandOutput, TalkAboutTheProcessIsRefusedInProseAlone) {
    const char* talk = "I think so";
    for (const auto* prose :
         {"Settled the price.", "\"Pricing\"", "By the sensor.", "A joke?", "\"By the sensor\"",
          "When?", "Send the list", "\"Ana\",\"who_key\"", "Owns pricing."}) {
        std::string text = prose[0] == '"' ? "\"" + std::string(talk) + "\"" : talk;
        if (std::string_view(prose).ends_with("_key\"")) text += ",\"who_key\"";
        EXPECT_EQ(refusal(with(prose, text)), Error::notesCommentary()) << prose;
    }
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
