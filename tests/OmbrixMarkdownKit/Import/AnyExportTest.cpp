// Exports that the readers of known formats refuse: what is read, and what must not be taken for
// one.
#include "OmbrixMarkdownKit/Import/AnyExport.h"

#include <gtest/gtest.h>

#include "OmbrixMarkdownKit/Import/LineEnds.h"
#include "OmbrixMarkdownKit/Transcript/OmbrixTranscriptMarker.h"
#include "OmbrixPlatform/Files.h"
#include "OmbrixPlatform/RandomText.h"
#include "OmbrixPlatform/Text.h"

namespace ombrix {
namespace {

using namespace TranscriptImport;

/// "Title, 2026-05-14. Ann: one / Bo: two" for each meeting; empty when there is none.
std::string told(std::string_view text, const std::optional<std::string>& reference = {}) {
    std::string storage, told;
    const auto found = readAnyExport(withPlainLineEnds(text, storage), reference);
    if (!found) return "";
    for (const auto& meeting : found->meetings) {
        told += told.empty() ? "" : " // ";
        told += meeting.title.value_or("") + ", " + meeting.date.value_or("") + ".";
        for (const Turn& turn : meeting.turns)
            told.append(" ").append(turn.speaker).append(": ").append(turn.text);
    }
    return told;
}

/// The format of a text that only the further readers take.
std::string labelOf(std::string_view given) {
    std::string storage;
    const auto text = withPlainLineEnds(given, storage);
    const auto known = readExport(text);
    if (known && !known->meetings.empty()) return "known";
    const auto found = readAnyExport(text, std::nullopt);
    return found && !found->meetings.empty() ? std::string(label(found->format)) : "none";
}

struct Case {
    const char* why;
    std::string text, told;
};

TEST(AnyExport, ReadsLinesWithClocks) {
    const Case cases[] = {
        {"service text, hours without end", "Speaker 1 (00:03):\n#a\nb\n\nAna Ruiz (101:00:07):\nc",
         ", . Speaker 1: #a b Ana Ruiz: c"},
        {"halves of a day", "Ana (11:58 AM):\na\nTom (12:01 p.m):\nx",  // no clock: "p.m"
         ""},
        {"halves of a day in order", "Ana R (11:58 AM):\na\nTom (12:01 PM):\nb\nAna R (1:05pm):\nc",
         ", . Ana R: a Tom: b Ana R: c"},
        {"clocks that go back", "Ana R (00:07):\na\nTom R (00:03):\nb\nAna R (00:09):\nc", ""},
        {"bold, after a dash, and headings",
         "## **Ana Ruiz** - 00:02\na\n## Tom 00:05\nb\n## Ana Ruiz 0:09", ", . Ana Ruiz: a Tom: b"},
        {"titles and names turned round",
         "Ana Ruiz, PhD (0:02):\na\nRuiz, Tom (B) 0:03\nb\nAna Ruiz (0:04):\nc",
         ", . Ana Ruiz: a Ruiz, Tom: b Ana Ruiz: c"},
        {"without capitals", "ana ruiz [00:02]:\na\ntom [00:05]:\nb", ", . ana ruiz: a tom: b"},
        {"clock in front, ranges, fractions",
         "[00:00:03.120 - 00:00:05] You: a\n[00:06 → 00:07] **Tom**: b\n[00:08] c\n00:09\n",
         ", . Me: a Tom: b c"},
        {"clock and name in bold", "**[00:02] Jan van Dam:** a **b**\n00:03 - Tom R: c",
         ", . Jan van Dam: a **b** Tom R: c"},
        {"nothing said",
         "**Ana R** [00:02]: a\n**Tom** [00:05]: b\n**Ana R** [00:07]:", ", . Ana R: a Tom: b"},
        {"facts ahead of it",
         "Title: \"T\"\nDate: May 2, 2026\n\n**Ana (0:01):** a\n**Bo (0:02):** b",
         "T, 2026-05-02. Ana: a Bo: b"},
        {"clocks in other digits", "أحمد (٠٠:٠٢):\nx\nسارة (٠٠:٠٥):\ny", ", . أحمد: x سارة: y"},
        {"names without case", "【00:03】王明：好\n【00:05】李雷：请", ", . 王明: 好 李雷: 请"},
        {"marks of direction", "\u200Fדנה\u200F (00:02)\u200F: א\n\u200Fיוסי (00:05): ב",
         ", . דנה: א יוסי: ב"},
        {"times that people say",
         "Ana R (00:03):\n3:30?\nTom R (00:07):\nNoon (3:30 PM)\n3:30\nAna R (00:12):\n4:00 x",
         ", . Ana R: 3:30? Tom R: Noon (3:30 PM) 3:30 Ana R: 4:00 x"},
        {"names in brackets, and a line that is no name",
         "[00:03] [Ana R]: a\n[00:05] And Tom, too.\n[00:06] [spk_1] b\n[00:08] [Ana R]: c",
         ", . Ana R: a And Tom, too. spk_1: b Ana R: c"},
        {"links and escaped brackets",
         "**Ana R** [00:02](https://x.example/?t=2): a\n**Bo R** \\[00:03\\]: b",
         ", . Ana R: a Bo R: b"},
        {"marks of Markdown", "`00:02` **Ana R**: a\n*00:03* Bo R: b", ", . Ana R: a Bo R: b"},
        {"clocks below names", "## Ana R\n\n*0:02*\n\na\nBo\n0:05\nb\nBo\n## Ana R\n0:09\nc",
         ", . Ana R: a Bo: b Bo Ana R: c"},
        {"clocks below names that come once", "Ana R\n0:02\na\nBo R\n0:05\nb", ""},
        {"what looks like a heading", "Ana R (0:02):\na\n# b\nc\nBo R (0:05):\nd\n## E\n\n- f",
         ", . Ana R: a # b c Bo R: d"},
        {"a midnight", "Ana R (11:59 PM):\na\nBo R (12:01 AM):\nb\nAna R (12:02 AM):\nc",
         ", . Ana R: a Bo R: b Ana R: c"},
        {"others after midnight", "Ana R (23:58):\na\nBo R (23:59):\nb\nJo R (00:01):\nc", ""},
        {"three people in one order, with a sound",
         "Ana R (0:01):\na\nBo R (0:02):\n{laughs} b\nJo R (0:03):\nc\nAna R (0:04):\nd\nBo R "
         "(0:05):\ne\nJo R (0:06):\nf",
         ", . Ana R: a Bo R: {laughs} b Jo R: c Ana R: d Bo R: e Jo R: f"},
        {"no colon after the clock of a label",
         "Speaker 1 [0:02] a\n[SPEAKER_00] (0:03) b\nSpeaker 1 [0:05] c",
         ", . Speaker 1: a SPEAKER_00: b Speaker 1: c"},
        {"two midnights", "Ana R (23:58):\na\nBo R (0:00):\nb\nAna R (23:59):\nc\nBo R (0:00):\nd",
         ""},
        {"raw words",
         "[0:03] Ana: hi\n[0:05] Bo: hello there\n[0:07] Ana: the price\n[0:08] Bo: ok, go",
         ", . Ana: hi Bo: hello there Ana: the price Bo: ok, go"},
        {"labels of lower-case words", "Người nói 1 (0:03): a\nNgười nói 2 (0:05): b",
         ", . Người nói 1: a Người nói 2: b"},
        {"after a comment as before", "<!-- x -->\n\nAna Ruiz  0:12\na\n\nTom R  0:15\nb",
         ", . Ana Ruiz: a Tom R: b"},
    };
    for (const auto& [why, text, expected] : cases) EXPECT_EQ(told(text), expected) << why;
}

TEST(AnyExport, ReadsTheCopiedPageOfACall) {
    const std::string link = "\nVIEW RECORDING - 9 mins (none): https://x.example\n---\n";
    const std::string talk = "0:00 - Ana (Acme)\n  a\n0:05 - Tom\n  b";
    const std::string page = "Q2 - prices - May 14" + link + talk;
    EXPECT_EQ(told(page, "2026-05-14"), "Q2 - prices, 2026-05-14. Ana: a Tom: b");
    EXPECT_EQ(told(page, "2026-05-13"), "Q2 - prices, 2025-05-14. Ana: a Tom: b");
    EXPECT_EQ(told(page), "Q2 - prices, . Ana: a Tom: b");
    EXPECT_EQ(told("Q - Feb 29" + link + talk, "2027-01-01"), "Q, 2024-02-29. Ana: a Tom: b");
    EXPECT_EQ(told("Q - 3 May 2026" + link + talk), "Q, 2026-05-03. Ana: a Tom: b");
    EXPECT_EQ(told("Q - May 14" + link + talk + "\n0:09 - Ana (Lumen)\nc"),
              "Q, . Ana (Acme): a Tom: b Ana (Lumen): c");
    EXPECT_EQ(labelOf(page), "fathom");
    EXPECT_EQ(labelOf("Q2 - prices" + link + talk), "none");
    EXPECT_EQ(labelOf(talk + "\n0:09 - Ana\nc"), "markdown");
}

TEST(AnyExport, ReadsLabelsAndNamesWithoutCase) {
    const Case cases[] = {
        {"labels", "SPEAKER_00: a b\n[SPEAKER_01]: c\n[SPEAKER_01] d",
         ", . SPEAKER_00: a b SPEAKER_01: c d"},
        {"labels and clocks", "[SPEAKER_00] (0:02): a b\n[SPEAKER_01] [0:03 - 0:05] c",
         ", . SPEAKER_00: a b SPEAKER_01: c"},
        {"labels and times that are said", "SPEAKER_00: 3:30 is fine\nSPEAKER_01: 4:00 is not",
         ", . SPEAKER_00: 3:30 is fine SPEAKER_01: 4:00 is not"},
        {"of two forms", "SPEAKER_00: a b\nspk_1: c", ""},
        {"full-width colons and a title",
         "会议主题：价格\n王明：一\n李雷：二\n续\n王明：三\n李雷: 四",
         "价格, . 王明: 一 李雷: 二 续 王明: 三 李雷: 四"},
        {"one name that returns", "王明：一\n李雷：二\n王明：三", ""},
        {"Hindi", "राहुल शर्मा: एक।\nप्रिया: दो\nराहुल शर्मा: क\nप्रिया: ख",
         ", . राहुल शर्मा: एक। प्रिया: दो राहुल शर्मा: क प्रिया: ख"},
        {"numbers", "דובר 1: א\nדובר 2: ב\nדובר 1: ג\nדובר 2: ד",
         ", . דובר 1: א דובר 2: ב דובר 1: ג דובר 2: ד"},
        {"brackets", "【田中】一\n【佐藤】：二\n【田中】三\n【佐藤】四",
         ", . 田中: 一 佐藤: 二 田中: 三 佐藤: 四"},
        {"more than four words", "ا ب ج د ه: و\nسارة: ا\nا ب ج د ه: و\nسارة: ا", ""},
        {"labels of a manual", "参数：一\n返回值：二\n参数：三\n返回值：四", ""},
        {"records", "城市：甲\n国家：乙\n人口：一\n城市：丙\n国家：丁\n人口：二", ""},
        {"arrows and comments", "<!-- x\n-->\n\n# T\n\nAnn: a --> b\n\nBo: c\n\nAnn: d\n\nBo: e",
         "T, . Ann: a --> b Bo: c Ann: d Bo: e"},
        {"a document with a comment",
         "<!-- x -->\n\n**Quick Start:** run make\n\n**Known Issues:** none", ""},
    };
    for (const auto& [why, text, expected] : cases) EXPECT_EQ(told(text), expected) << why;
}

TEST(AnyExport, ReadsLinkedQuotes) {
    const std::string one = "[8](#startMs=1715702700000&endMs=1)", you = "[You](x/#startMs=5)";
    EXPECT_EQ(told("# A\n\n## B\n\n> " + one + ": a\n> b\nc\n\nlost\n> lost\n\n> " + you +
                   ": d\n"
                   "# C\nlost\n# D\n>> **[Ana](#startMs=1715789100000)**: e"),
              "A, 2024-05-14. 8: a b c Me: d // D, 2024-05-15. Ana: e");
    EXPECT_EQ(labelOf("> " + one + ": a"), "limitless");
    EXPECT_EQ(labelOf("> [8](#start=1715702700000): a"), "none");
    EXPECT_EQ(labelOf("[#startMs=1](x): a"), "none");
}

TEST(AnyExport, ReadsPagesOfJson) {
    const std::string meeting =
        R"({"title": "T", "transcript": [{"speaker": "Ann", "text": "a"}]})";
    const std::string lifelog =
        R"({"title": "L", "contents": [{"type": "blockquote", "content": "b"}]})";
    const Case cases[] = {
        {"a list under a key", R"({"notes": [)" + meeting + "," + lifelog + "]}",
         "T, . Ann: a // L, . Speaker 1: b"},
        {"below data", R"({"x": 1, "data": {"transcripts": [)" + meeting + "]}}", "T, . Ann: a"},
        {"data itself, not all objects", R"({"data": [null, )" + meeting + "]}", "T, . Ann: a"},
        {"entries in a list",
         R"({"items": [{"title": "E", "transcriptEntries": [{"participant": "p", "text": "x"}]}]})",
         "E, . p: x"},
        {"pages after each other", R"([{"items": [)" + meeting + R"(]}, {"items": []}])",
         "T, . Ann: a"},
        {"nobody is named", R"({"items": [{"messages": [{"text": "a"}]}]})", ""},
        {"a lifelog of Markdown",
         R"({"data": {"lifelog": {"title": "M", "startTime": "2026-05-02T",)"
         R"("markdown": "> [8](#startMs=1715702700000): a"}}})",
         "M, 2026-05-02. 8: a"},
        {"entries",
         R"({"transcriptEntries": [{"participant": "c/x/p/7/", "text": "a"},)"
         R"({"text": "b", "startTime": "2026-05-02T"}, {"participant": "me", "text": 3}]})",
         ", 2026-05-02. 7: a Speaker 1: b"},
    };
    for (const auto& [why, text, expected] : cases) EXPECT_EQ(told(text), expected) << why;
}

TEST(AnyExport, ReadsJsonOfSpeech) {
    const Case cases[] = {
        {"other names of the text",
         R"({"title": "T", "segments": [{"speaker": "Ann", "start": 1,)"
         R"("body": "a b"}, {"startTime": "2.5", "body": "c"}]})",
         "T, . Ann: a b c"},
        {"a programme",
         R"({"segments": [{"speaker": "Ann", "start": "2026-05-02", "body": "a b"},)"
         R"({"speaker": "Bo", "start": "2026-05-02", "body": "c d"}]})",
         ""},
        {"numbers, deep",
         R"({"results": {"channels": [{"alternatives": [{"paragraphs": {"paragraphs":)"
         R"([{"speaker": 0, "sentences": [{"text": "A."}, {"text": "B."}]}, {"speaker": 1, "sentences":)"
         R"([{"text": "C."}]}]}}]}]}})",
         ", . Speaker 0: A. B. Speaker 1: C."},
        {"words and marks",
         R"({"items": [{"speaker_label": "spk_0", "alternatives": [{"content": "so"},)"
         R"({"content": "no"}]}, {"speaker_label": "spk_0", "alternatives": [{"content": "it"}]},)"
         R"({"alternatives": [{"content": "."}]}, {"speaker_label": "spk_1", "text": "x"}]})",
         ", . spk_0: so it. spk_1: x"},
        {"scripts without blanks",
         R"({"words": [{"word": "你", "speaker": 1}, {"word": "好", "speaker": 1}, {"word": "。"},)"
         R"({"word": "是", "speaker": 2}]})",
         ", . Speaker 1: 你好。 Speaker 2: 是"},
        {"nobody is named",
         R"({"words": [{"word": "a", "start": 1}, {"word": "b c", "start": 2}]})", ""},
    };
    for (const auto& [why, text, expected] : cases) EXPECT_EQ(told(text), expected) << why;
}

TEST(AnyExport, ReadsSheetsOfTurns) {
    const Case cases[] = {
        {"commas", "\"Start\",\"Speaker\",\"Text\"\n1,Ann,\"a,\nb\"\n2,,c\n3,Bo,d\n4,me,e\n5,Ann,f",
         ", . Ann: a, b c Bo: d Me: e Ann: f"},
        {"semicolons", "Text;SPRECHER\na;Ann\nb;Bo\nc;Ann\n", ", . Ann: a Bo: b Ann: c"},
        {"tabs", "話者\t内容\n話者1\t一\n話者2\t二", ", . 話者1: 一 話者2: 二"},
        {"a programme", "Speaker,Content\nAnn Lee,a b\nBo Ray,c d", ""},
        {"no column of words", "Speaker,Size\nAnn,3\nBo,4\nAnn,5", ""},
    };
    for (const auto& [why, text, expected] : cases) EXPECT_EQ(told(text), expected) << why;
}

TEST(AnyExport, TakesNoAgendaLogOrList) {
    const char* cases[] = {
        "Day one\n\n09:00 - Registration\n  Badges.\n09:30 - Opening Session\n  The chair.\n",
        "Opening Session (09:00):\nThe chair speaks.\nCoffee Break (10:30):\nIn the hall.\n",
        "0:00 - Intro\nWe begin.\n1:30 - Setup\nInstall it.\n4:12 - Demo\nSee it run.\n",
        "Keynote (09:00):\nA B.\nTea Break (10:30):\nC.\nPanel Talk (11:00):\nD.\nTea Break "
        "(15:30):\nE.\n",
        "Dough (00:30):\nmix flour\n\nOven (01:15):\nbake\n\nDough (02:00):\nrest\n",
        "Paris\n08:02\nPlatform 3\nLyon\n09:47\nPlatform 5\nParis\n12:02\nPlatform 1\n",
        "[12:00:01] [Server thread]: Start\n[12:00:05] [Worker]: Load\n[12:00:07] [Worker]: End\n",
        "[14.05.26, 10:03:12] Ana R: hi\n[14.05.26, 10:03:20] Bo R: ho\n[14.05.26, 10:04] Ana R: "
        "x\n",
        "甲说：一\n乙说：二\n甲说：三\n乙说：四\n",
        "Berlin (08:02):\nPlatform 3\nHamburg (09:47):\nPlatform 5\n",
        "[12:00:01] Server: listening\n[12:00:02] Client: connected\n[12:00:03] Server: closed\n",
        "[00:00:01] Main: tick\n[00:00:02] Pool: job=3 ok.\n[00:00:03] Pool: {x}.\n",
        "[12:00] <ana> hi\n[12:01] <tom> hello\n",
        "00:01 Compile: a.c\n00:02 Link: a\n00:03 Compile: b.c\n00:04 Link: b\n",
        "speaker_1: alsa\nspeaker_2: pulse\n",
        "<!-- ombrix:engine v1 -->\n\nAna R: a\n\nTom R: b\n\nAna R: c\n\nTom R: d\n",
        "出发 8:03\n东京\n到达 9:47\n大阪\n出发 10:01\n大阪\n",
        "interface X {\n  speaker_0: string;\n  speaker_1: a | b;\n}\n",
        "**Dough (00:30):** mix\n\n**Oven (01:15):** bake\n",
        "[09:00:01] Mail Server: up\n[09:00:02] Auth Service: up\n[09:00:03] Mail Server: down\n",
        "意味：動く\n用例：車が動く\n意味：変わる\n用例：心が動く\n",
        "北京：中国的首都。\n上海：中国的城市。\n东京：日本的首都。\n",
        "<!-- x -->\n\n# Tool\n\nWords.\n\n**Note:** this.\n\nWords.\n\n**Warning:** "
        "that.\n\n**Note:** x.\n",
    };
    for (const char* text : cases) EXPECT_EQ(labelOf(text), "none") << text;
    const std::string sample = "\n[00:03] Ana Ruiz: Hello.\n[00:05] Tom Reyes: Hi.\n";
    std::string words;
    for (int i = 0; i < 100; ++i) words += "Words about a format.\n";
    EXPECT_EQ(labelOf("# Format\n" + sample), "markdown");
    EXPECT_EQ(labelOf("# Format\n" + sample + words), "none");
    EXPECT_EQ(labelOf("# Format\n" + words + sample), "none");
}

TEST(AnyExport, TakesNoFileOfThisTree) {
    std::size_t files = 0;
    for (const char* folder :
         {"docs", "scripts", "cmake", "OmbrixPlatform", "OmbrixCore", "OmbrixCLI",
          "OmbrixMarkdownKit", "OmbrixAnswerKit", "OmbrixMemoryKit", "tests", "fuzz", "benchmarks",
          "examples/support"}) {
        Files::walk(std::string(OMBRIX_EXAMPLES "/../") + folder, [&](const std::string& path) {
            const auto text = Files::text(path);
            if (!text || Text::contains(path, "/seeds/") || OmbrixTranscriptMarker::declares(*text))
                return;
            ++files;
            const std::string label = labelOf(*text);
            EXPECT_TRUE(label == "known" || label == "none") << path;
        });
    }
    EXPECT_GT(files, 300U);
}

TEST(AnyExport, LineEndsAndBlanksChangeNothing) {
    std::size_t exports = 0;
    Files::walk(OMBRIX_EXAMPLES "/exports", [&](const std::string& path) {
        const std::string text = Files::text(path).value();
        const std::string label = labelOf(text), expected = told(text);
        if (label == "known") return;
        ++exports;
        EXPECT_NE(label, "none") << path;
        EXPECT_EQ(told("\uFEFF" + Text::replacingAll(text, "\n", "\r\n")), expected) << path;
        const std::string blanks = Text::replacingAll(text, "\n", " \t\r");
        if (labelOf(blanks) == "known") return;
        EXPECT_EQ(told(blanks), expected) << path;
    });
    EXPECT_GE(exports, 27U);
}
}  // namespace
}  // namespace ombrix
