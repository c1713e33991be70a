#include "OmbrixMarkdownKit/Import/ExportFacts.h"

#include <array>
#include <chrono>
#include <cstdio>

#include "OmbrixPlatform/Calendar.h"
#include "OmbrixPlatform/Numbers.h"
#include "OmbrixPlatform/Paths.h"
#include "OmbrixPlatform/Regex.h"
#include "OmbrixPlatform/Text.h"
#include "OmbrixPlatform/Utf8.h"

namespace ombrix::TranscriptImport {
namespace {

constexpr std::array<std::string_view, 12> monthBeginnings = {
    "jan", "feb", "mar", "apr", "may", "jun", "jul", "aug", "sep", "oct", "nov", "dec"};

const Regex& dayPattern() {
    static const Regex pattern(R"(\d{4}[-_]\d{2}[-_]\d{2})");
    return pattern;
}

/// Nothing for a day that does not exist and for digits of other scripts.
std::optional<std::string> dayOf(std::string_view year, unsigned month, std::string_view day) {
    const auto y = Numbers::parseInteger<int>(year);
    const auto d = Numbers::parseInteger<unsigned>(day);
    if (!y || !d) return std::nullopt;
    const std::chrono::year_month_day date{std::chrono::year(*y), std::chrono::month(month),
                                           std::chrono::day(*d)};
    if (!date.ok()) return std::nullopt;
    std::array<char, 32> text{};
    std::snprintf(text.data(), text.size(), "%04d-%02u-%02u", *y, month, *d);
    return text.data();
}

/// `text` is "YYYY?MM?DD", in bytes when its digits are ASCII.
std::optional<std::string> numeric(std::string_view text) {
    if (text.size() != 10) return std::nullopt;
    const auto month = Numbers::parseInteger<unsigned>(text.substr(5, 2));
    if (!month) return std::nullopt;
    return dayOf(text.substr(0, 4), *month, text.substr(8, 2));
}

unsigned monthNamed(std::string_view name) {
    const std::string lower = Text::lowercased(name.substr(0, 3));
    for (unsigned month = 0; month < monthBeginnings.size(); ++month)
        if (monthBeginnings[month] == lower) return month + 1;
    return 0;
}

/// A month's name or its beginning, as exports write it.
constexpr std::string_view month =
    "(jan(?:uary)?|feb(?:ruary)?|mar(?:ch)?|apr(?:il)?|may|june?|july?|aug(?:ust)?|"
    "sept?(?:ember)?|oct(?:ober)?|nov(?:ember)?|dec(?:ember)?)\\.?";

/// The first match of an expression with three groups; which of them is what differs.
std::optional<std::string> named(std::string_view text, const Regex& pattern, std::size_t day,
                                 std::size_t monthName) {
    const auto match = pattern.firstMatch(text);
    if (!match) return std::nullopt;
    return dayOf(match->group(3, text), monthNamed(match->group(monthName, text)),
                 match->group(day, text));
}
}  // namespace

std::optional<std::string> numericDay(std::string_view text) {
    const auto match = dayPattern().firstMatch(text);
    return match ? numeric(match->group(0, text)) : std::nullopt;
}

std::optional<std::string> isoDay(std::string_view text) {
    static const Regex slashes(R"(\d{4}/\d{2}/\d{2})");
    static const Regex monthFirst(
        "\\b" + std::string(month) + R"(\s+(\d{1,2})(?:st|nd|rd|th)?,?\s+(\d{4})\b)",
        Regex::Case::ignored);
    static const Regex dayFirst(
        R"(\b(\d{1,2})(?:st|nd|rd|th)?\s+)" + std::string(month) + R"(,?\s+(\d{4})\b)",
        Regex::Case::ignored);
    if (auto day = numericDay(text)) return day;
    if (const auto match = slashes.firstMatch(text)) {
        if (auto day = numeric(match->group(0, text))) return day;
    }
    if (auto day = named(text, monthFirst, 2, 1)) return day;
    return named(text, dayFirst, 1, 2);
}

std::optional<std::string> dayWithoutYear(std::string_view text,
                                          const std::optional<std::string>& reference) {
    constexpr int longestGapOfLeapDays = 8;
    static const Regex monthFirst(
        "^(?:[a-z]+,? +)?" + std::string(month) + R"( +(\d{1,2})(?:st|nd|rd|th)?$)",
        Regex::Case::ignored);
    static const Regex dayFirst(
        R"(^(?:[a-z]+,? +)?(\d{1,2})(?:st|nd|rd|th|\.)? +)" + std::string(month) + "$",
        Regex::Case::ignored);
    const auto today = reference ? parseIsoDay(*reference) : std::nullopt;
    const auto first = today ? monthFirst.firstMatch(text) : std::nullopt;
    const auto match = first || !today ? first : dayFirst.firstMatch(text);
    if (!match) return std::nullopt;
    const auto monthNumber = monthNamed(match->group(first ? 1 : 2, text));
    const auto day = match->group(first ? 2 : 1, text);
    const int latest = static_cast<int>(std::chrono::year_month_day(*today).year());
    for (int year = latest; year >= latest - longestGapOfLeapDays; --year) {
        auto found = dayOf(std::to_string(year), monthNumber, day);
        if (found && *found <= *reference) return found;
    }
    return std::nullopt;
}

std::string titleFromFilename(std::string_view name) {
    static const Regex marks("[_-]+");
    static const Regex whiteSpace(R"(\s{2,})");
    static const Regex lastWord(" (?:transcript|recording|export)$", Regex::Case::ignored);
    const auto blank = [](const Regex::Match&) { return std::string(" "); };

    std::string title = Utf8::repaired(name);
    if (const auto extension = Paths::extension(title); !extension.empty())
        title.resize(title.size() - extension.size() - 1);
    if (const auto day = dayPattern().firstMatch(title))
        title.erase(day->range().begin, day->range().size());
    title = whiteSpace.replacingAll(marks.replacingAll(title, blank), blank);
    title = Text::trimmed(title);
    if (const auto word = lastWord.firstMatch(title)) title.resize(word->range().begin);
    title = Text::trimmed(title);
    return title.empty() ? std::string(untitled) : title;
}
}  // namespace ombrix::TranscriptImport
