#include "OmbrixPlatform/Text.h"

#include <gtest/gtest.h>
#include <unicode/locid.h>
#include <unicode/normalizer2.h>
#include <unicode/uchar.h>
#include <unicode/unistr.h>

#include "OmbrixPlatform/RandomText.h"
#include "OmbrixPlatform/Utf8.h"

namespace ombrix {
namespace {

using Views = std::vector<std::string_view>;

/// The fold by its definition, step by step over the whole text.
std::string plainFold(std::string_view text) {
    icu::UnicodeString given;
    for (std::size_t at = 0; at < text.size(); at += Utf8::decode(text, at).length)
        given.append(static_cast<UChar32>(Utf8::decode(text, at).scalar));
    UErrorCode status = U_ZERO_ERROR;
    const auto decomposed = icu::Normalizer2::getNFDInstance(status)->normalize(given, status);
    EXPECT_TRUE(U_SUCCESS(status));
    icu::UnicodeString letters;
    for (int32_t at = 0; at < decomposed.length(); at = decomposed.moveIndex32(at, 1)) {
        const UChar32 scalar = decomposed.char32At(at);
        if (u_charType(scalar) != U_NON_SPACING_MARK) letters.append(scalar);
    }
    std::string result;
    return letters.foldCase().toUTF8String(result);
}

TEST(Text, TheFoldIsDecomposedWithoutMarksAndCaseFolded) {
    test::RandomText random(7);
    for (int round = 0; round < 4000; ++round) {
        const std::string text = random.any();
        ASSERT_EQ(Text::folded(text), plainFold(text)) << test::visible(text);
    }
}

TEST(Text, FoldingTwiceChangesNothingForAnyScalar) {
    for (char32_t scalar = 0; scalar <= 0x10FFFF; ++scalar) {
        std::string bytes;
        Utf8::append(bytes, scalar);
        const std::string once = Text::folded(bytes);
        ASSERT_EQ(once, Text::folded(scalar < 0xD800 || scalar > 0xDFFF ? scalar : 0xFFFD));
        ASSERT_EQ(Text::folded(once), once) << std::hex << static_cast<unsigned>(scalar);
    }
}

TEST(Text, LowerCaseLooksAtNoNeighbour) {
    EXPECT_EQ(Text::withUpperCaseFirst("\u00DFab\u00DF"), "SSab\u00DF");
    EXPECT_EQ(Text::lowercased("\u039F\u0394\u039F\u03A3 I\u0130 \u1E9E \U00010400 AZ[@`{"),
              "\u03BF\u03B4\u03BF\u03C3 ii\u0307 \u00DF \U00010428 az[@`{");
    for (char32_t scalar = 0x80; scalar <= 0x10FFFF; ++scalar) {
        if (scalar >= 0xD800 && scalar <= 0xDFFF) continue;
        std::string bytes;
        Utf8::append(bytes, scalar);
        std::string expected;
        icu::UnicodeString(static_cast<UChar32>(scalar))
            .toLower(icu::Locale::getRoot())
            .toUTF8String(expected);
        ASSERT_EQ(Text::lowercased(bytes), expected) << std::hex << static_cast<unsigned>(scalar);
    }
}

TEST(Text, IgnoringCaseKeepsDiacritics) {
    for (const auto& [a, b] : {std::pair{"STRASSE", "stra\u00DFe"},
                               {"\u212Aelvin", "kelvin"},
                               {"\u00C9", "\u00E9"},
                               {"\u03A3", "\u03C2"},
                               {"", ""}}) {
        EXPECT_TRUE(Text::equalsIgnoringCase(a, b)) << a << " " << b;
    }
    for (const auto& [a, b] : {std::pair{"Ann", "Anna"}, {"\u00C9", "e"}, {"[", "{"}})
        EXPECT_FALSE(Text::equalsIgnoringCase(a, b)) << a << " " << b;
    EXPECT_TRUE(Text::startsWithIgnoringAsciiCase("ONE-on", "one"));
    EXPECT_FALSE(Text::startsWithIgnoringAsciiCase("on", "one"));
}

TEST(Text, EachTrimTakesItsOwnScalars) {
    const struct {
        const char* why;
        std::string text, all, blanks, spaces;
    } cases[] = {
        {"line ends", "\r\n a \n", "a", "\r\n a \n", "\r\n a \n"},
        {"blanks of other scripts", "\u00A0\u3000a\u202F", "a", "a", "\u00A0\u3000a\u202F"},
        {"separators of lines", "\u2028a\u0085", "a", "\u2028a\u0085", "\u2028a\u0085"},
        {"no white space", "\u200Ba\uFEFF", "\u200Ba\uFEFF", "\u200Ba\uFEFF", "\u200Ba\uFEFF"},
        {"broken bytes stay", "\x80 a \xE3\x80", "\x80 a \xE3\x80", "\x80 a \xE3\x80",
         "\x80 a \xE3\x80"},
        {"nothing else", " \u2003 ", "", "", "\u2003"},
    };
    for (const auto& [why, text, all, blanks, spaces] : cases) {
        EXPECT_EQ(Text::trimmed(text), all) << why;
        EXPECT_EQ(Text::trimmedBlanks(text), blanks) << why;
        EXPECT_EQ(Text::trimmedSpacesAndTabs(text), spaces) << why;
    }
}

TEST(Text, SplitsAndJoins) {
    EXPECT_EQ(Text::split("a,,b,", ","), (Views{"a", "", "b", ""}));
    EXPECT_EQ(Text::split("", ","), (Views{""}));
    EXPECT_EQ(Text::splitDroppingEmpty(",a,,b,", ","), (Views{"a", "b"}));
    test::RandomText random(8);
    for (int round = 0; round < 500; ++round) {
        const std::string text = random.any();
        ASSERT_EQ(Text::joined(Text::split(text, "'s"), "'s"), text);
    }
}

TEST(Text, ControlsForATerminalAreMadeVisible) {
    EXPECT_EQ(Text::withVisibleControls("a\x1b[31m\a\x7f\u0085\tb\r\n\xff\u00e9"),
              "a\\x1B[31m\\x07\\x7F\\x85\tb\\x0D\n\uFFFD\u00e9");
}

TEST(Text, Replaces) {
    EXPECT_EQ(Text::replacingAll("aaa", "aa", "a"), "aa") << "a replacement is not replaced again";
    EXPECT_EQ(Text::withLineFeeds("\r\na\r\r\nb\r"), "\na\r\nb\r");
    EXPECT_EQ(Text::withStraightApostrophes("\u2018a\u2019 \u201Cb\u201D \u201A"),
              "'a' \u201Cb\u201D \u201A");
    EXPECT_EQ(Text::flattened("\r\n a \t b\u00A0\u2028c \u0301d\u200B\xFF "),
              "a b c \u0301d\u200B\xFF");
}

TEST(Text, ScalarsHaveTheirClasses) {
    const struct {
        char32_t scalar;
        bool white, alphanumeric, letterOrNumber, letter;
    } cases[] = {
        {U'a', false, true, true, true},      {U'7', false, true, true, false},
        {U'\v', true, false, false, false},   {0x00BD, false, true, true, false},  // one half
        {0x0301, false, true, false, false},  // a mark is a mark, not a letter
        {0x0345, false, true, true, true},    // the one mark of Latin and Greek that is alphabetic
        {0x2167, false, true, true, true},    // the Roman numeral eight
        {0x24B6, false, false, true, true},   // a circled letter is a symbol, and alphabetic
        {0x200B, false, false, false, false},
    };
    for (const auto& [scalar, white, alphanumeric, letterOrNumber, letter] : cases) {
        SCOPED_TRACE(static_cast<unsigned>(scalar));
        EXPECT_EQ(Text::isWhiteSpace(scalar), white);
        EXPECT_EQ(Text::isAlphanumeric(scalar), alphanumeric);
        EXPECT_EQ(Text::isLetterOrNumber(scalar), letterOrNumber);
        EXPECT_EQ(Text::isLetter(scalar), letter);
    }
}
}  // namespace
}  // namespace ombrix
