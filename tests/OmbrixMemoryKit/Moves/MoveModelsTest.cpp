#include "OmbrixMemoryKit/Moves/MoveModels.h"

#include <gtest/gtest.h>

#include "RandomMoves.h"

namespace ombrix {
namespace {

TEST(MoveID, DependsOnItsFourPartsAndOnNothingElse) {
    // The first four bytes of SHA-256 over "m-1", "c-1,c-2", "message" and "send", joined by
    // U+001F.
    const std::string id = MoveID::make("m-1", {"c-2", "c-1"}, MoveKind::message, "send");
    EXPECT_EQ(id, "mv-cc4ff17d");
    EXPECT_EQ(MoveID::make("m-1", {"c-1", "c-2"}, MoveKind::message, "send"), id);
    EXPECT_NE(MoveID::make("m-2", {"c-1", "c-2"}, MoveKind::message, "send"), id);
    EXPECT_NE(MoveID::make("m-1", {"c-1"}, MoveKind::message, "send"), id);
    EXPECT_NE(MoveID::make("m-1", {"c-1", "c-2"}, MoveKind::prompt, "send"), id);
    EXPECT_NE(MoveID::make("m-1", {"c-1", "c-2"}, MoveKind::message, "sen"), id);
}

TEST(MoveModels, WhatIsWrittenReadsBack) {
    for (unsigned seed = 0; seed < 300; ++seed) {
        const PreparedMove move = test::RandomMoves(seed).move();
        const auto text = Json::write(encode(move), Json::Style::file);
        EXPECT_EQ(Json::decode<PreparedMove>(text), move) << text;
    }
}

TEST(MoveModels, NobodyNamedIsNotAnEmptyList) {
    PreparedMove move;
    EXPECT_FALSE(encode(move).member("recipients"));
    move.recipients.emplace();
    ASSERT_TRUE(encode(move).member("recipients"));
    EXPECT_EQ(*encode(move).member("recipients"), Json::Value(Json::Array()));
}

TEST(MoveModels, KeysAreThoseOfTheFiles) {
    const PreparedMove move{.id = "mv-1",
                            .sourceId = "m-1",
                            .commitmentIds = {"c-1"},
                            .kind = MoveKind::hold,
                            .preparedAt = "t",
                            .claims = {{"c", "gist", ClaimRole::ruledOut, {{"m-1", {"t001-aa"}}}}},
                            .invite = Invite{.date = "2026-07-30", .minutes = 30}};
    EXPECT_EQ(Json::write(encode(move), Json::Style::canonical),
              R"({"blocks":[],"claims":[{"earlier":false,"gist":"gist","id":"c","refs":[)"
              R"({"sourceId":"m-1","turn_ids":["t001-aa"]}],"role":"ruled-out",)"
              R"("superseded":false}],"commitment_ids":["c-1"],"id":"mv-1","invite":{)"
              R"("cites":{"date":[],"with":[]},"date":"2026-07-30","minutes":30,"title":"",)"
              R"("with":[]},"kind":"hold","prepared_at":"t","sourceId":"m-1",)"
              R"("stance":"stated","title":"","unresolved":[]})");
    try {
        Json::decode<PreparedMove>(Text::replacingAll(
            Json::write(encode(move), Json::Style::canonical), "\"hold\"", "\"call\""));
        ADD_FAILURE() << "an unknown kind is read";
    } catch (const Json::DecodingError& error) {
        EXPECT_STREQ(error.what(), "kind: unknown move kind call");
    }
}
}  // namespace
}  // namespace ombrix
