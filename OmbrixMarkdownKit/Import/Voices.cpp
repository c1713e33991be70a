#include "OmbrixMarkdownKit/Import/Voices.h"

#include <algorithm>
#include <array>
#include <unordered_map>
#include <unordered_set>
#include <vector>

#include "OmbrixMarkdownKit/Import/TalkNames.h"
#include "OmbrixPlatform/Text.h"
#include "OmbrixPlatform/Utf8.h"

namespace ombrix::TranscriptImport {
namespace {

using Speakers = std::vector<std::string_view>;

bool isAnyWord(std::string_view name) {
    return Text::isCaselessLetter(Utf8::decode(name, 0).scalar) && !isNumbered(name);
}

/// "{laughs}" is how people who transcribe write a sound.
bool isCodeLike(std::string_view text) {
    constexpr std::string_view marks = "{}=\\|_<>";
    std::size_t at = text.find_first_of(marks);
    while (at != text.npos && text[at] == '{') {
        do ++at;
        while (at < text.size() && Text::isAsciiLetter(text[at]));
        if (at == text.size() || text[at] != '}') return true;
        at = text.find_first_of(marks, at + 1);
    }
    return at != text.npos || text.ends_with(';');
}

bool endsLikeSentence(std::string_view text) {
    constexpr auto ends = std::to_array<std::string_view>(
        {".", "?", "!", "…", ".\"", "?\"", "!\"", ".”", "。", "？", "！", "।", "؟"});
    return std::ranges::any_of(ends, [&](auto end) { return text.ends_with(end); });
}

/// "yes we keep it, Tom": no numbers, paths or dotted names, as lines of logs have.
bool isPhrase(std::string_view text) {
    bool holdsBlank = false, wasMark = false;
    for (const char c : text) {
        const bool isBlank = c == ' ';
        const bool isMark = Text::contains(".,?!:;", std::string_view(&c, 1));
        const bool isOfWord = Text::isAsciiLetter(c) || !Text::isAscii(c) ||
                              Text::contains("'-()[]{}", std::string_view(&c, 1));
        if (!isBlank && !isMark && (!isOfWord || wasMark)) return false;
        holdsBlank = holdsBlank || isBlank;
        wasMark = isMark;
    }
    return holdsBlank;
}

/// How often all names came when each is that of as many speeches before; else 0.
std::size_t roundsOf(const Speakers& speakers) {
    constexpr std::size_t leastPeriod = 3;
    const auto again = std::find(speakers.begin() + 1, speakers.end(), speakers.front());
    const auto period = static_cast<std::size_t>(again - speakers.begin());
    if (period < leastPeriod || !std::equal(again, speakers.end(), speakers.begin())) return 0;
    return speakers.size() / period;
}

/// True when somebody speaks both before and from `place` on.
bool stays(const Speakers& speakers, std::size_t place) {
    const auto begin = speakers.begin() + static_cast<std::ptrdiff_t>(place);
    const std::unordered_set<std::string_view> before(speakers.begin(), begin);
    return std::any_of(begin, speakers.end(), [&](auto name) { return before.contains(name); });
}

void countNames(Voices& voices, const Speakers& speakers) {
    std::unordered_map<std::string_view, std::size_t> speeches;
    for (const auto name : speakers) {
        const std::size_t count = ++speeches[name];
        if (count == 1 && isPersonal(name)) ++voices.personal;
        if (count == 1 && isAnyWord(name)) ++voices.caseless;
        if (count == 2) ++voices.returning;
    }
    voices.speeches = speakers.size();
    voices.names = speeches.size();
    if (!speakers.empty()) voices.rounds = roundsOf(speakers);
}

void countTexts(Voices& voices, const Talk& talk) {
    for (const auto& line : talk.lines) {
        if (line.text.empty()) continue;
        ++voices.texts;
        if (isCodeLike(line.text)) ++voices.codeLike;
        if (endsLikeSentence(line.text)) ++voices.sentences;
        if (isPhrase(line.text)) ++voices.phrases;
    }
}

/// After the names and texts are counted.
void followClocks(Voices& voices, const Talk& talk, const Speakers& speakers) {
    constexpr std::int64_t fiveMinutes = 300, longestSilence = 20;
    std::optional<Clock> last;
    constexpr std::size_t leastScheduled = 3;
    std::size_t speeches = 0, midnights = 0, rising = 0, clocks = 0;
    for (const auto& line : talk.lines) {
        if (!line.speaker.empty()) ++speeches;
        if (!line.clock) continue;
        if (last && line.clock->seconds < last->seconds) {
            const std::size_t before = line.speaker.empty() ? speeches : speeches - 1;
            const bool arePeople =
                voices.areAllPersonal() || (voices.returning >= 2 && voices.endLikeSentences());
            if (midnights++ > 0 || !passesMidnight(*last, *line.clock) || !arePeople ||
                !stays(speakers, before))
                voices.clocksGoBack = true;
        }
        ++clocks;
        if (!last || line.clock->seconds > last->seconds) ++rising;
        last = line.clock;
        if (!last->isRound || last->seconds < fiveMinutes) voices.areClocksRound = false;
    }
    voices.areScheduled = voices.areClocksRound && clocks >= leastScheduled && rising == clocks;
    voices.beginsAtZero = !talk.lines.empty() && talk.lines.front().clock &&
                          talk.lines.front().clock->seconds < longestSilence;
}
}  // namespace

Voices voicesOf(const Talk& talk) {
    Speakers speakers;
    for (const auto& line : talk.lines)
        if (!line.speaker.empty()) speakers.push_back(line.speaker);
    Voices voices;
    countNames(voices, speakers);
    countTexts(voices, talk);
    followClocks(voices, talk, speakers);
    return voices;
}
}  // namespace ombrix::TranscriptImport
