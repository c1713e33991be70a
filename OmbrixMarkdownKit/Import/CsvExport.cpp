#include "OmbrixMarkdownKit/Import/CsvExport.h"

#include <array>
#include <optional>

#include "OmbrixMarkdownKit/Import/Csv.h"
#include "OmbrixMarkdownKit/Import/ExportFacts.h"
#include "OmbrixMarkdownKit/Import/SpeakerLines.h"
#include "OmbrixPlatform/LineCursor.h"
#include "OmbrixPlatform/Text.h"

namespace ombrix::TranscriptImport {
namespace {

/// The columns by their place; nothing for one that is missing.
struct Columns {
    std::size_t count = 0;
    std::optional<std::size_t> transcript, title, name, date;

    void add(std::string_view header) {
        const std::string lower = Text::lowercased(header);
        const auto take = [&](std::optional<std::size_t>& column, auto... words) {
            if (!column && (Text::contains(lower, words) || ...)) column = count;
        };
        take(transcript, "transcript");
        take(title, "title");
        take(name, "name");
        take(date, "date", "created", "start");
        ++count;
    }
    std::optional<std::size_t> titleColumn() const { return title ? title : name; }
};

/// The cells of a row that count.
struct Row {
    std::string transcript, title, date;
    std::size_t fields = 0;
    bool isBlank = true;  ///< one empty field

    void add(std::string_view field, const Columns& columns) {
        if (fields == columns.transcript) transcript = field;
        if (fields == columns.titleColumn()) title = field;
        if (fields == columns.date) date = field;
        isBlank = fields == 0 && field.empty();
        ++fields;
    }
};

/// "**Ann:** text" or "Ann: text"; the text may be empty, since the next lines can follow it.
std::optional<SpeechLine> cellSpeech(std::string_view line) {
    constexpr std::string_view boldMark = "**";
    std::string unused;
    if (line.starts_with(boldMark) && Text::contains(line, ":**")) {
        if (const auto speech = markdownSpeakerLine(line, unused)) return speech;
    }
    const std::size_t colon = line.find(':');
    if (colon == line.npos) return std::nullopt;
    const auto name = Text::trimmed(line.substr(0, colon));
    if (!isPlausibleName(name) || isSectionWord(name)) return std::nullopt;
    return SpeechLine{normalizeSpeaker(name), line.substr(colon + 1)};
}

std::vector<Turn> turnsOfCell(std::string_view cell) {
    std::vector<Turn> turns;
    std::string_view speaker = unknownSpeaker;
    LineCursor lines(cell);
    while (const auto next = lines.next()) {
        const auto line = Text::trimmed(*next);
        if (const auto speech = cellSpeech(line)) {
            speaker = speech->speaker;
            append(turns, speaker, speech->text);
        } else {
            append(turns, speaker, line);
        }
    }
    return turns;
}

void addMeeting(std::vector<ParsedMeeting>& meetings, const Row& row) {
    auto turns = turnsOfCell(row.transcript);
    if (turns.empty()) return;
    meetings.push_back({.turns = std::move(turns),
                        .title = row.title,
                        .date = numericDay(row.date),
                        .format = Format::granolaCSV});
}
}  // namespace

bool looksLikeCSVExport(std::string_view text) {
    Columns columns;
    for (CsvCursor header(text.substr(0, text.find('\n'))); header.next();)
        columns.add(header.field());
    return columns.count >= 2 && columns.transcript;
}

std::vector<ParsedMeeting> parseCSVExport(std::string_view text) {
    std::vector<ParsedMeeting> meetings;
    std::optional<Columns> columns;
    Columns header;
    Row row;
    for (CsvCursor cursor(text); cursor.next();) {
        if (!columns) header.add(cursor.field());
        row.add(cursor.field(), header);
        if (!cursor.endsRow()) continue;
        if (columns)
            addMeeting(meetings, row);
        else if (!row.isBlank)
            columns = header;
        else
            header = {};
        row = {};
    }
    return meetings;
}
}  // namespace ombrix::TranscriptImport
