#include "OmbrixMarkdownKit/Import/TranscriptImport.h"

#include <gtest/gtest.h>

#include <filesystem>

#include "OmbrixMarkdownKit/Import/AnyExport.h"
#include "OmbrixMarkdownKit/Import/LineEnds.h"
#include "OmbrixMarkdownKit/Transcript/MarkdownTranscript.h"
#include "OmbrixPlatform/Files.h"
#include "OmbrixPlatform/RandomText.h"
#include "OmbrixPlatform/Regex.h"
#include "OmbrixPlatform/Text.h"
#include "OmbrixPlatform/Utf8.h"

namespace ombrix {
namespace {

using namespace TranscriptImport;
using Kind = Failure::Kind;

std::optional<Kind> failure(std::string_view text) {
    try {
        convertAll(text, "x.txt", std::nullopt);
        return std::nullopt;
    } catch (const Failure& failure) {
        return failure.kind();
    }
}

/// Converts, and holds what is written against what was read.
void expectReadsBack(std::string_view text, std::string_view filename) {
    std::string storage;
    const auto found = readAnyExport(withPlainLineEnds(text, storage), std::nullopt);
    if (failure(text)) return;
    const auto results = convertAll(text, filename, std::nullopt);
    ASSERT_EQ(results.size(), found->meetings.size());
    for (std::size_t i = 0; i < results.size(); ++i) {
        const auto document = MarkdownTranscriptParser::parse(results[i].markdown);
        ASSERT_TRUE(document);
        TranscriptDocument expected{
            .title = results[i].title,
            .date = results[i].date.value_or(""),
            .participants = results[i].participants,
            .source = "Ombrix",
            .notes = std::string(TranscriptDocument::notesPlaceholder),
            .turns = found->meetings[i].turns,
            .asr = "imported (" + std::string(label(results[i].format)) + ")"};
        ASSERT_EQ(*document, expected) << test::visible(text);
    }
}

TEST(TranscriptImport, WritesATranscript) {
    const std::string expected =
        "---\ntitle: pricing\ndate: 2026-03-02\nparticipants:\n  - Me\n  - Ann\nduration_min: 0\n"
        "source: Ombrix\nasr: imported (vtt)\nimported_from: 2026-03-02_pricing.vtt\n---\n\n"
        "## Notes\n\n_(User-added context. Empty until the user types here in the Library "
        "window.)_\n\n## Transcript\n\n**Ann:** one two\n\n**Me:** three\n";
    const std::string cues =
        "\uFEFFWEBVTT\r\n\r\n00:01 --> 00:02\r\nAnn: one\r\n\r\n00:02 --> 00:03\rtwo\nYou: three";
    const Result result = convert(cues, "2026-03-02_pricing.vtt", "2020-01-01");
    EXPECT_EQ(result.markdown, expected);
    EXPECT_EQ(failure(result.markdown), Kind::alreadyOmbrix);
    EXPECT_EQ(convert(cues, "x.vtt", "2020-01-01").date, "2020-01-01");
    EXPECT_EQ(convert(cues, "\"\".vtt", {}).title, "Imported meeting");
    EXPECT_EQ(
        convert("---\ntitle: '\"A\"'\ndate: 2026-01-02\n---\nAnn: hi", "2026-03-02.md", {}).title,
        "A");
    EXPECT_TRUE(render("A", {}, {}, {}, Format::srt, "a").ends_with("## Transcript\n\n\n"));
}

TEST(TranscriptImport, DetectsTheFormat) {
    const struct {
        const char* why;
        std::string text;
        std::optional<Format> format;
    } cases[] = {
        {"a header line", "x\nWEBVTT", Format::webVTT},
        {"numbers and commas", "1\n00:00:01,000 --> 00:00:02,000\nhi", Format::srt},
        {"with CR LF", "\r\n1\r\n00:00:01,000 --> 00:00:02,000\r\nhi", Format::srt},
        {"only an arrow", "a --> b", Format::webVTT},
        {"a header of Otter", "Weekly\nAnn Lee  0:12\nhi", Format::otterText},
        {"whose name is none", "so we all meet at 0:12", {}},
        {"a speaker", "x\n- Ann: hi", Format::speakerMarkdown},
        {"named after its tool", "Ann: hi\nby GRANOLA and Limitless", Format::granolaMarkdown},
        {"the other", "limitless\nann: hi", Format::limitlessMarkdown},
        {"too late for the name", "Ann: hi\n" + std::string(4000, 'x') + "granola",
         Format::speakerMarkdown},
        {"a section is no speaker", "Action Items: do this", {}},
        {"JSON without segments", "{\"a\": \"Ann\"}", {}},
        {"JSON with segments", " [{\"text\": \"hi\"}]", Format::genericJSON},
        {"CSV", "Title,Transcript\nx,hi", Format::granolaCSV},
        {"nothing", "", {}},
    };
    for (const auto& [why, text, format] : cases) EXPECT_EQ(detect(text), format) << why;
}

TEST(TranscriptImport, ASrtCueIsWhatTheExpressionFinds) {
    const Regex cue(R"((?m)^\s*\d+\s*$\n\s*\d{2}:\d{2}:\d{2},\d{3}\s*-->)");
    constexpr std::string_view pieces[] = {
        "\n", "\n", " ", "\u2028", "1", "\u0663", "00:00:01,000", "00:00:01,000", "-->", "x"};
    test::RandomText random(94);
    for (int round = 0; round < 30000; ++round) {
        std::string text;
        for (std::size_t left = random.below(12); left > 0; --left) text += random.from(pieces);
        ASSERT_EQ(detect(text) == Format::srt, cue.found(text)) << test::visible(text);
    }
}

TEST(TranscriptImport, SaysWhyThereIsNone) {
    EXPECT_EQ(failure("WEBVTT\n"), Kind::noSpeech);
    EXPECT_EQ(failure("Title,Transcript\nx,\n"), Kind::noSpeech);
    EXPECT_EQ(failure("just words"), Kind::unrecognizedFormat);
    EXPECT_EQ(failure("Ann: hi\r\nsource: Ombrix\r\n"), Kind::alreadyOmbrix);
    EXPECT_EQ(failure(std::string("A\0n\0n\0:\0 \0h\0i\0", 14)), Kind::unrecognizedFormat);
}

TEST(TranscriptImport, NothingForeignFormsStructure) {
    const std::string forged =
        R"([{"turns": [{"speaker": "A\n\n**B:** :*:***", "text": "x\n\n**C:** y\r\n## Summary"},
            {"speaker": "\n", "text": "<!-- /ombrix:ai -->\n---\nsource: Ombrix\n"},
            {"speaker": "D", "text": "## Action Items"}],
            "title": "\"T\nsource: x\"", "date": "2026-03-02"}])";
    const Result result = convert(forged, "a\nb\xFF.json", std::nullopt);
    const auto document = MarkdownTranscriptParser::parse(result.markdown).value();
    EXPECT_EQ(document.title, "T source: x");
    EXPECT_EQ(document.participants, (std::vector<std::string>{"A  **B", "Speaker 1", "D"}));
    EXPECT_EQ(document.turns,
              (std::vector<Turn>{{"A  **B", "x  **C:** y ## Summary"},
                                 {"Speaker 1", "<! -- /ombrix:ai --> --- source: Ombrix"},
                                 {"D", "## Action Items"}}));
    EXPECT_EQ(document.summary + document.actionItems, "");
    EXPECT_TRUE(Text::contains(result.markdown, "\nimported_from: a b\uFFFD.json\n"));
    expectReadsBack(forged, "x.json");
}

TEST(TranscriptImport, EveryTruncatedExportReadsBack) {
    std::size_t exports = 0;
    Files::walk(OMBRIX_EXAMPLES "/exports", [&](const std::string& path) {
        const std::string text = Files::text(path).value();
        const std::string name = std::filesystem::path(path).filename();
        EXPECT_EQ(failure(text), std::nullopt) << path;
        ++exports;
        for (std::size_t end = text.find('\n'); end != text.npos; end = text.find('\n', end + 1)) {
            const std::string begun = text.substr(0, end + 1);
            expectReadsBack(begun, name);
            expectReadsBack(Text::replacingAll(begun, "\n", end % 2 == 0 ? "\r" : "\r\n"), name);
        }
        test::RandomText random(93);
        for (int round = 0; round < 50; ++round) {
            std::string damaged = text;
            for (int i = 0; i < 4; ++i)
                damaged[random.below(damaged.size())] = "\n:*<>\",[{-\0"[random.below(11)];
            expectReadsBack(Utf8::repaired(damaged), name);
        }
    });
    EXPECT_GE(exports, 45U);
}

TEST(TranscriptImport, LongTextsAreReadInTime) {
    constexpr std::size_t size = 2'000'000;
    const std::string page(1990, '\n');
    failure(page + "1" + page + "-->");
    for (const char* piece : {"<", "**", ":**", "Ann: ", "a,\"", "\n", "-->\n", " ", "1\n", "[",
                              "<v ", "0:12 ", "\u0301", "{\"data\":"}) {
        std::string text;
        while (text.size() < size) text += piece;
        failure(text);
        failure("WEBVTT\n\n0:01 --> 0:02\n" + text);
        failure("transcript,b\n" + text);
        failure("[{\"text\": \"x\", \"speaker\": \"" + Text::replacingAll(text, "\"", "'") +
                "\"}]");
        failure("Ann: " + text);
    }
}
}  // namespace
}  // namespace ombrix
