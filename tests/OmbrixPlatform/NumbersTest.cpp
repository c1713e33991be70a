#include "OmbrixPlatform/Numbers.h"

#include <gtest/gtest.h>

#include <bit>
#include <cmath>
#include <cstdint>
#include <limits>
#include <random>

namespace ombrix {
namespace {

constexpr double infinite = std::numeric_limits<double>::infinity();

TEST(Numbers, AnIntegerIsASignAndDigitsAndNothingElse) {
    EXPECT_EQ(Numbers::parseInteger<std::int64_t>("010"), 10);
    EXPECT_EQ(Numbers::parseInteger<std::int64_t>("+9223372036854775807"), INT64_MAX);
    EXPECT_EQ(Numbers::parseInteger<std::int64_t>("-9223372036854775808"), INT64_MIN);
    for (const char* text : {"9223372036854775808", "-9223372036854775809", "", "+", "+-1", "-+1",
                             "++1", " 1", "1 ", "1.0", "1e3", "0x1", "\u0663"}) {
        EXPECT_EQ(Numbers::parseInteger<std::int64_t>(text), std::nullopt) << "'" << text << "'";
    }
    EXPECT_EQ(Numbers::parseInteger<int>("2147483648"), std::nullopt);
    EXPECT_EQ(Numbers::parseInteger<std::size_t>("-1"), std::nullopt);
    EXPECT_EQ(Numbers::parseInteger<std::int64_t>(std::string("1\0", 2)), std::nullopt);
}

TEST(Numbers, ADoubleIsWhatTheCLibraryTakesWhole) {
    EXPECT_EQ(Numbers::parseDouble(" \t-.5e1"), -5);
    EXPECT_EQ(Numbers::parseDouble("0x10"), 16);
    EXPECT_EQ(Numbers::parseDouble("1e999"), infinite);
    for (const char* text : {"3 ", "", "   ", "abc", "1,5", "1e"})
        EXPECT_EQ(Numbers::parseDouble(text), std::nullopt) << "'" << text << "'";
    EXPECT_EQ(Numbers::parseDouble(std::string("1\0002", 3)), std::nullopt);
    EXPECT_TRUE(std::isnan(Numbers::parseDouble("nan").value()));
}

TEST(Numbers, TheShortestFormChangesAtItsBorders) {
    const struct {
        double value;
        const char *shortest, *described;
    } cases[] = {
        {0, "0", "0.0"},
        {-2.5, "-2.5", "-2.5"},
        {0.0001, "0.0001", "0.0001"},
        {0.00009999, "9.999e-05", "9.999e-05"},
        {9999999999999998, "9999999999999998", "9999999999999998.0"},
        {1e16, "1e+16", "1e+16"},
    };
    for (const auto& [value, shortest, described] : cases) {
        EXPECT_EQ(Numbers::shortest(value), shortest);
        EXPECT_EQ(Numbers::described(value), described);
    }
    EXPECT_EQ(Numbers::described(-infinite), "-inf");
    EXPECT_EQ(Numbers::described(-std::nan("")), "nan");
}

TEST(Numbers, TheShortestFormReadsBack) {
    std::mt19937_64 random(10);
    for (int round = 0; round < 20000; ++round) {
        const auto value = std::bit_cast<double>(random());
        if (!std::isfinite(value)) continue;
        ASSERT_EQ(Numbers::parseDouble(Numbers::shortest(value)), value);
        const double middling = static_cast<double>(random() % 1'000'000'000'000) / 1024;
        ASSERT_EQ(Numbers::parseDouble(Numbers::described(middling)), middling);
    }
}
}  // namespace
}  // namespace ombrix
