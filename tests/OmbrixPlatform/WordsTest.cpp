#include "OmbrixPlatform/Words.h"

#include <gtest/gtest.h>

#include "OmbrixPlatform/IcuBreaks.h"
#include "OmbrixPlatform/Letters.h"
#include "OmbrixPlatform/RandomText.h"
#include "OmbrixPlatform/Utf8.h"

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

TEST(Words, EveryScalarIsCutAsIcuCutsItBesideLettersDigitsAndJoints) {
    constexpr auto sides =
        std::to_array<std::string_view>({"a", "1", "_", "'", "a'", "1,", "\u0436.", "\u2019", " "});
    for (char32_t scalar = 0x80; scalar < 0x10000; ++scalar) {
        std::string itself;
        Utf8::append(itself, scalar);
        if (!Letters::find(itself, 0).letter.isKnown()) continue;
        std::string text;
        for (const auto before : sides)
            for (const auto after : {"a", "1", "_", "'a", ",1", ".\u0436", "\u2019", ""})
                text.append(before).append(itself).append(after).append(" ");
        for (const auto twice : {"a", "1", " "}) text.append(itself).append(itself).append(twice);
        ASSERT_EQ(Words::ranges(text), test::icuPieces(UBRK_WORD, text))
            << static_cast<unsigned>(scalar);
    }
}

}  // namespace
}  // namespace ombrix
