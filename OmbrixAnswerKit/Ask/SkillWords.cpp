#include "OmbrixAnswerKit/Ask/SkillWords.h"

#include <algorithm>
#include <cstddef>

#include "OmbrixMarkdownKit/Search/SpeakerIdentity.h"
#include "OmbrixPlatform/Characters.h"
#include "OmbrixPlatform/Numbers.h"
#include "OmbrixPlatform/Text.h"
#include "OmbrixPlatform/Words.h"

namespace ombrix::SkillRequestReader {
namespace {

constexpr std::string_view oneOnOne = "1:1";

constexpr auto spelled = std::to_array<std::string_view>(
    {"one", "two", "three", "four", "five", "six", "seven", "eight", "nine", "ten"});

constexpr auto articles = std::to_array<std::string_view>({"my", "the", "our", "all"});

constexpr auto quiet = std::to_array<std::string_view>({
    "my",     "the",    "our",  "all",  "of",       "on",  "for",  "with", "about", "from",
    "and",    "a",      "an",   "to",   "in",       "at",  "this", "that", "these", "those",
    "recent", "latest", "last", "past", "previous", "few", "some", "any",
});

/// How a transcript may name the user.
constexpr auto selfLabels = std::to_array<std::string_view>({"me", "you"});

constexpr auto genericLabels = std::to_array<std::string_view>(
    {"me", "you", "them", "speaker", "unknown", "someone", "guest", "host"});

template <std::size_t count>
bool holds(const std::array<std::string_view, count>& words, std::string_view lowered) {
    return std::ranges::find(words, lowered) != words.end();
}

std::string loweredLabel(std::string_view label) { return Text::lowercased(Text::trimmed(label)); }

bool isNumber(std::string_view text) {
    return !text.empty() && std::ranges::all_of(text, Text::isAsciiDigit);
}

/// True when the text at `place`, the start of a word, begins with the spelling. One that ends in a
/// digit ends there: "1:15" is no "1:1".
bool beginsWith(std::string_view text, std::size_t place, std::string_view spelling) {
    if (!text.substr(place).starts_with(spelling)) return false;
    const std::size_t end = place + spelling.size();
    return !Text::isAsciiDigit(spelling.back()) || end == text.size() ||
           !Text::isAsciiDigit(text[end]);
}
}  // namespace

std::optional<std::string_view> kindOf(std::string_view spelling) {
    const std::string folded = Text::caseFolded(spelling);
    const auto row = std::ranges::find(kindTable, folded, &KindRow::spelling);
    if (row == kindTable.end()) return std::nullopt;
    return row->kind;
}

bool isKind(std::string_view kind, std::string_view userName, const AskMeeting& meeting) {
    const std::string title = Text::lowercased(meeting.title);
    for (const ByteRange word : Words::ranges(title)) {
        for (const auto& [spelling, meant] : kindTable)
            if (meant == kind && beginsWith(title, word.begin, spelling)) return true;
    }
    return kind == oneOnOne && others(meeting.participants, userName).size() == 1;
}

std::vector<std::string> titleWords(const AskMeeting& meeting) {
    std::vector<std::string> words;
    for (const ByteRange word : Words::ranges(meeting.title))
        words.push_back(Text::lowercased(word.of(meeting.title)));
    return words;
}

std::vector<std::string> others(std::span<const std::string> participants,
                                std::string_view userName) {
    const SpeakerIdentity user(userName);
    std::vector<std::string> others;
    for (const std::string& participant : participants) {
        const std::string label = loweredLabel(participant);
        if (!label.empty() && !holds(selfLabels, label) && !user.matches(participant))
            others.push_back(participant);
    }
    return others;
}

bool isGenericLabel(std::string_view participant) {
    constexpr std::string_view numbered = "speaker ";
    const std::string label = loweredLabel(participant);
    return holds(genericLabels, label) ||
           (label.starts_with(numbered) && isNumber(label.substr(numbered.size())));
}

std::optional<std::int64_t> number(std::string_view text) {
    if (isNumber(text)) return Numbers::parseInteger<std::int64_t>(text);
    const auto word = std::ranges::find(spelled, Text::caseFolded(text));
    if (word == spelled.end()) return std::nullopt;
    return word - spelled.begin() + 1;
}

std::string_view dropPossessive(std::string_view text) {
    for (const std::string_view ending : {"'s", "’s"})
        if (text.ends_with(ending)) return text.substr(0, text.size() - ending.size());
    return text;
}

bool startsWithArticle(std::string_view text) {
    const auto words = Characters::splitAtWhiteSpace(text);
    return !words.empty() && holds(articles, Text::lowercased(words.front()));
}

bool isQuiet(std::string_view word) { return holds(quiet, Text::lowercased(word)); }

std::string orList(std::span<const std::string> words) {
    std::string list;
    for (std::size_t i = 0; i < words.size(); ++i) {
        if (i > 0) list += i + 1 == words.size() ? " or " : ", ";
        list += words[i];
    }
    return list;
}
}  // namespace ombrix::SkillRequestReader
