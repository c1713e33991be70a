#include "OmbrixMarkdownKit/Import/SheetOfTurns.h"

#include <algorithm>
#include <string>
#include <unordered_set>
#include <utility>

#include "OmbrixMarkdownKit/Import/Csv.h"
#include "OmbrixMarkdownKit/Import/SpeakerLines.h"
#include "OmbrixMarkdownKit/Import/TalkNames.h"
#include "OmbrixPlatform/Text.h"
#include "OmbrixPlatform/WordSet.h"

namespace ombrix::TranscriptImport {
namespace {

constexpr std::size_t longestHeader = 1000;

constexpr auto speakerHeaders = wordSet(
    {"speaker",  "speaker name", "participant", "sprecher", "sprecherin", "intervenant", "locuteur",
     "hablante", "orador",       "locutor",     "falante",  "parlante",   "spreker",     "talare",
     "mówca",    "спикер",       "говорящий",   "ομιλητής", "konuşmacı",  "người nói",   "说话人",
     "發言人",   "发言人",       "話者",        "発言者",   "화자",       "발화자",      "المتحدث",
     "דובר",     "वक्ता",         "ผู้พูด"});
constexpr auto textHeaders = wordSet(
    {"text",   "utterance", "sentence", "content",  "speech",  "caption",  "texte",    "texto",
     "testo",  "tekst",     "текст",    "реплика",  "κείμενο", "metin",    "内容",     "文本",
     "发言",   "發言",      "发言内容", "發言內容", "発言",    "発言内容", "テキスト", "내용",
     "텍스트", "발화",      "النص",     "טקסט",     "पाठ",     "ข้อความ",   "văn bản"});

struct Columns {
    char separator = ',';
    std::size_t speaker = 0, text = 0;
};

std::optional<Columns> columnsOf(std::string_view header, char separator) {
    std::optional<std::size_t> speaker, text;
    std::size_t column = 0;
    for (CsvCursor cursor(header, separator); cursor.next(); ++column) {
        const std::string name = Text::lowercased(Text::trimmed(cursor.field()));
        if (!speaker && speakerHeaders.contains(name)) speaker = column;
        if (!text && textHeaders.contains(name)) text = column;
    }
    if (!speaker || !text) return std::nullopt;
    return Columns{separator, *speaker, *text};
}

std::optional<Columns> columnsOf(std::string_view text) {
    const auto header = text.substr(0, std::min(text.find('\n'), longestHeader));
    for (const char separator : {',', ';', '\t'})
        if (header.find(separator) != header.npos)
            if (const auto columns = columnsOf(header, separator)) return columns;
    return std::nullopt;
}
}  // namespace

std::optional<ParsedMeeting> readSheetOfTurns(std::string_view text) {
    const auto columns = columnsOf(text);
    if (!columns) return std::nullopt;
    ParsedMeeting meeting;
    std::string speaker(unknownSpeaker), name, words;
    std::unordered_set<std::string> speakers;
    std::size_t column = 0, rows = 0;
    for (CsvCursor cursor(text, columns->separator); cursor.next(); ++column) {
        if (column == columns->speaker) name = Text::trimmed(cursor.field());
        if (column == columns->text) words = Text::trimmed(cursor.field());
        if (!cursor.endsRow()) continue;
        if (rows++ > 0 && !words.empty()) {
            if (!name.empty()) speaker = normalizeSpeaker(name);
            append(meeting.turns, speaker, words);
            speakers.insert(speaker);
        }
        name.clear();
        words.clear();
        column = static_cast<std::size_t>(-1);
    }
    const bool areVoices = meeting.turns.size() > 1 && std::ranges::all_of(speakers, isNumbered);
    return meeting.turns.size() > speakers.size() || areVoices ? std::optional(std::move(meeting))
                                                               : std::nullopt;
}
}  // namespace ombrix::TranscriptImport
