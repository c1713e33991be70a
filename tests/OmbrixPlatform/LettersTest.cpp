#include "OmbrixPlatform/Letters.h"

#include <gtest/gtest.h>

#include "OmbrixPlatform/Text.h"
#include "OmbrixPlatform/Utf8.h"

namespace ombrix {
namespace {

TEST(Letters, EveryScalarIsFoundFromBothSidesWithItsFold) {
    for (char32_t scalar = 0; scalar < 0x10000; ++scalar) {
        std::string text = "a";
        Utf8::append(text, scalar);  // U+FFFD for a surrogate
        const auto found = Letters::find(text, 1);
        ASSERT_EQ(found.length, text.size() - 1) << static_cast<unsigned>(scalar);
        ASSERT_TRUE(Letters::findBefore(text, text.size()).letter == found.letter);
        if (found.letter.foldSize != Letters::Letter::noFold)
            ASSERT_EQ(Letters::foldOf(found, text, 1), Text::folded(Utf8::decode(text, 1).scalar));
        else
            ASSERT_FALSE(found.letter.isKnown());
    }
}

TEST(Letters, WhatIsNoScalarOfThePlaneIsUnknown) {
    for (const std::string_view text :
         {"\xC3", "\x80", "\xC1\x81", "\xE2\x80", "\xE0\x81\x81", "\xED\xA0\x80",
          "\xF0\x9D\x90\x80", "\xFF", "\xC3\xC3\xA9", "\xE2\x28\xA1"}) {
        for (const auto& [letter, length] :
             {Letters::find(text, 0), Letters::findBefore(text, 1)}) {
            EXPECT_FALSE(letter.isKnown()) << text;
            EXPECT_EQ(letter.foldSize, Letters::Letter::noFold) << text;
        }
    }
}
}  // namespace
}  // namespace ombrix
