#include "OmbrixMarkdownKit/Search/TimeScopeParser.h"

#include <algorithm>
#include <array>
#include <cstddef>

#include "OmbrixMarkdownKit/Search/TimePhrases.h"
#include "OmbrixPlatform/ByteRange.h"
#include "OmbrixPlatform/Characters.h"
#include "OmbrixPlatform/Text.h"

namespace ombrix::TimeScopeParser {
namespace {

/// Every pair of double quotes, straight or typographic, with what they enclose; ascending.
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

/// `ranges` are ascending and do not meet.
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

/// What is left of a question, made to read as one: single blanks, no punctuation at the
/// beginning that led to a phrase, no blank before punctuation that followed one.
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
    for (const TimePhrases::Phrase& phrase : TimePhrases::all()) {
        if (!phrase.mayMatch(foldedQuestion)) continue;
        std::vector<ByteRange> accepted;
        for (const auto& match : phrase.regex.matches(question)) {
            if (intersectsAny(taken, match.range())) continue;
            const auto meaning = phrase.meaning({match, question, now, calendar});
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
