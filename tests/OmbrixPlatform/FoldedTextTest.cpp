#include "OmbrixPlatform/FoldedText.h"

#include <gtest/gtest.h>

#include "OmbrixPlatform/RandomText.h"

namespace ombrix {
namespace {

TEST(FoldedText, AFoldedPlaceCoversWholeCharacters) {
    const struct {
        const char* why;
        std::string text, part, found;
    } cases[] = {
        {"a mark after the last letter", "un cafe\u0301!", "CAFE", "cafe\u0301"},
        {"half of a scalar is the whole of it", "a\u00DFb", "s", "\u00DF"},
        {"the whole of it with its marks", "a\u00DF\u0308b", "as", "a\u00DF\u0308"},
        {"half a syllable", "x\uD55Cy", "\uD558", "\uD55C"},
        {"from the middle of a scalar", "a\u00DFb", "sb", "\u00DFb"},
    };
    for (const auto& [why, text, part, found] : cases) {
        const auto place = FoldedText(text).find(part);
        ASSERT_TRUE(place) << why;
        EXPECT_EQ(place->of(text), found) << why;
        EXPECT_TRUE(FoldedText(text).contains(part)) << why;
    }
    EXPECT_FALSE(FoldedText("abc").contains(""));
    EXPECT_FALSE(FoldedText("\u00F8re").contains("ore"));
}

TEST(FoldedText, AFoldedPlaceFoldsToAtLeastItsPart) {
    test::RandomText random(9);
    for (int round = 0; round < 3000; ++round) {
        const std::string text = random.any();
        const FoldedText folded(text);
        const std::string part = random.mixed(1 + random.below(2), 2);
        const std::string wanted = Text::folded(part);
        const bool contains =
            !wanted.empty() && Text::folded(text).find(wanted) != std::string::npos;
        ASSERT_EQ(folded.contains(part), contains) << test::visible(text) << test::visible(part);
        const auto place = folded.find(part);
        ASSERT_EQ(place.has_value(), contains);
        if (place) {
            ASSERT_TRUE(Text::contains(Text::folded(place->of(text)), wanted));
            ASSERT_EQ(FoldedText(text.substr(0, place->begin)).find(part), std::nullopt);
        }
    }
}
}  // namespace
}  // namespace ombrix
