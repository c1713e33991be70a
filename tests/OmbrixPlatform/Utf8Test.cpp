#include "OmbrixPlatform/Utf8.h"

#include <gtest/gtest.h>

#include "OmbrixPlatform/RandomText.h"

namespace ombrix {
namespace {

const std::string bad = "\uFFFD";

TEST(Utf8, RepairReplacesEachMaximalBadSequenceOnce) {
    const struct {
        const char* why;
        std::string bytes, repaired;
    } cases[] = {
        {"a byte that starts nothing", "a\x80z", "a" + bad + "z"},
        {"a sequence cut short is one", "a\xE2\x82z", "a" + bad + "z"},
        {"overlong forms are no sequence", "\xC0\xAF\xE0\x80\x80", bad + bad + bad + bad + bad},
        {"a surrogate", "\xED\xA0\x80", bad + bad + bad},
        {"above the last scalar", "\xF4\x90\x80\x80", bad + bad + bad + bad},
        {"the last scalar is kept", "\xF4\x8F\xBF\xBF", "\xF4\x8F\xBF\xBF"},
    };
    for (const auto& [why, bytes, repaired] : cases) {
        EXPECT_EQ(Utf8::repaired(bytes), repaired) << why;
        EXPECT_EQ(Utf8::isValid(bytes), bytes == repaired) << why;
    }
    test::RandomText random(4);
    for (int round = 0; round < 2000; ++round) {
        const std::string text = random.any();
        const std::string repaired = Utf8::repaired(text);
        ASSERT_TRUE(Utf8::isValid(repaired)) << test::visible(text);
        ASSERT_EQ(repaired == text, Utf8::isValid(text)) << test::visible(text);
        // A long text is judged by other code.
        ASSERT_EQ(repaired == text, Utf8::isValid(text + std::string(4096, ' ')))
            << test::visible(text);
    }
}

TEST(Utf8, EveryScalarReadsBack) {
    for (char32_t scalar = 0; scalar <= 0x110000; ++scalar) {
        std::string bytes;
        Utf8::append(bytes, scalar);
        const bool isScalar = scalar <= 0x10FFFF && (scalar < 0xD800 || scalar > 0xDFFF);
        const auto [read, length] = Utf8::decode(bytes, 0);
        ASSERT_EQ(read, isScalar ? scalar : Utf8::replacement);
        ASSERT_EQ(length, bytes.size());
        ASSERT_EQ(Utf8::scalarStartBefore("x" + bytes, bytes.size() + 1), 1U);
        ASSERT_TRUE(Utf8::isValid(bytes)) << std::hex << static_cast<unsigned>(scalar);
    }
}

TEST(Utf8, StepsBackwardsMeetTheStepsForwards) {
    test::RandomText random(5);
    for (int round = 0; round < 2000; ++round) {
        const std::string text = random.any();
        std::vector<std::size_t> starts;
        for (std::size_t at = 0; at < text.size(); at += Utf8::decode(text, at).length)
            starts.push_back(at);
        for (std::size_t at = text.size(); at > 0; starts.pop_back()) {
            at = Utf8::scalarStartBefore(text, at);
            ASSERT_EQ(at, starts.back()) << test::visible(text);
        }
    }
}

TEST(Utf8, OffsetsInUnitsMapBothWays) {
    const std::string text = "a\u00E9\u20AC\U0001F600z";  // 1, 2, 3, 4 and 1 bytes; 6 units
    const std::size_t bytesOfUnit[] = {0, 1, 3, 6, 6, 10, 11, 11};  // unit 4 is half of the pair
    for (std::size_t unit = 0; unit < std::size(bytesOfUnit); ++unit)
        EXPECT_EQ(Utf8::byteOffset(text, unit), bytesOfUnit[unit]) << unit;
    EXPECT_EQ(Utf8::utf16Length(text), 6U);
    test::RandomText random(6);
    for (int round = 0; round < 500; ++round) {
        const std::string any = random.any();
        for (std::size_t at = 0; at < any.size(); at += Utf8::decode(any, at).length)
            ASSERT_EQ(Utf8::byteOffset(any, Utf8::utf16Offset(any, at)), at);
        ASSERT_EQ(Utf8::byteOffset(any, Utf8::utf16Offset(any, any.size())), any.size());
    }
}

TEST(Utf8, AByteThatIsNotAsciiIsFoundAnywhereInABlock) {
    for (std::size_t size = 1; size < 140; ++size) {
        std::string text(size, '\x7F');
        EXPECT_TRUE(Utf8::isAscii(text));
        for (std::size_t at = 0; at < size; ++at) {
            text[at] = '\x80';
            ASSERT_FALSE(Utf8::isAscii(text)) << at << " of " << size;
            text[at] = '\x7F';
        }
    }
    EXPECT_TRUE(Utf8::isAscii(""));
}
}  // namespace
}  // namespace ombrix
