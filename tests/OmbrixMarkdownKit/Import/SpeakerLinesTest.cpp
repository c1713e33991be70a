#include "OmbrixMarkdownKit/Import/SpeakerLines.h"

#include <gtest/gtest.h>

namespace ombrix {
namespace {

using namespace TranscriptImport;

TEST(SpeakerLines, NamesArePlausibleOrShapedLikeNames) {
    const std::string longest(48, 'a');
    const struct {
        std::string name;
        bool plausible, shaped;
    } cases[] = {
        {"Ann", true, true},
        {"ann lee", true, false},
        {"Jean-Luc O\u2019Neil", true, true},
        {"Zoe\u0301 Łuk", true, true},
        {"Dr. Ann O'Neil", false, true},
        {"A B C D", true, true},
        {"A B C D E", false, false},
        {"A  B", false, true},
        {"2nd Floor", true, true},
        {"12", false, true},
        {"王 李", true, false},
        {"Ann & Bo", true, false},
        {"a@b", false, false},
        {std::string("A\0b", 3), false, false},
        {longest, true, false},
        {longest + "a", false, false},
        {"", false, false},
    };
    for (const auto& [name, plausible, shaped] : cases) {
        EXPECT_EQ(isPlausibleName(name), plausible) << name;
        EXPECT_EQ(isNameShaped(name), shaped) << name;
    }
    std::string marks;
    for (int i = 0; i < 48; ++i) marks += "e\u0301";
    EXPECT_TRUE(isPlausibleName(marks)) << "48 characters of two scalars";
    EXPECT_FALSE(isPlausibleName(marks + "e"));
}

using Line = std::optional<std::pair<std::string, std::string>>;

Line copyOf(const std::optional<SpeechLine>& line) {
    if (!line) return std::nullopt;
    return std::pair(std::string(line->speaker), std::string(line->text));
}

TEST(SpeakerLines, ALineNamesItsSpeaker) {
    const struct {
        const char* line;
        Line inlined, exported;
    } cases[] = {
        {"Ann: do this", {{"Ann", "do this"}}, {{"Ann", "do this"}}},
        {"ann lee: hi", {{"ann lee", "hi"}}, {}},
        {"Action Items: do this", {}, {}},
        {"AI-Generated Notes: x", {}, {}},
        {"https://x.example", {}, {}},
        {"You: hello", {{"Me", "hello"}}, {{"Me", "hello"}}},
        {"MySelf : <b>hello</b>", {{"Me", "hello"}}, {{"Me", "hello"}}},
        {"Ann: <b>", {}, {{"Ann", ""}}},
        {"Ann:hello", {{"Ann", "hello"}}, {}},
        {"Ann (00:12): a: b", {}, {{"Ann", "a: b"}}},
        {"- Ann Lee [1:02:31 pm] : hi", {}, {{"Ann Lee", "hi"}}},
        {"> Ann: quoted", {}, {{"Ann", "quoted"}}},
        {"> > Ann: quoted twice", {}, {}},
        {"**Ann.:** no name", {}, {}},
        {"** you :** as **written**",
         {{"** you", "** as **written**"}},
         {{"you", "as **written**"}}},
        {"**Ann Lee:**", {{"**Ann Lee", "**"}}, {{"Ann Lee", ""}}},
        {"* **Ann:** in a list", {{"* **Ann", "** in a list"}}, {{"Ann", "in a list"}}},
        {"[MIC] [00:12] hello", {}, {{"Me", "hello"}}},
        {"[SYS] 00:12 hello", {}, {{"Them", "hello"}}},
        {"[SYS]", {}, {{"Them", ""}}},
        {"[mic] hello", {}, {}},
    };
    for (const auto& [line, inlined, exported] : cases) {
        std::string storage;
        EXPECT_EQ(copyOf(inlineSpeaker(line, storage)), inlined) << line;
        EXPECT_EQ(copyOf(exportSpeechLine(line, storage)), exported) << line;
    }
}
}  // namespace
}  // namespace ombrix
