#include "OmbrixMarkdownKit/Import/JsonSpeech.h"

#include <algorithm>
#include <array>
#include <string>
#include <unordered_set>

#include "OmbrixMarkdownKit/Import/JsonDates.h"
#include "OmbrixMarkdownKit/Import/JsonFields.h"
#include "OmbrixMarkdownKit/Import/SpeakerLines.h"
#include "OmbrixMarkdownKit/Import/TalkNames.h"
#include "OmbrixPlatform/Text.h"
#include "OmbrixPlatform/Utf8.h"

namespace ombrix::TranscriptImport {
namespace {

using Json::Node;

/// Lists of what is said, the best first; all but the last three hold whole segments.
constexpr auto listKeys = std::to_array<std::string_view>(
    {"utterances", "segments", "audio_segments", "monologues", "paragraphs", "turns", "entries",
     "sentences", "words", "elements", "items"});
constexpr auto wordKeys = std::to_array<std::string_view>({"words", "elements", "items"});
/// What such lists are in; of a list, its first member.
constexpr auto containerKeys = std::to_array<std::string_view>(
    {"results", "result", "data", "response", "output", "transcript", "transcription", "channels",
     "alternatives", "paragraphs"});
constexpr int deepestContainer = 5;
constexpr auto timeKeys = std::to_array<std::string_view>(
    {"start", "startTime", "start_time", "startMs", "start_ms", "begin", "offset"});

constexpr auto speakerKeys = std::to_array<std::string_view>(
    {"speaker", "speakerName", "speaker_name", "speaker_label", "speakerLabel", "speaker_id",
     "speakerId", "speakerTag", "speaker_tag"});
constexpr auto textKeys = std::to_array<std::string_view>(
    {"punctuated_word", "body", "transcript", "text", "content", "word", "value"});
constexpr auto partKeys =
    std::to_array<std::string_view>({"sentences", "elements", "alternatives", "words"});

bool isAmong(const auto& keys, std::string_view key) {
    return std::ranges::find(keys, key) != keys.end();
}

/// A name or a label as it is; "Speaker 0" for 0 and "0".
std::optional<std::string> speakerOf(const Node& segment) {
    for (const auto& field : fields(segment, speakerKeys)) {
        if (!field) continue;
        if (const auto number = field->integer()) return "Speaker " + std::to_string(*number);
        const auto name = Text::trimmed(field->string().value_or(""));
        if (name.empty()) continue;
        if (std::ranges::all_of(name, Text::isAsciiDigit)) return "Speaker " + std::string(name);
        return std::string(normalizeSpeaker(name));
    }
    return std::nullopt;
}

bool isPunctuation(std::string_view text) {
    for (std::size_t at = 0; at < text.size();) {
        const auto [scalar, length] = Utf8::decode(text, at);
        if (Text::isAlphanumeric(scalar)) return false;
        at += length;
    }
    return true;
}

/// Chinese, Japanese, Thai and Lao letters and marks.
bool needsNoBlank(char32_t scalar) {
    return (scalar >= 0x0E00 && scalar < 0x0F00) || (scalar >= 0x3000 && scalar < 0x3100) ||
           (scalar >= 0x3400 && scalar < 0xA000) || (scalar >= 0xF900 && scalar < 0xFB00) ||
           (scalar >= 0xFF00 && scalar < 0xFF61) || scalar >= 0x20000;
}

/// Appends after a blank, but a mark that ends a word, and scripts without blanks, right after it.
void join(std::string& text, std::string_view more) {
    constexpr auto marks =
        std::to_array<std::string_view>({".", ",", "?", "!", ":", ";", "%", "…", "。", "、", "，",
                                         "？", "！", "：", "।", "؟", "،"});
    more = Text::trimmed(more);
    if (more.empty()) return;
    const bool isMark = std::ranges::find(marks, more) != marks.end();
    const bool isOneWord =
        !text.empty() && needsNoBlank(Utf8::decode(more, 0).scalar) &&
        needsNoBlank(Utf8::decode(text, Utf8::scalarStartBefore(text, text.size())).scalar);
    if (!text.empty() && !isMark && !isOneWord) text += ' ';
    text += more;
}

/// The text beside the speaker, or that of the parts below: sentences, words or readings, of which
/// the first counts.
std::string textOf(const Node& segment) {
    for (const auto& field : fields(segment, textKeys))
        if (const auto text = stringIn(field); text && !Text::trimmed(*text).empty())
            return std::string(Text::trimmed(*text));
    std::string text;
    const auto parts = fields(segment, partKeys);
    for (std::size_t i = 0; i < parts.size() && text.empty(); ++i) {
        if (!parts[i]) continue;
        for (const Node part : parts[i]->items()) {
            join(text, firstString(fields(part, textKeys)).value_or(""));
            if (partKeys[i] == "alternatives") break;
        }
    }
    return text;
}

struct Said {
    std::string speaker, text;
};

/// 3.12 or "3.12", seconds of a recording; a talk of a conference has a date.
bool isTimed(const Node& segment) {
    return std::ranges::any_of(fields(segment, timeKeys), [](const auto& field) {
        const auto text = stringIn(field).value_or("");
        return (field && field->number()) ||
               (!text.empty() && text.find_first_not_of("0123456789.") == text.npos);
    });
}

/// True when somebody speaks again, or labels tell the voices apart.
bool isConversation(const std::vector<Said>& said) {
    std::unordered_set<std::string_view> speakers;
    for (const auto& [speaker, text] : said) speakers.insert(speaker);
    return speakers.size() < said.size() || std::ranges::all_of(speakers, [](auto name) {
               return isNumbered(name) || isSpeakerLabel(name);
           });
}

/// Nothing when fewer than half of the members name their speaker, or it is a list of speeches.
std::vector<Turn> turnsOf(const Node& list, bool areWords) {
    std::vector<Said> said;
    std::size_t spoken = 0, named = 0;
    bool areTimed = true;
    for (const Node segment : list.items()) {
        const std::string text = textOf(segment);
        if (text.empty()) continue;
        auto speaker = speakerOf(segment);
        const bool isMark = areWords && isPunctuation(text);
        if (!isMark) ++spoken;
        if (!isMark && speaker) ++named;
        areTimed = areTimed && (isMark || isTimed(segment));
        if (!speaker) speaker = said.empty() ? std::string(unknownSpeaker) : said.back().speaker;
        if (said.empty() || said.back().speaker != *speaker) said.push_back({*speaker, ""});
        join(said.back().text, text);
    }
    std::vector<Turn> turns;
    if (named * 2 < spoken || named == 0 || (!areTimed && !isConversation(said))) return turns;
    for (const auto& [speaker, text] : said) append(turns, speaker, text);
    const bool areSentences = std::ranges::any_of(turns, [](const Turn& turn) {
        return Text::contains(turn.text, " ") || !Utf8::isAscii(turn.text);
    });
    if (!areSentences) turns.clear();
    return turns;
}

std::vector<Turn> turnsIn(const Node& object, int depth) {
    const auto lists = fields(object, listKeys);
    for (std::size_t i = 0; i < lists.size(); ++i) {
        if (!lists[i]) continue;
        auto turns = turnsOf(*lists[i], isAmong(wordKeys, listKeys[i]));
        if (!turns.empty()) return turns;
    }
    if (depth == deepestContainer) return {};
    for (const auto& container : fields(object, containerKeys)) {
        if (!container) continue;
        if (container->isObject())
            if (auto turns = turnsIn(*container, depth + 1); !turns.empty()) return turns;
        for (const Node member : container->items()) {
            if (auto turns = turnsIn(member, depth + 1); !turns.empty()) return turns;
            break;
        }
    }
    return {};
}
}  // namespace

bool isSpeechKey(std::string_view key) {
    constexpr auto keys = std::to_array<std::string_view>(
        {"body", "utterances", "audio_segments", "monologues", "words", "punctuated_word",
         "speaker", "speaker_label", "speakerTag", "speaker_tag", "speakerLabel", "speakerId"});
    return isAmong(keys, key);
}

std::optional<ParsedMeeting> speechIn(const Json::Node& page) {
    static constexpr auto keys = std::to_array<std::string_view>({"title", "name", "metadata"});
    ParsedMeeting meeting{.turns = turnsIn(page, 0), .format = Format::genericJSON};
    if (meeting.turns.empty()) return std::nullopt;
    const auto found = fields(page, keys);
    if (const auto title = firstString(std::span(found).first<2>())) meeting.title = *title;
    meeting.date = dateOf(page);
    if (!meeting.date && found[2]) meeting.date = dateOf(*found[2]);
    return meeting;
}
}  // namespace ombrix::TranscriptImport
