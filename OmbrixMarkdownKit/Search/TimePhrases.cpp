#include "OmbrixMarkdownKit/Search/TimePhrases.h"

#include <algorithm>
#include <array>

#include "OmbrixPlatform/Numbers.h"
#include "OmbrixPlatform/Text.h"

namespace ombrix::TimePhrases {
namespace {

using Unit = Calendar::Unit;

constexpr auto spelled =
    std::to_array<std::string_view>({"one", "two", "three", "four", "five", "six", "seven", "eight",
                                     "nine", "ten", "eleven", "twelve"});

constexpr auto monthNames =
    std::to_array<std::string_view>({"january", "february", "march", "april", "may", "june", "july",
                                     "august", "september", "october", "november", "december"});

/// A captured number, in words or digits. Which words are allowed where is up to the expressions.
/// Nothing for digits that are not ASCII, which the expressions allow.
std::optional<std::int64_t> number(const Context& context, std::size_t group) {
    const std::string token = Text::lowercased(context.captured(group));
    const auto word = std::ranges::find(spelled, token);
    if (word != spelled.end()) return word - spelled.begin() + 1;
    return Numbers::parseInteger<std::int64_t>(token);
}

Unit unitOf(std::string_view word) {
    if (word.starts_with("day")) return Unit::day;
    if (word.starts_with("week")) return Unit::weekOfYear;
    return word.starts_with("month") ? Unit::month : Unit::year;
}

// ---- phrases that look ahead ------------------------------------------------------------------

std::optional<Meaning> daysAhead(const Context& context, std::optional<Instant> date) {
    if (!date) return std::nullopt;
    const std::int64_t days = context.calendar.daysBetween(context.now, *date);
    return Meaning{.horizonDays = std::max<std::int64_t>(days, 1)};
}

std::optional<Meaning> nextUnits(const Context& context) {
    const auto amount = number(context, 1);
    if (!amount) return std::nullopt;
    switch (const Unit unit = unitOf(context.word(2)); unit) {
        case Unit::day:
            return Meaning{.horizonDays = *amount};
        case Unit::weekOfYear:
            return Meaning{.horizonDays = *amount * 7};
        default:
            return daysAhead(context, context.adding(*amount, unit));
    }
}

std::optional<Meaning> nextUnit(const Context& context) {
    const Unit unit = unitOf(context.word(1));
    if (unit == Unit::weekOfYear) return Meaning{.horizonDays = 7};
    return daysAhead(context, context.adding(1, unit));
}

std::optional<Meaning> endOfUnit(const Context& context) {
    const auto interval = context.calendar.interval(unitOf(context.word(1)), context.now);
    if (!interval) return std::nullopt;
    return daysAhead(context, context.calendar.adding(-1, Unit::day, interval->end));
}

std::optional<Meaning> tomorrow(const Context&) { return Meaning{.horizonDays = 1}; }

// ---- phrases that look back -------------------------------------------------------------------

std::optional<Meaning> window(const Context& context, std::optional<Instant> from,
                              std::optional<Instant> to) {
    if (!from || !to) return std::nullopt;
    return Meaning{.scope = {.dateFrom = context.calendar.dayString(*from),
                             .dateTo = context.calendar.dayString(*to)}};
}

std::optional<Meaning> lastMeetings(const Context& context) {
    const auto amount = number(context, 1);
    if (!amount) return std::nullopt;
    return Meaning{.scope = {.lastN = *amount}};
}

std::optional<Meaning> lastMeeting(const Context&) { return Meaning{.scope = {.lastN = 1}}; }

/// A rolling window that ends today, today being its last day: "last 1 days" is today alone.
std::optional<Meaning> lastUnits(const Context& context) {
    const auto amount = number(context, 1);
    if (!amount) return std::nullopt;
    const Unit unit = unitOf(context.word(2));
    if (unit != Unit::month) {
        const std::int64_t days = unit == Unit::day ? *amount : *amount * 7;
        return window(context, context.adding(1 - days, Unit::day), context.now);
    }
    const auto before = context.adding(-*amount, unit);
    if (!before) return std::nullopt;
    return window(context, context.calendar.adding(1, Unit::day, *before), context.now);
}

/// A whole week, month or year of the calendar, also when it is ahead.
std::optional<Meaning> period(const Context& context) {
    const Unit unit = unitOf(context.word(2));
    auto interval = context.calendar.interval(unit, context.now);
    if (interval && context.word(1) != "this") {
        const auto before = context.calendar.adding(-1, unit, interval->start);
        interval = before ? context.calendar.interval(unit, *before) : std::nullopt;
    }
    if (!interval) return std::nullopt;
    return window(context, interval->start, context.calendar.adding(-1, Unit::day, interval->end));
}

std::optional<Meaning> yesterday(const Context& context) {
    const auto day = context.adding(-1, Unit::day);
    return window(context, day, day);
}

std::optional<Meaning> today(const Context& context) {
    return window(context, context.now, context.now);
}

std::optional<Meaning> sinceDay(const Context& context) {
    return Meaning{.scope = {.dateFrom = std::string(context.captured(1))}};
}

/// The first day of the month captured first, in the year captured second. Without a year that
/// parses it is the last time the month began, today included: in March, "november" is last year's.
std::optional<Instant> monthStart(const Context& context) {
    const auto name = std::ranges::find(monthNames, Text::lowercased(context.captured(1)));
    if (name == monthNames.end()) return std::nullopt;
    const std::int64_t month = name - monthNames.begin() + 1;
    const auto current = context.calendar.day(context.now);
    std::int64_t year = current.month >= month ? current.year : current.year - 1;
    if (context.has(2))
        year = Numbers::parseInteger<std::int64_t>(context.captured(2)).value_or(year);
    return context.calendar.midnight(year, month, 1);
}

std::optional<Meaning> sinceMonth(const Context& context) {
    const auto start = monthStart(context);
    if (!start) return std::nullopt;
    return Meaning{.scope = {.dateFrom = context.calendar.dayString(*start)}};
}

std::optional<Meaning> inMonth(const Context& context) {
    const auto start = monthStart(context);
    const auto next = start ? context.calendar.adding(1, Unit::month, *start) : std::nullopt;
    if (!next) return std::nullopt;
    return window(context, start, context.calendar.adding(-1, Unit::day, *next));
}

// ---- the table --------------------------------------------------------------------------------

std::vector<Phrase> phrases() {
    const std::string ahead = R"(\b(?:(?:over|in|for|during|within)\s+)?(?:the\s+)?)";
    const std::string horizonNumber =
        R"((\d{1,3}|one|two|three|four|five|six|seven|eight|nine|ten|eleven|twelve))";
    const std::string pastNumber = R"((\d{1,3}|two|three|four|five|six|seven|eight|nine|ten))";
    const std::vector<std::string_view> months(monthNames.begin(), monthNames.end());
    const std::string month = "(" + Text::joined(months, "|") + R"()(?:\s+(\d{4}))?\b)";
    const std::string end = R"((?:['’]s)?\b)";  // allows a possessive
    std::vector<Phrase> all;
    const auto add = [&](const std::string& regex, std::vector<std::vector<std::string_view>> cues,
                         std::optional<Meaning> (*meaning)(const Context&)) {
        all.push_back({Regex(regex, Regex::Case::ignored), std::move(cues), meaning});
    };
    add(ahead + R"(next\s+)" + horizonNumber + R"(\s+(days?|weeks?|months?))" + end,
        {{"next"}, {"day", "week", "month"}}, nextUnits);
    add(ahead + R"((?:next|coming|upcoming|this\s+coming)\s+(week|month))" + end,
        {{"next", "coming"}, {"week", "month"}}, nextUnit);
    add(R"(\b(?:by|before|until|till)\s+(?:the\s+)?end\s+of\s+(?:the\s+|this\s+)?(week|month))" +
            end,
        {{"end"}, {"week", "month"}}, endOfUnit);
    add(R"(\b(?:by\s+)?tomorrow)" + end, {{"tomorrow"}}, tomorrow);

    add(R"(\b(?:the\s+)?(?:last|past)\s+)" + pastNumber + R"(\s+meetings?)" + end,
        {{"last", "past"}, {"meeting"}}, lastMeetings);
    add(R"(\b(?:the\s+)?last\s+meeting)" + end, {{"last"}, {"meeting"}}, lastMeeting);
    add(R"(\b(?:last|past)\s+)" + pastNumber + R"(\s+(days?|weeks?|months?))" + end,
        {{"last", "past"}, {"day", "week", "month"}}, lastUnits);
    add(R"(\b(this|last|past)\s+(week|month|year))" + end,
        {{"this", "last", "past"}, {"week", "month", "year"}}, period);
    add(R"(\byesterday)" + end, {{"yesterday"}}, yesterday);
    add(R"(\btoday)" + end, {{"today"}}, today);
    add(R"(\bsince\s+(\d{4}-\d{2}-\d{2})\b)", {{"since"}, {"-"}}, sinceDay);
    add(R"(\bsince\s+)" + month, {{"since"}, months}, sinceMonth);
    add(R"(\bin\s+)" + month, {{"in"}, months}, inMonth);
    return all;
}
}  // namespace

std::string Context::word(std::size_t group) const { return Text::caseFolded(captured(group)); }

bool Phrase::mayMatch(std::string_view foldedQuestion) const {
    return std::ranges::all_of(cues, [&](const auto& alternatives) {
        return std::ranges::any_of(alternatives, [&](std::string_view cue) {
            return Text::contains(foldedQuestion, cue);
        });
    });
}

std::span<const Phrase> all() {
    static const std::vector<Phrase> table = phrases();
    return table;
}
}  // namespace ombrix::TimePhrases
