#include "OmbrixAnswerKit/Grounding/AnswerContextPack.h"

#include <gtest/gtest.h>

namespace ombrix {

TEST(AnswerContextPack, TheHashIsOfTheCanonicalTextAndTellsAnyChange) {
    const std::vector<AnswerContextPack::Meeting> meetings = {
        {.id = "/t/W.md",
         .title = "Weekly",
         .date = "2026-05-03",
         .participants = {"Ann"},
         .turns = {{"Ann", "Café"}},
         .notes = "Call\n\"Bo\"",
         .actionItems = {{"a/b"}}},
        {.id = "b", .title = "", .date = "", .participants = {}, .turns = {}}};
    const auto pack = AnswerContextPack::of(meetings);
    EXPECT_EQ(AnswerContextPack::canonicalJSON(1, meetings),
              R"({"meetings":[{"actionItems":["a/b"],"date":"2026-05-03","id":"/t/W.md",)"
              R"("notes":"Call\n\"Bo\"","participants":["Ann"],"title":"Weekly",)"
              R"("turns":[{"speaker":"Ann","text":"Café"}]},)"
              R"({"date":"","id":"b","participants":[],"title":"","turns":[]}],"version":1})");
    EXPECT_EQ(pack.hash, "779595972ab0ef7d9e62ec3db92548e3abcb1c00a054d5b29f3d4fb3a4409609");
    EXPECT_EQ(pack.estimatedTokens(), 63);  // 251 characters

    auto changed =
        Json::decode<AnswerContextPack>(Json::write(encode(pack), Json::Style::canonical));
    EXPECT_EQ(changed, pack);
    EXPECT_TRUE(changed.hashMatchesContent());
    changed.meetings.front().notes->back() = '!';
    EXPECT_FALSE(changed.hashMatchesContent());
}
}  // namespace ombrix
