#include "OmbrixMarkdownKit/Import/LabelledTalk.h"

#include <algorithm>
#include <vector>

#include "OmbrixMarkdownKit/Import/SpeakerLines.h"
#include "OmbrixMarkdownKit/Import/Talk.h"
#include "OmbrixMarkdownKit/Import/TalkNames.h"
#include "OmbrixMarkdownKit/Import/TimedLines.h"
#include "OmbrixMarkdownKit/Import/Voices.h"
#include "OmbrixPlatform/Text.h"

namespace ombrix::TranscriptImport {
namespace {

constexpr std::string_view boldMark = "**";
constexpr std::string_view wideColon = "：", wideOpen = "【", wideClose = "】";
constexpr std::size_t mostLinesBefore = 20;

std::string_view withoutBold(std::string_view text) {
    text = trimmedName(text);
    if (text.starts_with(boldMark)) text.remove_prefix(boldMark.size());
    if (text.ends_with(boldMark)) text.remove_suffix(boldMark.size());
    return trimmedName(text);
}

/// What follows a name, the bold marks that belong to the name removed.
std::string_view textAfterName(std::string_view text) {
    text = Text::trimmed(text);
    if (text.starts_with(boldMark)) text.remove_prefix(boldMark.size());
    return Text::trimmed(text);
}

/// "[SPEAKER_00]: text", "[SPEAKER_00] text", "**SPEAKER_00:** text". Cheap for other lines.
std::optional<TalkLine> labelledLine(std::string_view line) {
    line = stripBullet(line);
    if (line.starts_with(boldMark)) line.remove_prefix(boldMark.size());
    const bool isInBrackets = line.starts_with('[');
    if (isInBrackets) line.remove_prefix(1);
    if (!Text::startsWithIgnoringAsciiCase(line, "sp")) return std::nullopt;
    const std::size_t end = line.find(isInBrackets ? ']' : ':');
    if (end == line.npos) return std::nullopt;
    const auto label = withoutBold(line.substr(0, end));
    if (!isSpeakerLabel(label)) return std::nullopt;
    auto text = textAfterName(line.substr(end + 1));
    if (isInBrackets && text.starts_with(':')) text = textAfterName(text.substr(1));
    return TalkLine{.speaker = label, .text = text};
}

/// "SPEAKER_" of "SPEAKER_00".
std::string_view formOf(std::string_view label) {
    return label.substr(0, label.find_first_of("_-") + 1);
}

/// "SPEAKER_00" of "SPEAKER_00 00:03: text", when all labels have a clock. Bare ones may be times
/// that two people say.
void dropClocks(Talk& talk) {
    constexpr std::size_t leastBare = 3;
    std::vector<std::string_view> texts;
    std::size_t speeches = 0;
    bool areInBrackets = true;
    for (const auto& line : talk.lines) {
        if (line.speaker.empty()) continue;
        ++speeches;
        std::string_view text = line.text;
        const auto mark = takeClockMark(text);
        if (!mark) return;
        areInBrackets = areInBrackets && mark->isInBrackets;
        if (text.starts_with(':')) text.remove_prefix(1);
        texts.push_back(Text::trimmed(text));
    }
    if (!areInBrackets && speeches < leastBare) return;
    auto next = texts.begin();
    for (auto& line : talk.lines)
        if (!line.speaker.empty()) line.text = *next++;
}

/// "【田中】text".
std::optional<TalkLine> bracketedLine(std::string_view line) {
    const std::size_t close = line.find(wideClose);
    if (close == line.npos) return std::nullopt;
    const auto name = trimmedName(line.substr(wideOpen.size(), close - wideOpen.size()));
    if (!isCaselessName(name)) return std::nullopt;
    auto text = textAfterName(line.substr(close + wideClose.size()));
    for (const std::string_view colon : {std::string_view(":"), wideColon})
        if (text.starts_with(colon)) text = textAfterName(text.substr(colon.size()));
    return TalkLine{.speaker = name, .text = text};
}

/// "田中：text", "**דנה לוי:** text".
std::optional<TalkLine> caselessLine(std::string_view line) {
    line = stripBullet(line);
    if (line.starts_with(boldMark)) line.remove_prefix(boldMark.size());
    if (line.empty() || Text::isAscii(line.front())) return std::nullopt;
    if (line.starts_with(wideOpen)) return bracketedLine(line);
    const std::size_t plain = line.find(':'), wide = line.find(wideColon);
    const std::size_t end = std::min(plain, wide);
    if (end == line.npos) return std::nullopt;
    const auto name = withoutBold(line.substr(0, end));
    if (!isCaselessName(name)) return std::nullopt;
    const std::size_t width = plain < wide ? 1 : wideColon.size();
    return TalkLine{.speaker = name, .text = textAfterName(line.substr(end + width))};
}
}  // namespace

bool hasSpeakerLabel(std::string_view line) {
    const std::size_t begin = line.find_first_not_of(" \t-*>[");
    if (begin == line.npos || Text::asciiLowercased(line[begin]) != 's') return false;
    return labelledLine(Text::trimmed(line)).has_value();
}

std::optional<ParsedMeeting> readSpeakerLabels(std::string_view text) {
    constexpr std::size_t mostLinesASpeech = 8;
    Talk talk = readTalk(text, labelledLine);
    dropClocks(talk);
    const Voices voices = voicesOf(talk);
    if (voices.speeches == 0 || voices.texts == 0 || !voices.areProse()) return std::nullopt;
    const auto form = formOf(talk.lines.front().speaker);
    const bool isOfOneForm = std::ranges::all_of(talk.lines, [&](const TalkLine& line) {
        return line.speaker.empty() || formOf(line.speaker) == form;
    });
    const bool areWords = std::ranges::any_of(
        talk.lines, [](const TalkLine& line) { return Text::contains(line.text, " "); });
    if (!isOfOneForm || !areWords || talk.lines.size() > mostLinesASpeech * voices.speeches ||
        talk.linesBefore > mostLinesBefore)
        return std::nullopt;
    if (voices.speeches == 1 && talk.linesBefore > 0) return std::nullopt;
    return meetingOf(talk);
}

bool hasCaselessSpeaker(std::string_view line) { return caselessLine(line).has_value(); }

std::optional<ParsedMeeting> readCaselessSpeakers(std::string_view text) {
    constexpr std::size_t mostLinesASpeech = 4;
    const Talk talk = readTalk(text, caselessLine);
    const Voices voices = voicesOf(talk);
    if (voices.returning < 2 || voices.texts == 0 || !voices.areProse() || voices.areRecords() ||
        talk.lines.size() > mostLinesASpeech * voices.speeches ||
        talk.linesBefore > mostLinesBefore)
        return std::nullopt;
    return meetingOf(talk);
}

bool isPlainTalk(std::string_view text) {
    constexpr std::size_t mostLinesASpeech = 4, leastSpeechesALabel = 10;
    std::string unused;
    std::size_t labels = 0;
    const Talk talk = readTalk(text, [&](std::string_view line) {
        auto said = std::optional<TalkLine>();
        if (const auto speech = exportSpeechLine(line, unused)) {
            if (isNobody(speech->speaker)) ++labels;
            // The text may be in the storage; where code is concerned, the line says as much.
            said = {.speaker = speech->speaker, .text = line.substr(line.find(':') + 1)};
        }
        return said;
    });
    const Voices voices = voicesOf(talk);
    if (voices.speeches < 2 || labels * leastSpeechesALabel > voices.speeches ||
        !voices.areProse() || voices.areRecords() ||
        talk.lines.size() > mostLinesASpeech * voices.speeches ||
        talk.linesBefore > mostLinesBefore)
        return false;
    const bool areAllPersonal = voices.areAllPersonal();
    if (voices.returning > 0) return areAllPersonal || voices.returning >= 2;
    // Nobody returns in a very short talk; then it is of sentences, and nothing is beside it.
    return areAllPersonal && talk.lines.size() == voices.speeches && talk.linesBefore == 0 &&
           voices.endLikeSentences();
}
}  // namespace ombrix::TranscriptImport
