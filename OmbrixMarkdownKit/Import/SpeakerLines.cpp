#include "OmbrixMarkdownKit/Import/SpeakerLines.h"

#include <algorithm>
#include <array>
#include <utility>

#include "OmbrixPlatform/Characters.h"
#include "OmbrixPlatform/Text.h"
#include "OmbrixPlatform/Utf8.h"
#include "OmbrixPlatform/WordSet.h"

namespace ombrix::TranscriptImport {
namespace {

constexpr std::size_t mostWords = 4;
constexpr std::size_t mostCharacters = 48;
constexpr std::string_view boldMark = "**";
constexpr std::string_view boldNameEnd = ":**";

constexpr auto transcriptSectionWords =
    wordSet({// parts of an export
             "transcript", "notes", "note", "summary", "overview", "highlights", "chapters",
             "recording", "action items", "key moments", "key takeaways", "next steps", "decisions",
             "questions", "agenda", "ai-generated notes", "ai generated notes", "my notes",
             "ai summaries", "meeting notes",
             // facts about the meeting
             "title", "date", "duration", "attendees", "participants", "meeting id",
             // addresses
             "http", "https"});

/// By byte: true for what a plausible name does not hold.
constexpr auto isForbidden = [] {
    std::array<bool, 256> table{};
    table[0] = true;
    for (const char c : std::string_view(".!?,;\"'()[]{}<>/\\|@"))
        table[static_cast<unsigned char>(c)] = true;
    return table;
}();

std::size_t wordCount(std::string_view name) {
    std::size_t count = 0;
    for (std::size_t at = 0; at < name.size(); ++at)
        if (name[at] != ' ' && (at == 0 || name[at - 1] == ' ')) ++count;
    return count;
}

/// True when `holds` of the first scalar of a character.
template <typename Holds>
bool anyCharacter(std::string_view text, Holds holds) {
    Characters::Cursor characters(text);
    for (std::size_t at = 0; at < text.size(); at = characters.after(at))
        if (holds(Utf8::decode(text, at).scalar)) return true;
    return false;
}

/// True when a character of the text begins with a letter. One in ASCII, after another byte of
/// ASCII or none, always begins one; only for other texts the characters are looked for.
bool holdsLetter(std::string_view text) {
    for (std::size_t at = 0; at < text.size(); ++at)
        if (Text::isAsciiLetter(text[at]) && (at == 0 || Text::isAscii(text[at - 1]))) return true;
    return anyCharacter(text, Text::isLetter);
}

bool belongsInName(char32_t scalar) {
    constexpr char32_t curlyApostrophe = 0x2019;
    return Text::isLetterOrNumber(scalar) || scalar == '-' || scalar == '\'' || scalar == '.' ||
           scalar == curlyApostrophe;
}

/// "[MIC] 00:12 text", as of the microphone or of what the machine played.
std::optional<SpeechLine> channelLine(std::string_view line) {
    constexpr auto channels = std::to_array<std::pair<std::string_view, std::string_view>>(
        {{"[MIC]", "Me"}, {"[SYS]", "Them"}});
    for (const auto& [mark, speaker] : channels) {
        if (!line.starts_with(mark)) continue;
        const auto rest = withoutLeadingClock(Text::trimmed(line.substr(mark.size())));
        return SpeechLine{speaker, Text::trimmed(rest)};
    }
    return std::nullopt;
}
}  // namespace

std::string_view normalizeSpeaker(std::string_view name) {
    constexpr auto oneself = std::to_array<std::string_view>({"me", "you", "self", "myself"});
    constexpr std::size_t longest = 12;  // in bytes, with a long "s" for each "s"
    name = Text::trimmed(name);
    const bool isMe = name.size() <= longest && std::ranges::any_of(oneself, [&](auto word) {
                          return Text::equalsIgnoringCase(name, word);
                      });
    return isMe ? "Me" : name;
}

bool isPlausibleName(std::string_view name) {
    if (name.empty()) return false;
    if (name.size() > mostCharacters && Characters::hasAtLeast(name, mostCharacters + 1))
        return false;
    const bool holdsForbidden = std::ranges::any_of(
        name, [](char c) { return isForbidden[static_cast<unsigned char>(c)]; });
    if (holdsForbidden || Text::contains(name, "  ")) return false;
    const std::size_t words = wordCount(name);
    return words >= 1 && words <= mostWords && holdsLetter(name);
}

bool isNameShaped(std::string_view name) {
    const std::size_t words = wordCount(name);
    if (words < 1 || words > mostWords) return false;
    bool startsWord = true;
    return !anyCharacter(name, [&](char32_t scalar) {
        if (scalar == ' ') {
            startsWord = true;
            return false;
        }
        const bool fits = std::exchange(startsWord, false)
                              ? Text::isUppercase(scalar) || Text::isNumber(scalar)
                              : belongsInName(scalar);
        return !fits;
    });
}

bool isSectionWord(std::string_view label) {
    return transcriptSectionWords.contains(Text::lowercased(label));
}

std::string_view stripBullet(std::string_view line) {
    constexpr auto marks = std::to_array<std::string_view>({"- ", "* ", "> "});
    for (const auto mark : marks)
        if (line.starts_with(mark)) return Text::trimmed(line.substr(mark.size()));
    return Text::trimmed(line);
}

std::optional<SpeechLine> inlineSpeaker(std::string_view line, std::string& storage) {
    const std::size_t colon = line.find(':');
    if (colon == line.npos) return std::nullopt;
    const auto name = Text::trimmed(line.substr(0, colon));
    if (!isPlausibleName(name) || isSectionWord(name)) return std::nullopt;
    const auto text = Text::trimmed(stripTags(line.substr(colon + 1), storage));
    if (text.empty()) return std::nullopt;
    return SpeechLine{normalizeSpeaker(name), text};
}

std::optional<SpeechLine> markdownSpeakerLine(std::string_view line, std::string& storage) {
    if (!line.starts_with(boldMark)) return std::nullopt;
    const std::size_t close = line.find(boldNameEnd, boldMark.size());
    if (close == line.npos) return inlineSpeaker(line, storage);
    const auto name = Text::trimmed(line.substr(boldMark.size(), close - boldMark.size()));
    if (!isPlausibleName(name)) return std::nullopt;
    return SpeechLine{name, Text::trimmed(line.substr(close + boldNameEnd.size()))};
}

std::optional<SpeechLine> exportSpeechLine(std::string_view line, std::string& storage) {
    if (const auto speech = channelLine(line)) return speech;
    line = stripBullet(line);
    if (line.starts_with(boldMark)) return markdownSpeakerLine(line, storage);
    const auto speech = timedSpeech(line);
    if (!speech) return std::nullopt;
    const auto name = Text::trimmed(speech->speaker);
    if (!isNameShaped(name) || isSectionWord(name)) return std::nullopt;
    return SpeechLine{normalizeSpeaker(name), Text::trimmed(stripTags(speech->text, storage))};
}
}  // namespace ombrix::TranscriptImport
