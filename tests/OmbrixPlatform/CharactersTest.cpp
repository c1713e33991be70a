#include "OmbrixPlatform/Characters.h"

#include <gtest/gtest.h>
#include <unicode/ubrk.h>
#include <unicode/utext.h>

#include "OmbrixPlatform/RandomText.h"

namespace ombrix {
namespace {

using Places = std::vector<std::size_t>;

/// The boundaries behind the beginning, as ICU finds them in the whole text.
Places icuBoundaries(std::string_view text) {
    UErrorCode status = U_ZERO_ERROR;
    UText* bytes = utext_openUTF8(nullptr, text.data(), static_cast<int64_t>(text.size()), &status);
    UBreakIterator* it = ubrk_open(UBRK_CHARACTER, "", nullptr, 0, &status);
    ubrk_setUText(it, bytes, &status);
    EXPECT_TRUE(U_SUCCESS(status));
    Places places;
    for (int32_t at = ubrk_next(it); at != UBRK_DONE; at = ubrk_next(it))
        places.push_back(static_cast<std::size_t>(at));
    ubrk_close(it);
    utext_close(bytes);
    return places;
}

TEST(Characters, BoundariesAreThoseOfTheWholeText) {
    test::RandomText random(1);
    for (int round = 0; round < 4000; ++round) {
        const std::string text = random.any();
        const Places expected = icuBoundaries(text);
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

TEST(Characters, CountsWhatAPersonCounts) {
    const struct {
        const char* why;
        std::string text;
        std::size_t count;
    } cases[] = {
        {"nothing", "", 0},
        {"CR LF is one", "a\r\nb", 3},
        {"LF CR is two", "a\n\rb", 4},
        {"a mark joins its letter", "e\u0301e\u0301", 2},
        {"a mark never joins a line feed", "\r\n\u0301", 2},
        {"joined emoji", "\U0001F468\u200D\U0001F469\u200D\U0001F467!", 2},
        {"two flags of two letters", "\U0001F1E9\U0001F1EA\U0001F1EB\U0001F1F7", 2},
        {"a prefix takes the ASCII letter behind it", "\u0600ab", 2},
        {"a syllable in its parts", "\u1112\u1161\u11AB", 1},
    };
    for (const auto& [why, text, count] : cases) EXPECT_EQ(Characters::count(text), count) << why;
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
}  // namespace
}  // namespace ombrix
