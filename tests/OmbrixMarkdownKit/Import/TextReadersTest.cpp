// The readers of WebVTT, SRT, Otter text and Markdown.
#include <gtest/gtest.h>

#include "OmbrixMarkdownKit/Import/CueReader.h"
#include "OmbrixMarkdownKit/Import/MarkdownReader.h"
#include "OmbrixMarkdownKit/Import/OtterReader.h"

namespace ombrix {
namespace {

using namespace TranscriptImport;
using Turns = std::vector<Turn>;

struct Case {
    const char* why;
    std::string text;
    Turns turns;
};

TEST(CueReader, ReadsWhatIsSaidInCues) {
    const std::string times = "00:01.000 --> 00:02.000\n";
    const Case cases[] = {
        {"nobody is named", times + "hi\n", {{"Speaker 1", "hi"}}},
        {"one turn of two cues",
         times + "Ann: one\n\n" + times + "two\n\n" + times + "Ann: three",
         {{"Ann", "one two three"}}},
        {"a voice with a class", times + "<v.loud Ann>Hi</v>", {{"Ann", "Hi"}}},
        {"a voice stays as written", times + "<v  you \t Lee>Hi", {{"you Lee", "Hi"}}},
        {"a voice without a name goes on", times + "<v Ann>a\n<v>b\n<v.x>c", {{"Ann", "a b c"}}},
        {"no tag without its end", times + "<v Ann", {{"Speaker 1", "<v Ann"}}},
        {"a name in tags", times + "<i>Ann</i>: <b>hi</b>", {{"Ann", "hi"}}},
        {"section words are nobody", times + "Note: hi", {{"Speaker 1", "Note: hi"}}},
        {"comments and styles", "NOTE x\n" + times + "a\n\nSTYLE\n" + times + "b\n\nREGION\nc", {}},
        {"no times, nothing said", "WEBVTT\n\n1\nAnn: hi\n\nBob: ho", {}},
        {"no line between header and comment", "WEBVTT\nNOTE\n" + times + "a", {}},
        {"blanks are no empty line", times + "a\n \t\nb\n\nc", {{"Speaker 1", "a b"}}},
        {"cues run together",
         "1\n" + times + "Ann: a\n2\n" + times + "Bob: b\n7\n3\n" + times + "4",
         {{"Ann", "a"}, {"Bob", "b 7 4"}}},
        {"an arrow in speech", times + "from x --> y", {{"Speaker 1", "from x --> y"}}},
    };
    for (const auto& [why, text, turns] : cases) EXPECT_EQ(readCues(text), turns) << why;
}

TEST(OtterReader, AHeaderNamesWhoSpeaksUntilTheNext) {
    const Case cases[] = {
        {"before the first header", "Weekly\n\nAnn Lee  0:12\na\n\nb\n", {{"Ann Lee", "a b"}}},
        {"oneself", "You 1:02:31\nhi", {{"Me", "hi"}}},
        {"a time in speech is no header",
         "Ann 0:12\nwe meet at 9:30\nBo 0:14\nyes",
         {{"Ann", "we meet at 9:30"}, {"Bo", "yes"}}},
    };
    for (const auto& [why, text, turns] : cases) EXPECT_EQ(readOtter(text), turns) << why;
}

TEST(MarkdownReader, ReadsTitleDayAndSpeech) {
    const struct {
        const char* why;
        std::string text;
        std::optional<std::string> title, date;
        Turns turns;
    } cases[] = {
        {"front matter",
         "---\ntitle: 'A \"x\"'\ntitle: \"B\"\ntitle:\ndate: 2 March 2026\n---\n# C\nAnn: hi",
         "B",
         "2026-03-02",
         {{"Ann", "hi"}}},
        {"that is not closed", "---\nAnn: hi\ntitle: A", "A", {}, {}},
        {"that does not begin the text", "\n---\ntitle: A\n---\nAnn: hi", "A", {}, {{"Ann", "hi"}}},
        {"facts before the first speech only",
         "date: 2026-02-30\nAnn: hi\ntitle: A\ndate: 2026-03-02",
         {},
         {},
         {{"Ann", "hi title: A date: 2026-03-02"}}},
        {"headings end a speech",
         "Ann: a\n# T\nlost\n## U\n**Bo:**\n- b\n\n<i>c</i>\n#x\nlost",
         "T",
         {},
         {{"Ann", "a"}, {"Bo", "b <i>c</i>"}}},
    };
    for (const auto& [why, text, title, date, turns] : cases) {
        const ParsedMeeting meeting = readMarkdown(text);
        EXPECT_EQ(meeting.title, title) << why;
        EXPECT_EQ(meeting.date, date) << why;
        EXPECT_EQ(meeting.turns, turns) << why;
    }
}
}  // namespace
}  // namespace ombrix
