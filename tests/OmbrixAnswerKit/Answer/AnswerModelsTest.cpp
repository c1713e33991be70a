#include "OmbrixAnswerKit/Answer/AnswerModels.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace ombrix {
namespace {

using testing::ElementsAre;

std::vector<std::string_view> idsOf(const std::vector<AnswerModelSpec>& rows) {
    std::vector<std::string_view> ids;
    for (const auto& row : rows) ids.push_back(row.id);
    return ids;
}

TEST(AnswerModels, TheDefaultCanBeChosenButIsNotShown) {
    EXPECT_THAT(idsOf(AnswerModels::listed()),
                ElementsAre("auto", "claude-sonnet-4-6", "claude-sonnet-5", "claude-opus-5",
                            "gpt-5", "kimi-k2-5"));
    EXPECT_THAT(idsOf(AnswerModels::offlineSelectable()),
                ElementsAre("auto", "claude-sonnet-4-6", "claude-sonnet-5", "claude-opus-5",
                            "gpt-5", "deepseek-v4-pro", "kimi-k2-5"));
    EXPECT_EQ(AnswerModels::spec(AnswerModels::autoDefault),
              (AnswerModelSpec{"deepseek-v4-pro", "DeepSeek V4 Pro", "deepseek",
                               AnswerModelTier::standard, true, false, "2026-09-12"}));
}

TEST(AnswerModels, AnIdIsFoundAsItIsWrittenOnly) {
    EXPECT_EQ(AnswerModels::spec("claude-opus-4-6")->tier, AnswerModelTier::deep);
    for (const auto* id : {"", "Auto", "gpt-5 ", "gpt"}) EXPECT_FALSE(AnswerModels::spec(id)) << id;
    EXPECT_EQ(fromRawValue<AnswerModelTier>("deep"), AnswerModelTier::deep);
    EXPECT_EQ(fromRawValue<AnswerModelTier>("Deep"), std::nullopt);
}
}  // namespace
}  // namespace ombrix
