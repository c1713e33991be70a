#include "OmbrixPlatform/Words.h"

#include <gtest/gtest.h>

#include <fstream>
#include <new>

#include "OmbrixPlatform/IcuBreaks.h"
#include "OmbrixPlatform/Letters.h"
#include "OmbrixPlatform/ProcessLimit.h"
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

TEST(Words, AScriptWhoseDictionaryFindsNoMemoryIsAnErrorAndNoEndlessLoop) {
#ifdef __SANITIZE_ADDRESS__
    GTEST_SKIP() << "its shadow does not fit in a limited address space";
#endif
    const std::string_view taiLe = "\u1950\u1951 \u1952";  // of no other test
    Words::ranges("e\u0301");                              // the iterator itself is made before
    {
        std::size_t pages = 0;
        std::ifstream("/proc/self/statm") >> pages;
        const test::ProcessLimit limit(RLIMIT_AS, pages * 4096 + (1U << 20U));
        EXPECT_THROW(Words::ranges(taiLe), std::bad_alloc);
    }
    EXPECT_EQ(Words::ranges(taiLe), test::icuPieces(UBRK_WORD, taiLe));
}

TEST(Words, AStretchAroundAPlaceHasTheWordsOfTheWholeText) {
    test::RandomText random(4);
    for (int round = 0; round < 3000; ++round) {
        const std::string text = random.any();
        const auto words = Words::ranges(text);
        std::size_t at = random.below(text.size() + 1);
        if (at == text.size() || (static_cast<unsigned char>(text[at]) & 0xC0U) == 0x80) continue;
        const ByteRange stretch = Words::stretchAround(text, at);
        ASSERT_LE(stretch.begin, at);
        ASSERT_GT(stretch.end, at);
        std::vector<ByteRange> inside;
        for (const auto& word : words)
            if (word.begin < stretch.end && stretch.begin < word.end)
                inside.push_back({word.begin - stretch.begin, word.end - stretch.begin});
        ASSERT_EQ(Words::ranges(stretch.of(text)), inside) << test::visible(text) << " at " << at;
    }
}
}  // namespace
}  // namespace ombrix
