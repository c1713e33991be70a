#include "OmbrixMarkdownKit/Import/Clocks.h"

#include "OmbrixPlatform/Text.h"
#include "OmbrixPlatform/Utf8.h"

namespace ombrix::TranscriptImport {
namespace {

std::optional<std::int64_t> takeDigits(std::string_view& text, int least, int most) {
    std::string_view rest = text;
    std::int64_t value = 0;
    int count = 0;
    while (count < most && !rest.empty()) {
        const auto [scalar, length] = Utf8::decode(rest, 0);
        const auto digit = Text::decimalDigitValue(scalar);
        if (!digit) break;
        value = value * 10 + *digit;
        rest.remove_prefix(length);
        ++count;
    }
    if (count < least) return std::nullopt;
    text = rest;
    return value;
}

/// ":05", of minutes or seconds.
std::optional<std::int64_t> takeSixtieth(std::string_view& text) {
    constexpr std::int64_t sixty = 60;
    std::string_view rest = text;
    if (!rest.starts_with(':')) return std::nullopt;
    rest.remove_prefix(1);
    const auto value = takeDigits(rest, 2, 2);
    if (!value || *value >= sixty) return std::nullopt;
    text = rest;
    return value;
}

/// ".120" of milliseconds, or ":12" of frames.
void skipFraction(std::string_view& text) {
    constexpr int mostDigits = 6;
    if (text.empty() || !Text::contains(".,:", text.substr(0, 1))) return;
    std::string_view rest = text.substr(1);
    if (takeDigits(rest, 1, mostDigits)) text = rest;
}

constexpr std::int64_t minute = 60, hour = 3600;

enum class Half { none, morning, afternoon };

/// " AM" or "pm".
Half takeHalf(std::string_view& text) {
    const std::string_view rest = Text::trimmedBlanks(text);
    if (rest.size() < 2 || Text::asciiLowercased(rest[1]) != 'm') return Half::none;
    const char first = Text::asciiLowercased(rest[0]);
    if (first != 'a' && first != 'p') return Half::none;
    if (rest.size() > 2 && Text::isAsciiAlphanumeric(rest[2])) return Half::none;
    text = text.substr(static_cast<std::size_t>(rest.data() - text.data()) + 2);
    return first == 'a' ? Half::morning : Half::afternoon;
}

bool goesOn(std::string_view text) {
    return !text.empty() && Text::isAlphanumeric(Utf8::decode(text, 0).scalar);
}
}  // namespace

std::optional<Clock> takeClock(std::string_view& text) {
    constexpr std::int64_t fiveMinutes = 5, halfADay = 12;
    std::string_view rest = text;
    const auto first = takeDigits(rest, 1, 3);
    const auto second = first ? takeSixtieth(rest) : std::nullopt;
    if (!second) return std::nullopt;
    const auto third = takeSixtieth(rest);
    skipFraction(rest);
    const Half half = *first <= halfADay ? takeHalf(rest) : Half::none;
    if (goesOn(rest)) return std::nullopt;
    text = rest;
    Clock clock{.isRound = *second % fiveMinutes == 0 && third.value_or(0) == 0,
                .hasSeconds = third.has_value(),
                .hasHalf = half != Half::none};
    if (half != Half::none) {
        const auto hours = *first % halfADay + (half == Half::afternoon ? halfADay : 0);
        clock.seconds = hours * hour + *second * minute + third.value_or(0);
    } else if (third) {
        clock.seconds = *first * hour + *second * minute + *third;
    } else {
        clock.seconds = *first * minute + *second;
    }
    return clock;
}

bool passesMidnight(const Clock& last, const Clock& next) {
    constexpr std::int64_t hours = 24;
    if (last.hasSeconds != next.hasSeconds || last.hasHalf != next.hasHalf) return false;
    // Of two parts, hours are read as minutes.
    const std::int64_t first = last.hasSeconds || last.hasHalf ? hour : minute;
    return last.seconds >= (hours - 1) * first && last.seconds < hours * first &&
           next.seconds < first;
}
}  // namespace ombrix::TranscriptImport
