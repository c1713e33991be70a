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
    const struct {
        const char* text;
        std::int64_t value;
    } cases[] = {
        {"0", 0},
        {"010", 10},
        {"+7", 7},
        {"-7", -7},
        {"-0", 0},
        {"9223372036854775807", INT64_MAX},
        {"-9223372036854775808", INT64_MIN},
    };
    for (const auto& [text, value] : cases)
        EXPECT_EQ(Numbers::parseInteger<std::int64_t>(text), value) << "'" << text << "'";
    for (const char* text :
         {"9223372036854775808", "-9223372036854775809", "", "+", "-", "+-1", "-+1", "++1", "--1",
          " 1", "1 ", "1.0", "1e3", "0x1", "1_000", "\u0663"}) {
        EXPECT_EQ(Numbers::parseInteger<std::int64_t>(text), std::nullopt) << "'" << text << "'";
    }
    EXPECT_EQ(Numbers::parseInteger<int>("2147483648"), std::nullopt);
    EXPECT_EQ(Numbers::parseInteger<std::size_t>("-1"), std::nullopt);
    EXPECT_EQ(Numbers::parseInteger<std::size_t>("+18446744073709551615"), SIZE_MAX);
    EXPECT_EQ(Numbers::parseInteger<std::int64_t>(std::string("1\0", 2)), std::nullopt);
}

TEST(Numbers, ADoubleIsWhatTheCLibraryTakesWhole) {
    const struct {
        const char* text;
        double value;
    } cases[] = {
        {"12.5", 12.5}, {"-.5e1", -5},       {"5.", 5},           {" \t3", 3},
        {"0x10", 16},   {"1e999", infinite}, {"-inf", -infinite}, {"+1", 1},
    };
    for (const auto& [text, value] : cases)
        EXPECT_EQ(Numbers::parseDouble(text), value) << "'" << text << "'";
    for (const char* text : {"3 ", "", "   ", "abc", "1,5", "1e"})
        EXPECT_EQ(Numbers::parseDouble(text), std::nullopt) << "'" << text << "'";
    EXPECT_EQ(Numbers::parseDouble(std::string("1\0", 2)), std::nullopt);
    EXPECT_EQ(Numbers::parseDouble(std::string("1\0002", 3)), std::nullopt);
    EXPECT_TRUE(std::isnan(Numbers::parseDouble("nan").value()));
}

TEST(Numbers, TheShortestFormChangesAtItsBorders) {
    const struct {
        double value;
        const char *shortest, *described;
    } cases[] = {
        {0, "0", "0.0"},
        {30, "30", "30.0"},
        {-2.5, "-2.5", "-2.5"},
        {0.1, "0.1", "0.1"},
        {1.0 / 3, "0.3333333333333333", "0.3333333333333333"},
        {0.0001, "0.0001", "0.0001"},
        {0.00009999, "9.999e-05", "9.999e-05"},
        {1e-05, "1e-05", "1e-05"},
        {9999999999999998, "9999999999999998", "9999999999999998.0"},
        {1e16, "1e+16", "1e+16"},
        {1e22, "1e+22", "1e+22"},
        {-1.5e300, "-1.5e+300", "-1.5e+300"},
        {5e-324, "5e-324", "5e-324"},
    };
    for (const auto& [value, shortest, described] : cases) {
        EXPECT_EQ(Numbers::shortest(value), shortest);
        EXPECT_EQ(Numbers::described(value), described);
    }
    EXPECT_EQ(Numbers::described(infinite), "inf");
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
