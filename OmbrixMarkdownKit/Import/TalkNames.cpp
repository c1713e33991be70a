#include "OmbrixMarkdownKit/Import/TalkNames.h"

#include <algorithm>
#include <array>
#include <string>

#include "OmbrixMarkdownKit/Import/SpeakerLines.h"
#include "OmbrixPlatform/Characters.h"
#include "OmbrixPlatform/Text.h"
#include "OmbrixPlatform/Utf8.h"
#include "OmbrixPlatform/WordSet.h"
#include "embedded/OmbrixMarkdownKit/import/nobodysNames.txt.h"

namespace ombrix::TranscriptImport {
namespace {

constexpr std::size_t mostWords = 4;
constexpr std::size_t mostCharacters = 48;
constexpr std::size_t mostCharactersInAWord = 20;
constexpr std::size_t bytesACharacter = 16;  // more is no name, and need not be counted

/// Labels that documents, logs and schedules put before a colon or a clock; a paragraph for each
/// kind, then one for each group of scripts.
constexpr auto documentWords = wordSetOf<337>(Embedded::OmbrixMarkdownKit::importNobodysNamesTxt);

/// With a number they are labels of voices: "참석자 1" (attendee 1).
constexpr auto attendees =
    wordSet({"participants", "참석자", "参加者", "出席者", "与会者", "參加者", "與會者"});

constexpr auto particles = wordSet({"af",  "al",  "av",  "bin", "bint", "da", "de", "del", "della",
                                    "den", "der", "di",  "do",  "dos",  "du", "el", "ibn", "la",
                                    "le",  "ten", "ter", "van", "von",  "y",  "zu", "zur"});

bool isDirectionMark(char32_t scalar) {
    return scalar == 0x200E || scalar == 0x200F || scalar == 0x061C || scalar == 0xFEFF ||
           (scalar >= 0x202A && scalar <= 0x202E) || (scalar >= 0x2066 && scalar <= 0x2069);
}

bool isAround(char32_t scalar) { return Text::isWhiteSpace(scalar) || isDirectionMark(scalar); }

/// What stands inside words of names: apostrophes, dots of abbreviations, joiners.
bool isInsideWord(char32_t scalar) {
    constexpr auto marks = std::to_array<char32_t>(
        {'-', '\'', '.', 0x2019, 0x00B7, 0x05F3, 0x05F4, 0x200C, 0x200D, 0x30FB, 0xFF65});
    return std::ranges::find(marks, scalar) != marks.end();
}

template <typename Holds>
bool allScalars(std::string_view text, Holds holds) {
    for (std::size_t at = 0; at < text.size();) {
        const auto [scalar, length] = Utf8::decode(text, at);
        if (!holds(scalar)) return false;
        at += length;
    }
    return true;
}

bool isWord(std::string_view word) {
    return allScalars(word, [](char32_t scalar) {
        return Text::isLetter(scalar) || Text::isCaselessLetter(scalar) || isInsideWord(scalar);
    });
}

bool isCaselessWord(std::string_view word) {
    return Text::isCaselessLetter(Utf8::decode(word, 0).scalar) && isWord(word);
}

/// What is left of "Speaker 2" and "発言者2" without the number; empty for names without one.
std::string_view withoutNumber(std::string_view name) {
    std::size_t end = name.size();
    while (end > 0) {
        const std::size_t last = Utf8::scalarStartBefore(name, end);
        if (!Text::isDecimalDigit(Utf8::decode(name, last).scalar)) break;
        end = last;
    }
    return end == name.size() ? std::string_view() : trimmedName(name.substr(0, end));
}

/// "甲说：" tells what somebody said, in a novel or in an exercise.
bool endsInSaying(std::string_view name) {
    constexpr auto verbs = std::to_array<std::string_view>(
        {"说", "說", "曰", "问", "問", "说道", "說道", "问道", "問道", "答道", "笑道", "喊道"});
    return std::ranges::any_of(verbs, [&](auto verb) { return name.ends_with(verb); });
}

/// A word of a name beside a clock; "発言者2" has its number at the end.
bool isNameWord(std::string_view word) {
    if (isNameShaped(word)) return true;
    return Text::isCaselessLetter(Utf8::decode(word, 0).scalar) &&
           allScalars(word, [](char32_t scalar) {
               return Text::isLetterOrNumber(scalar) || Text::isCaselessLetter(scalar) ||
                      isInsideWord(scalar);
           });
}

bool isTooLong(std::string_view name) {
    return name.size() > mostCharacters * bytesACharacter ||
           (name.size() > mostCharacters && Characters::hasAtLeast(name, mostCharacters + 1));
}

/// The words between blanks; none when there are more than names have.
struct NameWords {
    std::array<std::string_view, mostWords> words;
    std::size_t count = 0;

    explicit NameWords(std::string_view name) {
        while (!name.empty()) {
            const std::size_t end = std::min(name.find(' '), name.size());
            if (end > 0) {
                if (count == mostWords) {
                    count = 0;
                    return;
                }
                words[count++] = name.substr(0, end);
            }
            name.remove_prefix(std::min(end + 1, name.size()));
        }
    }
    auto begin() const { return words.begin(); }
    auto end() const { return words.begin() + static_cast<std::ptrdiff_t>(count); }
};
}  // namespace

std::string_view trimmedName(std::string_view name) {
    while (!name.empty()) {
        const auto [scalar, length] = Utf8::decode(name, 0);
        if (!isAround(scalar)) break;
        name.remove_prefix(length);
    }
    while (!name.empty()) {
        const std::size_t last = Utf8::scalarStartBefore(name, name.size());
        if (!isAround(Utf8::decode(name, last).scalar)) break;
        name = name.substr(0, last);
    }
    return name;
}

bool isTalkName(std::string_view name) {
    if (name.empty() || isTooLong(name)) return false;
    if (isSpeakerLabel(name)) return true;
    const NameWords words(name);
    if (words.count == 0 || !isNameWord(words.words.front())) return false;
    // "Người nói 1", "Persona desconocida 2": a number makes a label of words without capitals.
    const bool isLabel = isNumbered(name);
    const bool areWords = std::ranges::all_of(words, [&](auto word) {
        return isNameWord(word) || particles.contains(word) || (isLabel && isWord(word));
    });
    const bool holdsLetter = !allScalars(name, [](char32_t s) { return !Text::isLetter(s); });
    return areWords && holdsLetter && !isNobody(name);
}

bool isNumbered(std::string_view name) { return !withoutNumber(name).empty(); }

bool isCaselessName(std::string_view name) {
    if (name.empty() || Text::isAscii(name.front()) || isTooLong(name)) return false;
    const auto stem = withoutNumber(name);
    const NameWords words(stem.empty() ? name : stem);
    if (words.count == 0 || !std::ranges::all_of(words, isCaselessWord)) return false;
    if (words.count == 1 && Characters::hasAtLeast(name, mostCharactersInAWord + 1)) return false;
    return !isNobody(name) && !endsInSaying(name);
}

bool isSpeakerLabel(std::string_view name) {
    constexpr auto beginnings = std::to_array<std::string_view>({"speaker", "spk", "spkr"});
    constexpr std::size_t mostDigits = 3;
    const std::size_t mark = name.find_first_of("_-");
    if (mark == name.npos || mark > beginnings.front().size()) return false;
    const auto number = name.substr(mark + 1);
    const bool isLabel = std::ranges::any_of(beginnings, [&](auto word) {
        return word.size() == mark && Text::startsWithIgnoringAsciiCase(name, word);
    });
    if (!isLabel || number.empty()) return false;
    if (number == "UNKNOWN" || (number.size() == 1 && number[0] >= 'A' && number[0] <= 'Z'))
        return true;
    return number.size() <= mostDigits && std::ranges::all_of(number, Text::isAsciiDigit);
}

bool isPersonal(std::string_view name) {
    if (isSpeakerLabel(name) || normalizeSpeaker(name) == "Me" || name == "Them") return true;
    if (!Text::isAscii(name.front()) && Text::isCaselessLetter(Utf8::decode(name, 0).scalar))
        return true;
    const NameWords words(name);  // "Mail Server" is no person's
    return words.count >= 2 && !isNobody(words.words[words.count - 1]);
}

bool isNobody(std::string_view name) {
    const std::string lower = Text::lowercased(name);
    if (documentWords.contains(lower) || isSectionWord(name) || lower == "see also") return true;
    const auto stem = withoutNumber(lower);
    if (attendees.contains(stem)) return false;
    return documentWords.contains(stem) || isSectionWord(stem);
}
}  // namespace ombrix::TranscriptImport
