#include "OmbrixMemoryKit/Identity/ISODate.h"

#include <chrono>
#include <cstddef>

#include "OmbrixPlatform/Characters.h"
#include "OmbrixPlatform/Numbers.h"

namespace ombrix::ISODate {
namespace {

std::optional<int> part(std::string_view text, std::size_t at, std::size_t count) {
    const auto digits = text.substr(at, count);
    if (digits.starts_with('-')) return std::nullopt;  // it would be one more separator
    return Numbers::parseInteger<int>(digits);
}

std::chrono::sys_days lenientDay(const Components& c) {
    const std::chrono::sys_days month =
        std::chrono::year(c.year) / std::chrono::January / 1 + std::chrono::months(c.month - 1);
    return month + std::chrono::days(c.day - 1);
}

bool isOfAnotherYear(std::string_view text, std::string_view relativeTo) {
    return !relativeTo.empty() && Characters::prefix(relativeTo, 4) != text.substr(0, 4);
}
}  // namespace

std::optional<Components> parse(std::string_view text) {
    // What parses as an integer is ASCII, so characters are bytes.
    if (text.size() != 10 || text[4] != '-' || text[7] != '-') return std::nullopt;
    const auto year = part(text, 0, 4), month = part(text, 5, 2), day = part(text, 8, 2);
    if (!year || !month || !day) return std::nullopt;
    const Components components{.year = *year, .month = *month, .day = *day};
    const std::chrono::year_month_day found(lenientDay(components));
    if (static_cast<unsigned>(found.day()) != static_cast<unsigned>(*day)) return std::nullopt;
    return components;
}

bool isValid(std::string_view text) { return parse(text).has_value(); }

std::optional<Instant> date(std::string_view text) {
    const auto components = parse(text);
    if (!components) return std::nullopt;
    return Instant(lenientDay(*components));
}

std::string string(Instant date, const Calendar& calendar) { return calendar.dayString(date); }

std::optional<std::int64_t> days(std::string_view from, std::string_view to) {
    const auto first = parse(from), second = parse(to);
    if (!first || !second) return std::nullopt;
    return (lenientDay(*second) - lenientDay(*first)).count();
}

std::string monthDay(std::string_view text, std::string_view relativeTo) {
    return formatted(text, isOfAnotherYear(text, relativeTo) ? "MMM d, y" : "MMM d");
}

std::string shortDay(std::string_view text, std::string_view relativeTo) {
    return formatted(text, isOfAnotherYear(text, relativeTo) ? "EEE MMM d, yyyy" : "EEE MMM d");
}

std::string formatted(std::string_view text, std::string_view pattern) {
    const auto instant = date(text);
    return instant ? Calendar::gregorianUtc().formatted(*instant, pattern) : std::string(text);
}
}  // namespace ombrix::ISODate
