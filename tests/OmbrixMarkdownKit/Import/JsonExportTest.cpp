#include "OmbrixMarkdownKit/Import/JsonExport.h"

#include <gtest/gtest.h>

#include "OmbrixPlatform/EnumNames.h"

namespace ombrix {
namespace {

using namespace TranscriptImport;

/// "format|title|date|speaker: text|..." for each meeting, to compare whole lists of them.
std::vector<std::string> meetings(std::string_view json) {
    std::vector<std::string> lines;
    for (const ParsedMeeting& meeting : parseJSONExport(json)) {
        std::string line(rawValue(meeting.format.value()));
        line += "|" + meeting.title.value_or("-") + "|" + meeting.date.value_or("-");
        for (const Turn& turn : meeting.turns) line += "|" + turn.speaker + ": " + turn.text;
        lines.push_back(line);
    }
    return lines;
}

TEST(JsonExport, FindsTheSegmentsOfEachMeeting) {
    const std::string segments = R"([{"speaker_name": "Ann", "text": "a"}])";
    const struct {
        const char* why;
        std::string json;
        std::vector<std::string> expected;
    } cases[] = {
        {"under data and transcript, with its title",
         R"({"title": "x", "data": {"transcript": {"name": "T", "sentences": )" + segments + "}}}",
         {"firefliesJSON|T|-|Ann: a"}},
        {"three containers down",
         R"({"data": {"result": {"meeting": {"turns": )" + segments + "}}}}",
         {"firefliesJSON|-|-|Ann: a"}},
        {"no deeper", R"({"data":{"data":{"data":{"data":{"turns":)" + segments + "}}}}}", {}},
        {"the first list of objects is the answer",
         R"({"messages": [{"text": "m"}], "sentences": ["s"], "segments": [1, {"text": "g"}]})",
         {"genericJSON|-|-|Speaker 1: g"}},
        {"segments alone",
         R"([{"text": "a"}, {"content": "b"}, {"text": 1, "raw_text": "c"}])",
         {"genericJSON|-|-|Speaker 1: a b c"}},
        {"an empty text is the text", R"([{"text": " ", "content": "b"}])", {}},
        {"many, some of them bad",
         R"([{"id": 1}, {"title": "T", "turns": [{"text": "a"}]}, {"turns": [{}]}])",
         {"genericJSON|T|-|Speaker 1: a"}},
        {"a list with something else in it", R"([{"text": "a"}, "b"])", {}},
        {"lifelogs by their first element",
         R"([{"contents": [{"type": "x", "children": [{"type": "blockquote", "content": "a"}]}],
              "markdown": "", "startTime": "2026-03-02"}, {"markdown": "# T\n> Ann: b"}])",
         {"limitlessLifelog|-|2026-03-02|Speaker 1: a", "limitlessLifelog|-|-|Ann: b"}},
        {"lifelogs without Markdown",
         R"([{"contents": [{"type": "blockquote", "content": "a",
              "speakerName": "you"}, {"type": "p", "content": "b"}]}])",
         {"limitlessLifelog|-|-|you: a"}},
        {"a page in which nobody speaks", R"({"lifelogs": [], "turns": )" + segments + "}", {}},
        {"not JSON", "{\"turns\": " + segments, {}},
    };
    for (const auto& [why, json, expected] : cases) EXPECT_EQ(meetings(json), expected) << why;
    EXPECT_TRUE(meetings(std::string(100'000, '[')).empty());
}

TEST(JsonExport, ASegmentTellsSpeakerAndFormat) {
    const std::pair<std::string, std::string> cases[] = {
        {R"("speaker_name": " you ")", "firefliesJSON|Me"},
        {R"("speaker_name": "")", "firefliesJSON|Speaker 1"},
        {R"("speaker_name": null, "speaker": {"display_name": "Ann", "name": "B"})",
         "fathomJSON|Ann"},
        {R"("speaker": {"name": "Ann", "attribution": null})", "circlebackJSON|Ann"},
        {R"("speaker": {"name": "Ann"}, "source": "x")", "granolaJSON|Ann"},
        {R"("speaker": {"name": "Ann", "source": "microphone"})", "genericJSON|Ann"},
        {R"("speaker": {"diarization_label": "Speaker A"})", "granolaJSON|Speaker A"},
        {R"("speaker": {"attribution": 1, "source": "them"})", "granolaJSON|Them"},
        {R"("speaker": {"source": "x"}, "source": "system")", "granolaJSON|Them"},
        {R"("speaker": "Ann", "source": "microphone")", "genericJSON|Ann"},
        {R"("speaker": "Ann", "timestamp": null)", "circlebackJSON|Ann"},
        {R"("speaker": 5, "source": "microphone")", "granolaJSON|Me"},
        {R"("source": "phone")", "genericJSON|Speaker 1"},
    };
    for (const auto& [fields, expected] : cases) {
        const auto found = parseJSONExport("[{\"text\": \"x\", " + fields + "}]").at(0);
        EXPECT_EQ(std::string(rawValue(*found.format)) + "|" + found.turns.at(0).speaker, expected)
            << fields;
    }
}

TEST(JsonExport, TheFirstKeyWithADayGivesTheDay) {
    const std::pair<std::string, std::optional<std::string>> cases[] = {
        {R"("date": "2026-03-02", "created_at": 1700000000000)", "2023-11-14"},
        {R"("created_at": 1700000000.9)", "2023-11-14"},
        {R"("created_at": 17000, "date": "on 2026_03_02")", "2026-03-02"},
        {R"("startTime": "soon", "start": 1e300, "created": true)", {}},
    };
    for (const auto& [fields, day] : cases) {
        const auto found = parseJSONExport("{\"turns\": [{\"text\": \"x\"}], " + fields + "}");
        EXPECT_EQ(found.at(0).date, day) << fields;
    }
}
}  // namespace
}  // namespace ombrix
