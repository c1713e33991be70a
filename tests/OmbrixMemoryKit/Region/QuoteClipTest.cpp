#include "OmbrixMemoryKit/Region/QuoteClip.h"

#include <gtest/gtest.h>

namespace ombrix {
namespace {

TEST(QuoteClip, ALongQuoteIsCutAtABlank) {
    const auto times = [](int count, const std::string& text) {
        std::string all;
        for (int i = 0; i < count; ++i) all += text;
        return all;
    };
    const std::string family = "👩‍👩‍👧";  // one character
    const std::pair<std::string, std::string> cases[] = {
        {times(240, family), times(240, family)},
        {times(241, family), times(240, family) + "…"},
        {"one\n two" + times(240, "x"), "one…"},
        {times(80, "ab ") + "x", times(79, "ab ") + "ab…"},
    };
    for (const auto& [quote, clipped] : cases) EXPECT_EQ(clipQuote(quote), clipped);
}

}  // namespace
}  // namespace ombrix
