#include "OmbrixPlatform/Words.h"

#include <gtest/gtest.h>

#include "OmbrixPlatform/IcuBreaks.h"
#include "OmbrixPlatform/RandomText.h"

namespace ombrix {
namespace {

TEST(Words, AreThoseThatIcuFindsInTheWholeText) {
    test::RandomText random(2);
    for (int round = 0; round < 6000; ++round) {
        const std::string text = random.any();
        ASSERT_EQ(Words::ranges(text), test::icuPieces(UBRK_WORD, text)) << test::visible(text);
    }
}

TEST(Words, EveryTripleOfAsciiBytesIsCutByTheAsciiRule) {
    // Representatives of each class of the rules, and one byte in no class.
    constexpr std::string_view classes = "aZ09_@.',;:\"-/ \t\r\n\v+";
    for (const char first : classes) {
        for (const char second : classes) {
            for (const char third : classes) {
                for (const std::string_view after : {"", "a", "1"}) {
                    const std::string text = std::string{first, second, third} + std::string(after);
                    ASSERT_EQ(Words::ranges(text), test::icuPieces(UBRK_WORD, text))
                        << test::visible(text);
                }
            }
        }
    }
}

TEST(Words, StretchesCoverTheTextWithoutAGap) {
    test::RandomText random(3);
    for (int round = 0; round < 1000; ++round) {
        const std::string text = random.any();
        Words::Stretches stretches(text);
        std::size_t place = 0;
        for (Words::Stretch stretch; stretches.next(stretch); place = stretch.range.end) {
            ASSERT_EQ(stretch.range.begin, place) << test::visible(text);
            ASSERT_GT(stretch.range.end, place) << test::visible(text);
        }
        ASSERT_EQ(place, text.size()) << test::visible(text);
    }
}

}  // namespace
}  // namespace ombrix
