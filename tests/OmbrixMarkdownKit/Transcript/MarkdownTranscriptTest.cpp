#include "OmbrixMarkdownKit/Transcript/MarkdownTranscript.h"

#include <gtest/gtest.h>

#include <unordered_set>

#include "OmbrixMarkdownKit/Transcript/TranscriptSections.h"
#include "OmbrixPlatform/RandomText.h"
#include "OmbrixPlatform/Text.h"

namespace ombrix {
namespace {

using MarkdownTranscriptParser::parse;
using Turn = TranscriptDocument::Turn;
using Turns = std::vector<Turn>;
using Strings = std::vector<std::string>;

/// A document of this header, one key a line.
TranscriptDocument withHeader(const std::string& lines) {
    return parse("---\n" + lines + "\n---\n").value();
}

TranscriptDocument withBody(const std::string& body) {
    return parse("---\n\n---\n" + body).value();
}

struct Reading {
    const char* why;
    std::string text;
    TranscriptDocument expected;
};

Turns turns(const std::string& section) { return withBody("## Transcript\n" + section).turns; }

const std::string whole =
    "---\n"
    "title: \"Weekly: \\\"pricing\\\"\"\n"
    "started_at: 2026-03-02T09:00:00+01:00\n"
    "date:\t2026-03-02 \n"
    "duration_min: +31\n"
    "source_app: \"Meet\"\n"
    "source: \"quoted\"\n"
    "asr_summary: \"ok\"\n"
    "asr: large\n"
    "status: incomplete\n"
    "private: \"YES\"\n"
    "calendar_event_id: \"ev:1\"\n"
    "spend_id: s1\n"
    "pending_offset: 12.5\n"
    "pending_reason: \"no \\n net\"\n"
    "topic_hint: \"a\n"
    "imported_from: zoom\n"
    "participants: ignored\n"
    "  - Ann Jones \n"
    "  - \"Bob\"\n"
    "pending_audio:\n"
    "  - \"a b.m4a\"\n"
    "  - c.m4a\n"
    "tags:\n"
    "  - x\n"
    "  - \n"
    "  - \"y z\"\n"
    "---\n"
    "# Weekly\n\n"
    "## Notes\n\n<!-- mine -->\n- call Tomas\n\n"
    "## Summary\n<!-- from the engine -->\nWe <!-- did --> it.\n  <!-- gone -->\t\n\n"
    "## Action Items\n\n- one\n\n"
    "## Key Moments\n10:02 price\n"
    "<!-- /ombrix:ai -->\n"
    "nobody's\n"
    "## Meeting Notes\nheld\n\n"
    "## Transcript\n\n"
    "**Ann Jones:** We keep it.\n\nAnd say so.\n\n**Bob:** Fine.\nReally.\n";

TEST(MarkdownTranscript, EveryFieldIsRead) {
    const TranscriptDocument expected{
        .title = "Weekly: \"pricing\"",
        .date = "2026-03-02",
        .participants = {"Ann Jones", "\"Bob\""},
        .durationMin = 31,
        .source = "\"quoted\"",
        .notes = "<!-- mine -->\n- call Tomas",
        .turns = {{"Ann Jones", "We keep it.\n\nAnd say so."}, {"Bob", "Fine.\nReally."}},
        .startedAt = "2026-03-02T09:00:00+01:00",
        .asr = "large",
        .status = "incomplete",
        .calendarEventID = "ev:1",
        .pendingAudioPaths = {"a b.m4a", "c.m4a"},
        .pendingOffsetSeconds = 12.5,
        .hasPendingOffset = true,
        .pendingReason = "no \\n net",
        .spendID = "s1",
        .topicHint = "\"a",
        .asrSummary = "ok",
        .sourceApp = "Meet",
        .tags = {"x", "y z"},
        .isPrivate = true,
        .summary = "We <!-- did --> it.",
        .meetingNotes = "held",
        .actionItems = "- one",
        .keyMoments = "10:02 price",
    };
    EXPECT_EQ(parse(whole), expected);
    EXPECT_EQ(parse(Text::replacingAll(whole, "\n", "\r\n")), expected) << "line ends";
    EXPECT_EQ(parse("---\nx\n---\n"), TranscriptDocument{}) << "defaults";
}

TEST(MarkdownTranscript, IsAClosedFrontmatter) {
    const struct {
        const char* why;
        std::string text;
        bool isTranscript;
    } cases[] = {
        {"nothing", "", false},
        {"a byte order mark", "\uFEFF---\ntitle: x\n---\n", false},
        {"an opening without a line end", "---", false},
        {"no closing", "---\ntitle: x\n", false},
        {"empty, no line feed of its own before the closing", "---\n---\n", false},
        {"one empty line", "---\n\n---\n", true},
        {"a line that begins with dashes closes as well", "---\ntitle: x\n---- more", true},
        {"blanks before", " ---\ntitle: x\n---\n", false},
    };
    for (const auto& [why, text, isTranscript] : cases)
        EXPECT_EQ(parse(text).has_value(), isTranscript) << why;
    EXPECT_EQ(parse("---\ntitle: x\n---"), (TranscriptDocument{.title = "x"}));
    EXPECT_EQ(parse("---\ntitle: x\n----\nsource: s\n---\n"),
              (TranscriptDocument{.title = "x", .source = "s"}))
        << "the exact closing line wins, wherever it is";
    EXPECT_EQ(parse("---\n---\ntitle: x\n---\n"), (TranscriptDocument{.title = "x"}));
}

TEST(MarkdownTranscript, ScalarsAreReadByTheirKey) {
    const Reading cases[] = {
        {"the later line wins", "title: a\ntitle: b", {.title = "b"}},
        {"and may be empty", "title: a\ntitle:", {}},
        {"indentation defeats a key", " title: a", {}},
        {"so does a blank before the colon", "title : a", {}},
        {"a lone quote stays", "title: \"", {.title = "\""}},
        {"two quotes are an empty value", "title: \"\"", {}},
        {"other white space stays", "date: \u00A02026", {.date = "\u00A02026"}},
        {"what does not parse changes nothing",
         "duration_min: 7\nduration_min: 8x",
         {.durationMin = 7}},
        {"nor does what overflows", "duration_min: 9223372036854775808", {}},
        {"on is not yes", "private: on", {}},
        {"one", "private: 1", {.isPrivate = true}},
        {"switched off again", "private: true\nprivate: no", {}},
        {"an offset that is no number", "pending_offset: abc", {.hasPendingOffset = true}},
        {"keeps the one before",
         "pending_offset: 3\npending_offset: x",
         {.pendingOffsetSeconds = 3, .hasPendingOffset = true}},
        {"a hexadecimal one",
         "pending_offset: 0x10",
         {.pendingOffsetSeconds = 16, .hasPendingOffset = true}},
        {"unknown keys", "titles: a\nspend: b\nimported_from: c", {}},
    };
    for (const auto& [why, lines, expected] : cases) EXPECT_EQ(withHeader(lines), expected) << why;
}

TEST(MarkdownTranscript, ListsRunUntilAnotherLine) {
    const Reading cases[] = {
        {"an empty participant is one", "participants:\n  - \n  - b", {.participants = {"", "b"}}},
        {"an empty recording too", "pending_audio:\n  - \"\"", {.pendingAudioPaths = {""}}},
        {"an unknown line ends it", "participants:\n  - a\n\n  - b", {.participants = {"a"}}},
        {"so does a scalar",
         "participants:\n  - a\nasr: x\n  - b",
         {.participants = {"a"}, .asr = "x"}},
        {"and an item set otherwise", "participants:\n - a\n  - b", {}},
        {"one list ends another",
         "participants:\n  - a\ntags:\n  - t\npending_audio:\n  - p",
         {.participants = {"a"}, .pendingAudioPaths = {"p"}, .tags = {"t"}}},
        {"a list goes on at its next key",
         "participants:\n  - a\ntags: t\nparticipants:\n  - b",
         {.participants = {"a", "b"}, .tags = {"t"}}},
        {"inline", "tags: [a, \"b c\", , d]", {.tags = {"a", "b c", "d"}}},
        {"a comma parts quotes too", "tags: [\"a,b\"]", {.tags = {"\"a", "b\""}}},
        {"one in quotes", "tags: \"so lo\"", {.tags = {"so lo"}}},
        {"empty in brackets", "tags: [ ]\n  - x", {}},
        {"a lone bracket", "tags: [", {.tags = {"["}}},
        {"they add up", "tags: a\ntags:\t\n  - b", {.tags = {"a", "b"}}},
    };
    for (const auto& [why, lines, expected] : cases) EXPECT_EQ(withHeader(lines), expected) << why;
}

TEST(MarkdownTranscript, SectionsEndAtTheNextHeadingThatBeginsALine) {
    const Reading cases[] = {
        {"wherever it is", "see ## Notes\nx", {.notes = "x"}},
        {"a heading with more on its line opens nothing", "## Notes today\nx", {}},
        {"yet ends one", "## Notes\nx\n## Summary of all\ny", {.notes = "x"}},
        {"blanks around", "## Key Moments\n\u00A0\n x \n\n", {.keyMoments = "x"}},
        {"notes keep comments", "## Notes\n<!-- a -->\nb", {.notes = "<!-- a -->\nb"}},
        {"others lose whole lines of them",
         "## Action Items\na\n \t<!-- x --> \nb <!-- y -->\n<!-- z\n-->\n<!---->",
         {.actionItems = "a\nb <!-- y -->\n<!-- z\n-->"}},
    };
    for (const auto& [why, body, expected] : cases) EXPECT_EQ(withBody(body), expected) << why;
}

TEST(MarkdownTranscript, TurnsAreParagraphsWithASpeaker) {
    const struct {
        const char* why;
        std::string section;
        Turns expected;
    } cases[] = {
        {"a further paragraph",
         "**A:** x\n\ny\n\n\n\nz\n\n**B:** w",
         {{"A", "x\n\ny\n\nz"}, {"B", "w"}}},
        {"no text, then a paragraph", "**Ann:**\n\nx", {{"Ann", "\n\nx"}}},
        {"one blank goes, a second stays", "**A:**  x", {{"A", " x"}}},
        {"a line feed is no blank", "**A:**\nx", {{"A", "\nx"}}},
        {"nobody speaks: dropped",
         "**:** hello\n\nlost\n\n**A:** x\n\n**:** y\n\nz",
         {{"A", "x\n\nz"}}},
        {"bold is no speaker",
         "**A:** x\n\n**Ann** said: **no**",
         {{"A", "x\n\n**Ann** said: **no**"}}},
        {"until a colon closes it", "**Ann** said:**no**", {{"Ann** said", "no**"}}},
        {"the first closing counts", "**A:** b:** c", {{"A", "b:** c"}}},
        {"a speaker of blanks is one", "** :** x", {{" ", "x"}}},
        {"blanks before a block", "\t**A:** x ", {{"A", "x"}}},
    };
    for (const auto& [why, section, expected] : cases) EXPECT_EQ(turns(section), expected) << why;
}

TEST(MarkdownTranscript, StatusAndNotesAnswerQuestions) {
    const auto withStatus = [](const char* status) { return TranscriptDocument{.status = status}; };
    EXPECT_TRUE(withStatus("pending").isPendingTranscription());
    EXPECT_TRUE(withStatus("incomplete").isIncomplete());
    EXPECT_FALSE(withStatus("incomplete").isPendingTranscription());
    EXPECT_TRUE(withStatus("pending").isRetryable() && withStatus("incomplete").isRetryable());
    EXPECT_FALSE(withStatus("Pending").isRetryable());
    const std::string placeholder(TranscriptDocument::notesPlaceholder);
    for (const auto& [notes, has] : {std::pair<std::string, bool>{" \n", false},
                                     {"\n" + placeholder + " ", false},
                                     {placeholder + " x", true}}) {
        EXPECT_EQ((TranscriptDocument{.notes = notes}.hasUserNotes()), has) << notes;
    }
}

/// The section as its rules say it, heading by heading.
std::string plainSection(std::string_view body, std::size_t heading) {
    using TranscriptSections::sectionHeaders;
    const std::string opening = std::string(sectionHeaders[heading]) + "\n";
    const std::size_t found = body.find(opening);
    if (found == std::string_view::npos) return {};
    const auto rest = body.substr(found + opening.size());
    std::size_t end = std::min(rest.find("\n<!-- /ombrix:ai -->"), rest.size());
    for (std::size_t other = 0; other < sectionHeaders.size(); ++other) {
        if (other != heading)
            end = std::min(end, rest.find("\n" + std::string(sectionHeaders[other])));
    }
    return std::string(rest.substr(0, end));
}

TEST(MarkdownTranscript, OneSearchFindsTheSectionsThatSixWouldFind) {
    const auto pieces = std::to_array<std::string_view>(
        {"## Notes", "## Transcript", "## Summary", "## Meeting Notes", "## Action Items",
         "## Key Moments", "<!-- /ombrix:ai -->", "\n", "\n", "\n\n", "#", " ", "x", "<!--"});
    test::RandomText random(20);
    for (int round = 0; round < 20000; ++round) {
        std::string body;
        for (std::size_t i = random.below(14); i > 0; --i) body += random.from(pieces);
        const TranscriptSections::Sections sections(body);
        for (std::size_t heading = 0; heading < 6; ++heading) {
            ASSERT_EQ(sections.raw(static_cast<TranscriptSections::Section>(heading)),
                      plainSection(body, heading))
                << test::visible(body);
        }
    }
}

TEST(MarkdownTranscript, EveryPrefixAndEveryDamageIsReadWithoutHarm) {
    for (std::size_t size = 0; size <= whole.size(); ++size) parse(whole.substr(0, size));
    test::RandomText random(21);
    for (int round = 0; round < 3000; ++round) {
        std::string damaged = whole;
        for (int i = 0; i < 5; ++i)
            damaged[random.below(damaged.size())] = "\n-*#:\xFF"[random.below(6)];
        damaged.insert(random.below(damaged.size()), random.any());
        const auto document = parse(damaged);
        if (!document) continue;
        for (const Turn& turn : document->turns) ASSERT_FALSE(turn.speaker.empty());
    }
}

TEST(MarkdownTranscript, AHundredThousandTurnsAndHeadingsAreLinear) {
    std::string text = "---\n\n---\n## Transcript\n";
    for (int i = 0; i < 100'000; ++i) text += "\n**Ann:** yes\n";
    EXPECT_EQ(parse(text)->turns, Turns(100'000, {"Ann", "yes"}));
    std::string headings = "---\n\n---\n";
    for (int i = 0; i < 100'000; ++i) headings += "## Notes\n##\n**\n\n<!-- /ombrix:ai --> ";
    EXPECT_TRUE(parse(headings));
    std::string open = "---\n\n---\n## Transcript\n**A:** x";
    for (int i = 0; i < 100'000; ++i) open += "\n\n**";
    EXPECT_EQ(parse(open)->turns.size(), 1U);
}

TEST(MarkdownTranscript, ATurnIsWrittenAsJSON) {
    const Turn turn{.speaker = "Zoë \"Z\"", .text = "one\n\ntwo / three"};
    EXPECT_EQ(Json::write(encode(turn), Json::Style::canonical),
              R"({"speaker":"Zoë \"Z\"","text":"one\n\ntwo / three"})");
}

TEST(MarkdownTranscript, EqualDocumentsMeetInASet) {
    const auto document = parse(whole).value();
    auto other = document;
    other.turns.back().speaker += "x";
    EXPECT_EQ((std::unordered_set<TranscriptDocument>{document, document, other}).size(), 2U);
    // The border between name and words counts.
    EXPECT_EQ((std::unordered_set<Turn>{{"a", "bc"}, {"ab", "c"}, {"a", "bc"}}).size(), 2U);
}
}  // namespace
}  // namespace ombrix
