#include "OmbrixMarkdownKit/Import/ExportReader.h"

#include <algorithm>

#include "OmbrixMarkdownKit/Import/CsvExport.h"
#include "OmbrixMarkdownKit/Import/CueReader.h"
#include "OmbrixMarkdownKit/Import/JsonExport.h"
#include "OmbrixMarkdownKit/Import/MarkdownReader.h"
#include "OmbrixMarkdownKit/Import/OtterReader.h"
#include "OmbrixMarkdownKit/Import/SpeakerLines.h"
#include "OmbrixPlatform/Characters.h"
#include "OmbrixPlatform/LineCursor.h"
#include "OmbrixPlatform/Regex.h"
#include "OmbrixPlatform/Text.h"

namespace ombrix::TranscriptImport {
namespace {

constexpr std::string_view arrow = "-->";

/// True when `holds` of a trimmed line of the text.
template <typename Holds>
bool anyLine(std::string_view text, Holds holds) {
    LineCursor lines(text);
    while (const auto line = lines.next())
        if (holds(Text::trimmed(*line))) return true;
    return false;
}

/// Finds what this does, without going back over white space, which took minutes for a page of
/// empty lines around a number:
///   (?m)^\s*\d+\s*$\n\s*\d{2}:\d{2}:\d{2},\d{3}\s*-->
bool holdsSrtCue(std::string_view head) {
    static const Regex pattern(
        R"((?m)^[^\S\n]*+\d++[^\S\n]*+\n\s*+\d{2}:\d{2}:\d{2},\d{3}\s*+-->)");
    return Text::contains(head, arrow) && pattern.found(head);
}

bool givesSpeaker(std::string_view line) {
    std::string storage;
    return markdownSpeakerLine(line, storage) || inlineSpeaker(line, storage) ||
           exportSpeechLine(line, storage);
}

std::optional<Format> textFormat(std::string_view head) {
    if (head.starts_with("WEBVTT") || Text::contains(head, "\nWEBVTT")) return Format::webVTT;
    if (holdsSrtCue(head)) return Format::srt;
    if (Text::contains(head, arrow)) return Format::webVTT;
    if (anyLine(head, [](auto line) { return otterSpeaker(line).has_value(); }))
        return Format::otterText;
    if (anyLine(head, givesSpeaker)) return markdownFormat(head);
    return std::nullopt;
}

std::vector<ParsedMeeting> readMeetings(Format format, std::string_view text) {
    switch (format) {
        case Format::webVTT:
        case Format::srt:
            return {{.turns = readCues(text)}};
        case Format::otterText:
            return {{.turns = readOtter(text)}};
        case Format::granolaMarkdown:
        case Format::limitlessMarkdown:
        case Format::speakerMarkdown:
            return {readMarkdown(text)};
        case Format::granolaCSV:
            return parseCSVExport(text);
        default:
            return {};  // JSON, which was read to be recognized
    }
}
}  // namespace

std::string_view headOf(std::string_view text) {
    constexpr std::size_t characters = 4000;
    return Characters::prefix(text, characters);
}

Format markdownFormat(std::string_view head) {
    const std::string lower = Text::lowercased(head);
    if (Text::contains(lower, "granola")) return Format::granolaMarkdown;
    if (Text::contains(lower, "limitless")) return Format::limitlessMarkdown;
    return Format::speakerMarkdown;
}

std::optional<Export> recognized(std::string_view text) {
    if (beginsLikeJSON(text)) {
        auto meetings = parseJSONExport(text);
        if (!meetings.empty()) {
            const Format format = meetings.front().format.value_or(Format::genericJSON);
            return Export{format, std::move(meetings)};
        }
    }
    if (looksLikeCSVExport(text)) return Export{Format::granolaCSV, {}};
    const auto format = textFormat(headOf(text));
    return format ? std::optional(Export{*format, {}}) : std::nullopt;
}

std::optional<Export> readExport(std::string_view text) {
    auto found = recognized(text);
    if (!found || !found->meetings.empty()) return found;
    found->meetings = readMeetings(found->format, text);
    std::erase_if(found->meetings, [](const auto& meeting) { return meeting.turns.empty(); });
    return found;
}
}  // namespace ombrix::TranscriptImport
