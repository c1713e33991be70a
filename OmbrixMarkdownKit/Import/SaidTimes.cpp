#include "OmbrixMarkdownKit/Import/SaidTimes.h"

#include <algorithm>
#include <array>
#include <ranges>

#include "OmbrixMarkdownKit/Import/SpeakerLines.h"

namespace ombrix::TranscriptImport {
namespace {

void giveBack(TalkLine& line) { line = {.text = stripBullet(line.line), .line = line.line}; }

/// How a clock is written, as a number below 4.
std::size_t looksOf(const TalkLine& line) {
    return (line.isInBrackets ? 2U : 0U) + (line.clock->hasHalf ? 1U : 0U);
}

void giveBackOddOnes(Talk& talk) {
    constexpr std::size_t leastShare = 4;  // more is a way to write speakers' lines, too
    std::array<std::size_t, 4> counts{};
    std::size_t speeches = 0;
    for (const auto& line : talk.lines) {
        if (line.speaker.empty() || !line.clock) continue;
        ++counts[looksOf(line)];
        ++speeches;
    }
    const auto most = std::ranges::max_element(counts);
    const auto usual = static_cast<std::size_t>(most - counts.begin());
    const bool areFew = (speeches - *most) * leastShare <= speeches;
    for (auto& line : talk.lines) {
        if (!line.clock || looksOf(line) == usual) continue;
        const bool isSaid = line.speaker.empty() ? !line.text.empty() : areFew;
        if (isSaid) giveBack(line);
    }
}

bool isOfNobody(const TalkLine& line) {
    return line.clock && line.speaker.empty() && !line.isInBrackets;
}

bool isBefore(const std::optional<Clock>& last, const std::optional<Clock>& next) {
    return !last || !next || last->seconds <= next->seconds || passesMidnight(*last, *next);
}

void giveBackDisorderly(Talk& talk) {
    std::optional<Clock> next, last;
    for (auto& line : std::views::reverse(talk.lines)) {
        if (isOfNobody(line) && !isBefore(line.clock, next)) giveBack(line);
        if (line.clock && !line.speaker.empty()) next = line.clock;
    }
    for (auto& line : talk.lines) {
        if (isOfNobody(line) && !isBefore(last, line.clock)) giveBack(line);
        if (line.clock) last = line.clock;
    }
}
}  // namespace

void giveBackSaidTimes(Talk& talk) {
    giveBackOddOnes(talk);
    giveBackDisorderly(talk);
    const auto first = std::ranges::find_if(
        talk.lines, [](const TalkLine& line) { return !line.speaker.empty(); });
    talk.linesBefore += static_cast<std::size_t>(first - talk.lines.begin());
    talk.lines.erase(talk.lines.begin(), first);
}
}  // namespace ombrix::TranscriptImport
