#include "OmbrixMemoryKit/Moves/PrepareOutput.h"

#include <gtest/gtest.h>

#include "OmbrixMemoryKit/Moves/PrepareInput.h"
#include "OmbrixMemoryKit/Moves/PrepareSidecar.h"
#include "OmbrixPlatform/Text.h"

namespace ombrix {
namespace {

using DecodeError = PrepareOutput::DecodeError;
using CitationError = PrepareOutput::CitationError;

const std::string answer = R"({"version": 1, "not_sure": ["who pays"], "moves": [
  {"key": "call", "commitment_ids": ["c-2", "c-1"], "kind": "hold", "stance": "suggested",
   "title": "Call Ann", "recipients": [], "due": {"iso": "2026-07-30", "said": "Thursday"},
   "hedge": "Nobody agreed.", "idea": "Ann's", "email": null,
   "blocks": [{"id": "b", "label": "Why", "lines": [
     {"id": "l", "text": "Prices", "claim_ids": ["k"]}]}],
   "unresolved": [{"id": "u", "text": "Where", "claim_ids": []}],
   "claims": [{"id": "k", "gist": "Ann asked", "role": "ruled-out", "turn_ids": ["t001-aaaaaa"]}],
   "invite": {"title": "Prices", "date": "2026-07-31", "time": "23:59", "minutes": 30,
     "with": ["Ann"], "cites": {"date": ["k"], "time": ["k"], "with": []}}},
  {"key": "mail", "commitment_ids": ["c-3"], "kind": "message", "stance": "stated",
   "title": "Mail", "recipients": ["Bo"], "due": null, "hedge": null, "idea": null,
   "blocks": [], "unresolved": [], "claims": [], "invite": null,
   "email": {"to": ["Bo"], "subject": "Prices"}}]})";

const std::set<std::string, std::less<>> turns = {"t001-aaaaaa"};

std::string with(const char* from, const char* to) {
    EXPECT_TRUE(Text::contains(answer, from)) << from;
    return Text::replacingAll(answer, from, to);
}

TEST(PrepareOutput, TakesAWholeAnswer) {
    const auto output = PrepareOutput::decode(answer);
    EXPECT_NO_THROW(output.validate(turns));
    EXPECT_EQ(Json::decode<PrepareOutput>(Json::write(encode(output), Json::Style::file)), output);
    EXPECT_NO_THROW(
        PrepareOutput::decode(R"({"version":1,"moves":[],"not_sure":[]})").validate({}));
}

TEST(PrepareOutput, SaysWhyAnAnswerIsRefused) {
    using NotJSON = DecodeError::NotJSON;
    const struct {
        const char *from, *to;
        DecodeError::Reason reason;
    } cases[] = {
        {R"("email": null,)", R"()", NotJSON{}},  // a key that may be null may not be missing
        {R"("label": "Why",)", R"("label": "Why", "more": 1,)", NotJSON{}},
        {R"("to": ["Bo"])", R"("to": ["Bo"], "cc": [])", NotJSON{}},
        {R"("minutes": 30)", R"("minutes": 30.5)", NotJSON{}},
        {R"("kind": "hold")", R"("kind": "call")", NotJSON{}},
        {R"("version": 1)", R"("version": 2)", DecodeError::UnsupportedVersion{2}},
        {"2026-07-30", "2026-02-30", DecodeError::InvalidDate{"moves.due.iso", "2026-02-30"}},
        {"2026-07-31", "2026-7-031", DecodeError::InvalidDate{"moves.invite.date", "2026-7-031"}},
        {"23:59", "9:30", DecodeError::InvalidTime{"moves.invite.time", "9:30"}},
        {"23:59", "24:00", DecodeError::InvalidTime{"moves.invite.time", "24:00"}},
        {"23:59", "23:60", DecodeError::InvalidTime{"moves.invite.time", "23:60"}},
        {"23:59", "23:59:00", DecodeError::InvalidTime{"moves.invite.time", "23:59:00"}},
        {R"("hold")", R"("prompt")", DecodeError::Misplaced{"invite", "call"}},
        {R"("kind": "message")", R"("kind": "hold")", DecodeError::Misplaced{"email", "mail"}},
    };
    for (const auto& [from, to, reason] : cases) {
        try {
            PrepareOutput::decode(with(from, to));
            ADD_FAILURE() << from << " -> " << to;
        } catch (const DecodeError& error) {
            EXPECT_EQ(error.reason(), reason) << from << " -> " << to;
        }
    }
    for (std::size_t end = 0; end < answer.size(); ++end)
        EXPECT_THROW(PrepareOutput::decode(answer.substr(0, end)), DecodeError) << end;
}

TEST(PrepareOutput, SaysWhichCitationIsWrong) {
    using Unknown = CitationError::UnknownClaim;
    const struct {
        const char *from, *to;
        CitationError::Reason reason;
    } cases[] = {
        {R"("key": "mail")", R"("key": "call")", CitationError::DuplicateMoveKey{"call"}},
        {R"(["c-3"])", R"([])", CitationError::NoCommitment{"mail"}},
        {R"("claims": [{)",
         R"("claims": [{"id":"k","gist":"","role":"open","turn_ids":["t001-aaaaaa"]},{)",
         CitationError::DuplicateClaim{"call", "k"}},
        {R"(["t001-aaaaaa"])", R"([])", CitationError::Unciting{"call", "k"}},
        {"t001", "t002", CitationError::UnknownTurn{"call", "k", "t002-aaaaaa"}},
        {R"("text": "Prices", "claim_ids": ["k"])", R"("text": "Prices", "claim_ids": [])",
         CitationError::UnclaimedLine{"call", "l"}},
        {R"("text": "Prices", "claim_ids": ["k"])", R"("text": "Prices", "claim_ids": ["k","x"])",
         Unknown{"call", "l", "x"}},
        {R"("text": "Where", "claim_ids": [])", R"("text": "Where", "claim_ids": ["x"])",
         Unknown{"call", "u", "x"}},
        {R"("with": [])", R"("with": ["x"])", Unknown{"call", "invite.cites.with", "x"}},
        {R"("time": ["k"])", R"("time": ["x"])", Unknown{"call", "invite.cites.time", "x"}},
        // claims are a move's own
        {R"("blocks": [], )",
         R"("blocks": [{"id":"b","label":"","lines":[{"id":"l","text":"","claim_ids":["k"]}]}], )",
         Unknown{"mail", "l", "k"}},
    };
    for (const auto& [from, to, reason] : cases) {
        const auto output = PrepareOutput::decode(with(from, to));
        try {
            output.validate(turns);
            ADD_FAILURE() << from << " -> " << to;
        } catch (const CitationError& error) {
            EXPECT_EQ(error.reason(), reason) << from << " -> " << to;
        }
    }
}

TEST(PrepareMapping, GivesTheMovesOfAnAnswer) {
    const auto moves = PrepareMapping::moves(PrepareOutput::decode(answer), "m-1", "t0");
    ASSERT_EQ(moves.size(), 2u);
    const PreparedMove call{
        .id = MoveID::make("m-1", {"c-1", "c-2"}, MoveKind::hold, "call"),
        .sourceId = "m-1",
        .commitmentIds = {"c-2", "c-1"},
        .kind = MoveKind::hold,
        .stance = Stance::suggested,
        .title = "Call Ann",
        .recipients = std::nullopt,
        .due = MoveDue{"2026-07-30", "Thursday"},
        .preparedAt = "t0",
        .blocks = {{"b", "Why", {{"l", "Prices", {"k"}}}}},
        .unresolved = {{"u", "Where", {}}},
        .claims = {{"k", "Ann asked", ClaimRole::ruledOut, {{"m-1", {"t001-aaaaaa"}}}}},
        .hedge = "Nobody agreed.",
        .idea = "Ann's",
        .invite = Invite{"Prices", "2026-07-31", "23:59", 30, {"Ann"}, {{"k"}, {{"k"}}, {}}},
        .email = std::nullopt};
    EXPECT_EQ(moves[0], call);
    EXPECT_EQ(moves[1].recipients, std::vector<std::string>{"Bo"});
    auto output = PrepareOutput::decode(answer);
    output.moves[0].invite->cites.time.clear();
    EXPECT_EQ(PrepareMapping::moves(output, "m-1", "t0")[0].invite->cites.time, std::nullopt);
}

TEST(PrepareSidecar, ReadsBackAndKnowsItsSchemaAlone) {
    const PrepareSidecar sidecar{.meetingKey = "m-1",
                                 .relativePath = "Weekly/a.md",
                                 .date = "2026-07-27",
                                 .preparedAt = *parseIsoInstant("2026-07-27T10:04:11Z"),
                                 .output = PrepareOutput::decode(answer)};
    const std::string text = sidecar.encode();
    EXPECT_TRUE(Text::contains(text, "\"relativePath\" : \"Weekly/a.md\"")) << "a plain slash";
    EXPECT_EQ(PrepareSidecar::decode(text), sidecar);
    EXPECT_EQ(PrepareSidecar::decode(Text::replacingAll(text, "{\n", "{\n\"new\": [1],\n")),
              sidecar)
        << "keys of a later version are passed over";
    EXPECT_THROW(PrepareSidecar::decode(Text::replacingAll(text, "sidecar/v1", "sidecar/v0")),
                 PrepareSidecar::DecodeError);
    EXPECT_THROW(PrepareSidecar::decode(Text::replacingAll(text, ":04:11Z", ":04Z")),
                 Json::DecodingError);
    for (std::size_t end = 0; end < text.size(); ++end)
        EXPECT_THROW(PrepareSidecar::decode(text.substr(0, end)), Json::SyntaxError) << end;
}

TEST(PrepareInput, CarriesTheRecordAndTheHashOfItself) {
    PrepareInput input;
    input.meeting.turns = {{"t001-aaaaaa", "Ann", "Hello/there"}};
    input.commitments.emplace_back("c-1", LandCommitment{.direction = CommitmentDirection::userOwes,
                                                         .who = "Ann",
                                                         .whoKey = "name:ann",
                                                         .what = "call",
                                                         .quote = "I call you",
                                                         .speaker = "Me",
                                                         .dueRaw = "Thursday",
                                                         .certainty = Certainty::recorded});
    const auto [json, hash] = input.canonical();
    EXPECT_TRUE(Text::contains(
        json, R"("commitments":[{"certainty":"recorded","direction":"user_owes",)"
              R"("due_raw":"Thursday","id":"c-1","quote":"I call you","speaker":"Me",)"
              R"("what":"call","who":"Ann","who_key":"name:ann"}],"corrections":[],)"
              R"("decisions":[],"hash":"sha256:)"))
        << json;
    EXPECT_TRUE(Text::contains(json, hash));
    input.hash = "sha256:old";
    EXPECT_EQ(input.canonical().hash, hash);
    input.chunked = true;
    EXPECT_NE(input.canonical().hash, hash);
}
}  // namespace
}  // namespace ombrix
