#include "OmbrixPlatform/FloatVectors.h"

#include <gtest/gtest.h>

namespace ombrix {

TEST(FloatVectors, SumsAreExactForWholeNumbersOfEveryLength) {
    std::vector<float> a, b;
    float dot = 0, squares = 0;
    for (int i = 0; i < 70; ++i) {
        const auto both = FloatVectors::dotAndSquares(a, b);
        EXPECT_EQ(both.dot, dot) << i;
        EXPECT_EQ(both.squares, squares) << i;
        a.push_back(static_cast<float>(i % 7 - 3));
        b.push_back(static_cast<float>(i % 11 - 4));
        dot += a.back() * b.back();
        squares += b.back() * b.back();
    }
}
}  // namespace ombrix
