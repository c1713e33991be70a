#include "OmbrixPlatform/Regex.h"

#include <gtest/gtest.h>

namespace ombrix {
namespace {

TEST(Regex, PlacesAreBytesOfTheText) {
    const Regex word(R"((\w+)(?:@(\w+))?)");
    const std::string text = "\u00E9t\u00E9@b \U0001F600 c";
    const auto found = word.matches(text);
    ASSERT_EQ(found.size(), 2U);
    EXPECT_EQ(found[0].range(), (ByteRange{0, 7}));
    EXPECT_EQ(found[0].group(2, text), "b");
    EXPECT_EQ(found[1].range().of(text), "c");
    EXPECT_FALSE(found[1].has(2));
    EXPECT_EQ(found[1].group(2, text), "");
    EXPECT_FALSE(found[1].has(3)) << "there is no such group";
    EXPECT_EQ(word.firstMatch(text, 7)->range().of(text), "c");
    EXPECT_FALSE(word.firstMatch(text, text.size() + 9));
}

TEST(Regex, OptionsAreThoseAskedFor) {
    EXPECT_TRUE(Regex("stra\u00DFe", Regex::Case::ignored).found("STRASSE"));
    EXPECT_FALSE(Regex("a").found("A"));
    EXPECT_TRUE(Regex("^b$", Regex::Case::sensitive, true).found("a\nb\nc"));
    EXPECT_FALSE(Regex("^b$").found("a\nb\nc"));
    EXPECT_TRUE(Regex("^$").found("")) << "an empty text is a text";
}

TEST(Regex, ReplacesEveryMatchOnce) {
    const Regex digits("[0-9]+");
    const std::string text = "a1\u00E922b";
    EXPECT_EQ(digits.replacingAll(
                  text, [&](const auto& m) { return "<" + std::string(m.group(0, text)) + ">"; }),
              "a<1>\u00E9<22>b");
    EXPECT_EQ(Regex("x*").replacingAll("axb", [](const auto&) { return "-"; }), "-a--b-");
    const std::string odd = "a.b*c\\[d](e){f}|g?h^i$j+k-l&m#n~o p\n\"q'";
    EXPECT_EQ(Regex(Regex::escaped(odd)).firstMatch("x" + odd)->range(),
              (ByteRange{1, odd.size() + 1}));
}

TEST(Regex, ASearchAtTheLimitEndsWithoutAMatch) {
    EXPECT_FALSE(Regex("(?:a|b|ab)*c").found(std::string(4'000'000, 'a')));
}

TEST(Regex, RunsOfWhiteSpaceOfAnyLengthMatch) {
    const std::string text = "a" + std::string(2'000'000, ' ') + "b";
    EXPECT_TRUE(Regex(R"(a\s+b)").found(text));
    EXPECT_TRUE(Regex(R"(a(?:\s*)b)").found(text));
    EXPECT_TRUE(Regex(R"([\s+]+b$)").found("+ b")) << "a set is left as it is";
    EXPECT_EQ(Regex(R"(\\s+)").firstMatch(R"(s \ss)")->range(), (ByteRange{2, 5}))
        << "a backslash and letters are no white space";
    EXPECT_TRUE(Regex(R"(^\Q\s+\E\s+$)").found(R"(\s+  )"));
}

TEST(RegexDeathTest, AConstantThatDoesNotCompileEndsTheProcess) {
    testing::GTEST_FLAG(death_test_style) = "threadsafe";
    EXPECT_DEATH(Regex("(a").found(""), "does not compile");
}
}  // namespace
}  // namespace ombrix
