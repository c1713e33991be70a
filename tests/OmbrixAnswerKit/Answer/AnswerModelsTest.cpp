#include "OmbrixAnswerKit/Answer/AnswerModels.h"

#include <gtest/gtest.h>

namespace ombrix {

TEST(AnswerModels, TheDefaultCanBeChosenButIsNotShown) {
    std::string shown;
    for (const auto& row : AnswerModels::listed()) shown += std::string(row.id) + " ";
    EXPECT_EQ(shown, "auto claude-sonnet-4-6 claude-sonnet-5 claude-opus-5 gpt-5 kimi-k2-5 ");
    EXPECT_EQ(AnswerModels::offlineSelectable().size(), 7U);
    EXPECT_EQ(AnswerModels::spec(AnswerModels::autoDefault)->evaluatedOn, "2026-09-12");
    for (const auto* id : {"", "Auto", "gpt-5 ", "gpt"}) EXPECT_FALSE(AnswerModels::spec(id)) << id;
}
}  // namespace ombrix
