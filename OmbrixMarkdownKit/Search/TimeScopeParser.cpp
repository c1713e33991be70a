#include "OmbrixMarkdownKit/Search/TimeScopeParser.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <mutex>
#include <span>

#include "OmbrixPlatform/ByteRange.h"
#include "OmbrixPlatform/Characters.h"
#include "OmbrixPlatform/Numbers.h"
#include "OmbrixPlatform/Regex.h"
#include "OmbrixPlatform/Text.h"

namespace ombrix::TimeScopeParser {
namespace {

using Unit = Calendar::Unit;

// ---- what a phrase means ----------------------------------------------------------------------

/// A phrase says which days count, or how far the question looks ahead.
struct Meaning {
    AnswerScope scope{};
    std::optional<std::int64_t> horizonDays{};
};

/// What a resolver works from: the captures of a match, the clock and the calendar.
struct Context {
    const Regex::Match& match;
    std::string_view question;
    Instant now;
    const Calendar& calendar;

    bool has(std::size_t group) const { return match.has(group); }
    std::string_view captured(std::size_t group) const { return match.group(group, question); }
    /// A captured word in the one spelling that the expressions, which ignore case, take it for.
    std::string word(std::size_t group) const { return Text::caseFolded(captured(group)); }
    std::string dayString(Instant instant) const { return dateString(instant, calendar); }
    std::optional<Instant> adding(std::int64_t amount, Unit unit) const {
        return calendar.adding(amount, unit, now);
    }
};

constexpr auto spelled =
    std::to_array<std::string_view>({"one", "two", "three", "four", "five", "six", "seven", "eight",
                                     "nine", "ten", "eleven", "twelve"});

/// A captured number, in words or digits. Which words may stand where is the expressions' business.
/// Nothing for digits that are not ASCII, which the expressions let pass.
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
    return Meaning{
        .scope = {.dateFrom = context.dayString(*from), .dateTo = context.dayString(*to)}};
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

/// A whole week, month or year of the calendar, also where it lies ahead.
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

constexpr std::string_view monthAlt =
    "january|february|march|april|may|june|july|august|september|october|november|december";

/// The first day of the month captured first, in the year captured second. Without a year that
/// parses it is the month's latest beginning, today included: in March, "november" is last year's.
std::optional<Instant> monthStart(const Context& context) {
    const auto names = Text::split(monthAlt, "|");
    const auto name = std::ranges::find(names, Text::lowercased(context.captured(1)));
    if (name == names.end()) return std::nullopt;
    const std::int64_t month = name - names.begin() + 1;
    const auto current = context.calendar.day(context.now);
    std::int64_t year = current.month >= month ? current.year : current.year - 1;
    if (context.has(2))
        year = Numbers::parseInteger<std::int64_t>(context.captured(2)).value_or(year);
    return context.calendar.midnight(year, month, 1);
}

std::optional<Meaning> sinceMonth(const Context& context) {
    const auto start = monthStart(context);
    if (!start) return std::nullopt;
    return Meaning{.scope = {.dateFrom = context.dayString(*start)}};
}

std::optional<Meaning> inMonth(const Context& context) {
    const auto start = monthStart(context);
    const auto next = start ? context.calendar.adding(1, Unit::month, *start) : std::nullopt;
    if (!next) return std::nullopt;
    return window(context, start, context.calendar.adding(-1, Unit::day, *next));
}

// ---- the phrases ------------------------------------------------------------------------------

/// One kind of phrase. Its expression is compiled when a question first needs it.
struct Pattern {
    std::string regex;
    /// Alternatives; in a text that matches, its case folded, one of each stands. Searching for
    /// them costs next to nothing and leaves most questions without a regular expression.
    std::array<std::string_view, 2> cues;
    std::optional<Meaning> (*meaning)(const Context&);

    mutable std::once_flag once{};
    mutable std::optional<Regex> compiled{};

    bool mayMatch(std::string_view foldedQuestion) const {
        return std::ranges::all_of(cues, [&](std::string_view alternatives) {
            return std::ranges::any_of(Text::split(alternatives, "|"), [&](std::string_view cue) {
                return Text::contains(foldedQuestion, cue);
            });
        });
    }
    std::vector<Regex::Match> matches(std::string_view question) const {
        // ICU remembers a way back for every repetition of a bare \s and gives up when there are
        // too many, which loses this phrase and all behind it. A set repeats without that.
        std::call_once(once, [this] {
            compiled.emplace(Text::replacingAll(regex, R"(\s+)", R"([\s]+)"), Regex::Case::ignored);
        });
        return compiled->matches(question);
    }
};

/// In the order in which they may claim their words: those that look ahead first.
std::span<const Pattern> patterns() {
    static const std::string ahead = R"(\b(?:(?:over|in|for|during|within)\s+)?(?:the\s+)?)";
    static const std::string horizonNumber =
        R"((\d{1,3}|one|two|three|four|five|six|seven|eight|nine|ten|eleven|twelve))";
    static const std::string pastNumber =
        R"((\d{1,3}|two|three|four|five|six|seven|eight|nine|ten))";
    static const std::string months = "(" + std::string(monthAlt) + ")";
    static const std::string end = R"((?:['’]s)?\b)";  // lets a possessive pass
    static const Pattern all[] = {
        {ahead + R"(next\s+)" + horizonNumber + R"(\s+(days?|weeks?|months?))" + end,
         {"next", "day|week|month"},
         nextUnits},
        {ahead + R"((?:next|coming|upcoming|this\s+coming)\s+(week|month))" + end,
         {"next|coming", "week|month"},
         nextUnit},
        {R"(\b(?:by|before|until|till)\s+(?:the\s+)?end\s+of\s+(?:the\s+|this\s+)?(week|month))" +
             end,
         {"end", "week|month"},
         endOfUnit},
        {R"(\b(?:by\s+)?tomorrow)" + end, {"tomorrow", "tomorrow"}, tomorrow},

        {R"(\b(?:the\s+)?(?:last|past)\s+)" + pastNumber + R"(\s+meetings?)" + end,
         {"last|past", "meeting"},
         lastMeetings},
        {R"(\b(?:the\s+)?last\s+meeting)" + end, {"last", "meeting"}, lastMeeting},
        {R"(\b(?:last|past)\s+)" + pastNumber + R"(\s+(days?|weeks?|months?))" + end,
         {"last|past", "day|week|month"},
         lastUnits},
        {R"(\b(this|last|past)\s+(week|month|year))" + end,
         {"this|last|past", "week|month|year"},
         period},
        {R"(\byesterday)" + end, {"yesterday", "yesterday"}, yesterday},
        {R"(\btoday)" + end, {"today", "today"}, today},
        {R"(\bsince\s+(\d{4}-\d{2}-\d{2})\b)", {"since", "-"}, sinceDay},
        {R"(\bsince\s+)" + months + R"((?:\s+(\d{4}))?\b)", {"since", monthAlt}, sinceMonth},
        {R"(\bin\s+)" + months + R"((?:\s+(\d{4}))?\b)", {"in", monthAlt}, inMonth},
    };
    return all;
}

// ---- places in the question -------------------------------------------------------------------

/// Every pair of double quotes, straight or typographic, with what stands between; ascending.
std::vector<ByteRange> quotedRanges(std::string_view question) {
    std::vector<ByteRange> ranges;
    std::optional<std::size_t> open;
    for (std::size_t at = 0; at < question.size();) {
        const std::string_view rest = question.substr(at);
        const bool typographic =
            rest.starts_with("“") || rest.starts_with("”") || rest.starts_with("„");
        const std::size_t length = typographic ? std::string_view("“").size() : 1;
        if (typographic || rest.starts_with('"')) {
            if (open) ranges.push_back({*open, at + length});
            open = open ? std::nullopt : std::optional(at);
        }
        at += length;
    }
    return ranges;
}

/// `ranges` are ascending and apart from each other.
bool intersectsAny(const std::vector<ByteRange>& ranges, const ByteRange& range) {
    const auto next = std::ranges::upper_bound(ranges, range.begin, {}, &ByteRange::end);
    return next != ranges.end() && next->intersects(range);
}

void addAscending(std::vector<ByteRange>& ranges, const std::vector<ByteRange>& more) {
    const auto middle = ranges.insert(ranges.end(), more.begin(), more.end());
    std::ranges::inplace_merge(ranges, middle, {}, &ByteRange::begin);
}

std::string without(std::string_view question, const std::vector<ByteRange>& ranges) {
    std::string left;
    std::size_t place = 0;
    for (const auto& range : ranges) {
        left += question.substr(place, range.begin - place);
        place = range.end;
    }
    left += question.substr(place);
    return left;
}

bool isStrayLead(std::string_view character) {
    constexpr auto leads = std::to_array<std::string_view>({":", ";", ",", ".", "-", "–", "—"});
    return std::ranges::find(leads, character) != leads.end();
}

/// What is left of a question, made to read as one: single blanks, no punctuation that led to a
/// phrase at the beginning, no blank before punctuation that stood behind one.
std::string tidied(std::string_view left) {
    const std::string spaced = Text::flattened(left);
    std::string_view rest = spaced;
    const std::string_view first = Characters::prefix(rest, 1);
    if (isStrayLead(first)) rest = Text::trimmedSpacesAndTabs(rest.substr(first.size()));
    std::string tidy;
    for (std::size_t at = 0; at < rest.size(); ++at) {
        constexpr std::string_view closing = "?!.,;:";
        const bool stray = rest[at] == ' ' && at + 1 < rest.size() &&
                           closing.find(rest[at + 1]) != std::string_view::npos;
        if (!stray) tidy.push_back(rest[at]);
    }
    return tidy;
}
}  // namespace

std::string dateString(Instant instant, const Calendar& calendar) {
    return calendar.dayString(instant);
}

Parse parse(std::string_view question, Instant now, const Calendar& calendar) {
    Parse result{.strippedQuestion = std::string(question)};
    const std::string foldedQuestion = Text::caseFolded(question);
    std::vector<ByteRange> taken = quotedRanges(question);
    std::vector<ByteRange> phrases;
    for (const Pattern& pattern : patterns()) {
        if (!pattern.mayMatch(foldedQuestion)) continue;
        std::vector<ByteRange> accepted;
        for (const auto& match : pattern.matches(question)) {
            if (intersectsAny(taken, match.range())) continue;
            const auto meaning = pattern.meaning({match, question, now, calendar});
            if (!meaning) continue;
            result.scope = result.scope.merging(meaning->scope);
            result.horizonDays = std::max(result.horizonDays, meaning->horizonDays);
            accepted.push_back(match.range());
        }
        addAscending(taken, accepted);
        addAscending(phrases, accepted);
    }
    if (phrases.empty()) return result;
    for (const auto& phrase : phrases) result.matchedPhrases.emplace_back(phrase.of(question));
    result.strippedQuestion = tidied(without(question, phrases));
    return result;
}
}  // namespace ombrix::TimeScopeParser
