#include "OmbrixPlatform/Characters.h"

#include <gtest/gtest.h>

#include "OmbrixPlatform/IcuBreaks.h"
#include "OmbrixPlatform/RandomText.h"

namespace ombrix {
namespace {

using Places = std::vector<std::size_t>;

TEST(Characters, BoundariesAreThoseOfTheWholeText) {
    test::RandomText random(1);
    for (int round = 0; round < 4000; ++round) {
        const std::string text = random.any();
        Places expected;
        for (const auto& piece : test::icuPieces(UBRK_CHARACTER, text))
            expected.push_back(piece.end);
        Places forwards;
        Places backwards;
        Characters::Cursor cursor(text);
        for (std::size_t at = 0; at < text.size();) forwards.push_back(at = cursor.after(at));
        for (std::size_t at = text.size(); at > 0; at = cursor.before(at))
            backwards.insert(backwards.begin(), at);
        ASSERT_EQ(forwards, expected) << test::visible(text);
        ASSERT_EQ(backwards, expected) << test::visible(text);
        ASSERT_EQ(Characters::count(text), expected.size()) << test::visible(text);
    }
}

TEST(Characters, StepsStopAtTheEnds) {
    const std::string text = "ae\u0301\r\nz";  // bytes: a, e and its mark 1-3, CR LF 4-5, z 6
    EXPECT_EQ(Characters::forward(text, 0, 0), 0U);
    EXPECT_EQ(Characters::forward(text, 0, 2), 4U);
    EXPECT_EQ(Characters::forward(text, 1, 2), 6U);
    EXPECT_EQ(Characters::forward(text, 1, 99), 7U);
    EXPECT_EQ(Characters::backward(text, 7, 2), 4U);
    EXPECT_EQ(Characters::backward(text, 6, 2), 1U);
    EXPECT_EQ(Characters::backward(text, 6, 99), 0U);
    EXPECT_EQ(Characters::prefix(text, 3), "ae\u0301\r\n");
    EXPECT_EQ(Characters::prefix(text, 99), text);
    EXPECT_TRUE(Characters::hasAtLeast(text, 4));
    EXPECT_FALSE(Characters::hasAtLeast(text, 5));
    EXPECT_TRUE(Characters::hasAtLeast("", 0));
}

TEST(Characters, ACharacterIsWhiteSpaceByItsFirstScalar) {
    using Views = std::vector<std::string_view>;
    EXPECT_EQ(Characters::splitAtWhiteSpace(" a\u3000b\r\nc\u0301  d "),
              (Views{"a", "b", "c\u0301", "d"}));
    EXPECT_EQ(Characters::splitAtWhiteSpace("a \u0301b"), (Views{"a", "b"}))
        << "the mark belongs to the blank";
}
}  // namespace
}  // namespace ombrix
