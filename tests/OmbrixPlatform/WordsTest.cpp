#include "OmbrixPlatform/Words.h"

#include <gtest/gtest.h>
#include <unicode/ubrk.h>
#include <unicode/utext.h>

#include "OmbrixPlatform/RandomText.h"

namespace ombrix {
namespace {

std::vector<ByteRange> icuWords(std::string_view text) {
    UErrorCode status = U_ZERO_ERROR;
    UText* bytes = utext_openUTF8(nullptr, text.data(), static_cast<int64_t>(text.size()), &status);
    UBreakIterator* it = ubrk_open(UBRK_WORD, "", nullptr, 0, &status);
    ubrk_setUText(it, bytes, &status);
    EXPECT_TRUE(U_SUCCESS(status));
    std::vector<ByteRange> words;
    std::size_t begin = 0;
    for (int32_t at = ubrk_next(it); at != UBRK_DONE; at = ubrk_next(it)) {
        const auto end = static_cast<std::size_t>(at);
        if (ubrk_getRuleStatus(it) != UBRK_WORD_NONE) words.push_back({begin, end});
        begin = end;
    }
    ubrk_close(it);
    utext_close(bytes);
    return words;
}

std::vector<std::string> texts(const std::vector<ByteRange>& words, std::string_view text) {
    std::vector<std::string> result;
    for (const auto& word : words) result.emplace_back(word.of(text));
    return result;
}

TEST(Words, AreThoseOfTheWholeTextHoweverItIsCut) {
    test::RandomText random(2);
    for (int round = 0; round < 6000; ++round) {
        const std::string text = random.any();
        ASSERT_EQ(texts(Words::ranges(text), text), texts(icuWords(text), text))
            << test::visible(text);
        ASSERT_EQ(Words::ranges(text), icuWords(text)) << test::visible(text);
    }
}

TEST(Words, EveryTripleOfAsciiBytesIsCutByTheAsciiRule) {
    // Representatives of each class the rules know, and one byte of none.
    constexpr std::string_view classes = "aZ09_@.',;:\"-/ \t\r\n\v+";
    for (const char first : classes) {
        for (const char second : classes) {
            for (const char third : classes) {
                for (const std::string_view behind : {"", "a", "1"}) {
                    const std::string text =
                        std::string{first, second, third} + std::string(behind);
                    ASSERT_EQ(Words::ranges(text), icuWords(text)) << test::visible(text);
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

TEST(Words, JoinWhatBelongsTogether) {
    const std::string text = "can't 3.5 follow-up 1,000 a.m. x_y \u00E9t\u00E9 \u4F1A\u8B70!";
    EXPECT_EQ(texts(Words::ranges(text), text),
              (std::vector<std::string>{"can't", "3.5", "follow", "up", "1,000", "a.m", "x_y",
                                        "\u00E9t\u00E9", "\u4F1A\u8B70"}));
    EXPECT_TRUE(Words::ranges("").empty());
    EXPECT_TRUE(Words::ranges(" -- \n").empty());
}
}  // namespace
}  // namespace ombrix
