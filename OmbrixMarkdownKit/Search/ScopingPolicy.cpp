#include "OmbrixMarkdownKit/Search/ScopingPolicy.h"

#include <algorithm>
#include <utility>

#include "OmbrixMarkdownKit/Search/TimeScopeParser.h"

namespace ombrix::ScopingPolicy {
namespace {

constexpr std::int64_t shortestHorizon = 7;
constexpr std::int64_t longestHorizon = 30;
constexpr std::int64_t daysWithoutHorizon = 14;

std::string wideningNote(std::int64_t step, std::int64_t scannedCount, std::int64_t days) {
    const std::string meetings =
        scannedCount == 1 ? "1 meeting" : std::to_string(scannedCount) + " meetings";
    return "Widened to " + std::to_string(step) + " days — only " + meetings + " in the last " +
           std::to_string(days);
}
}  // namespace

AnswerScope Window::scope() const { return {.dateFrom = from, .dateTo = to}; }

Window window(std::optional<std::int64_t> horizonDays, Instant now, const Calendar& calendar) {
    const std::int64_t days = horizonDays
                                  ? std::clamp(*horizonDays, shortestHorizon, longestHorizon)
                                  : daysWithoutHorizon;
    return window(days, now, calendar, std::nullopt, std::nullopt);
}

Window window(std::int64_t days, Instant now, const Calendar& calendar,
              std::optional<std::int64_t> widenedFrom, std::optional<std::string> note) {
    const std::int64_t length = std::max<std::int64_t>(days, 1);
    const Instant first = calendar.adding(1 - length, Calendar::Unit::day, now).value_or(now);
    return {.from = TimeScopeParser::dateString(first, calendar),
            .to = TimeScopeParser::dateString(now, calendar),
            .days = length,
            .widenedFrom = widenedFrom,
            .note = std::move(note)};
}

std::optional<Window> widen(const Window& thin, std::int64_t scannedCount, std::int64_t thinBelow,
                            std::span<const std::int64_t> steps, Instant now,
                            const Calendar& calendar) {
    if (scannedCount >= thinBelow) return std::nullopt;
    std::optional<std::int64_t> next;
    for (const std::int64_t step : steps)
        if (step > thin.days && (!next || step < *next)) next = step;
    if (!next) return std::nullopt;
    return window(*next, now, calendar, thin.widenedFrom.value_or(thin.days),
                  wideningNote(*next, scannedCount, thin.days));
}
}  // namespace ombrix::ScopingPolicy
