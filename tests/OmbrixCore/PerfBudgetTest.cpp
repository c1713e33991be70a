#include "OmbrixCore/PerfBudget.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <limits>

namespace ombrix {
using PerfBudget::Samples;

TEST(PerfBudget, OnlyAKnownSampleStrictlyAboveItsBudgetIsOver) {
    EXPECT_FALSE(PerfBudget::isOverBudget("launch", 800));
    EXPECT_TRUE(PerfBudget::isOverBudget("launch", 800.01));
    EXPECT_FALSE(PerfBudget::isOverBudget("ask", std::nullopt));
    EXPECT_FALSE(PerfBudget::isOverBudget("unknown", 1e9));
    EXPECT_EQ(PerfBudget::budgetMs("unknown"), std::nullopt);
}

TEST(PerfBudget, MissesAndReportKeepTheOrderOfThePaths) {
    const Samples samples = {
        {"ask", 1500.4}, {"launch", 912.2}, {"library", 15.5}, {"unknown", 99999}};
    EXPECT_THAT(PerfBudget::misses(samples), testing::ElementsAre("launch", "ask"));
    EXPECT_EQ(PerfBudget::report(samples),
              "launch 912 ms / 800 OVER · library 16 ms / 16 · ask 1500 ms / 1500 OVER");
    EXPECT_TRUE(PerfBudget::misses(std::nullopt).empty());
    EXPECT_EQ(PerfBudget::report(std::nullopt), "no perf samples");
    EXPECT_EQ(PerfBudget::report(Samples{}), "no perf samples");
    EXPECT_EQ(PerfBudget::report(Samples{{"unknown", 1}}), "");
}

TEST(PerfBudget, OddSamplesAreStillReported) {
    EXPECT_EQ(PerfBudget::report(Samples{{"switch", -0.4}}), "switch 0 ms / 120");
    EXPECT_EQ(PerfBudget::report(Samples{{"switch", 0.5}}), "switch 1 ms / 120");
    EXPECT_EQ(PerfBudget::report(Samples{{"switch", std::numeric_limits<double>::infinity()}}),
              "switch inf ms / 120 OVER");
}
}  // namespace ombrix
