#include "OmbrixAnswerKit/Shape/StructuredAnswer.h"

#include <utility>

#include "OmbrixAnswerKit/Shape/ListItem.h"
#include "OmbrixPlatform/LineCursor.h"
#include "OmbrixPlatform/Text.h"

namespace ombrix::StructuredAnswerParser {
namespace {

constexpr std::string_view separator = " — ";
constexpr std::string_view nothingFound = "(none)";

std::string_view headingOf(AnswerShape shape) {
    return shape == AnswerShape::timeline ? "## Timeline" : "## Commitments";
}

/// The numbers of all "[n]" and "[nn]".
std::vector<std::int64_t> bracketNumbers(std::string_view line) {
    std::vector<std::int64_t> numbers;
    for (auto open = line.find('['); open != line.npos; open = line.find('[', open + 1)) {
        std::size_t place = open + 1;
        std::int64_t number = 0;
        for (; place < line.size() && place <= open + 2 && Text::isAsciiDigit(line[place]); ++place)
            number = number * 10 + (line[place] - '0');
        if (place > open + 1 && place < line.size() && line[place] == ']')
            numbers.push_back(number);
    }
    return numbers;
}

/// The form "YYYY-MM-DD"; whether there is such a day does not matter.
bool hasFormOfDay(std::string_view text) {
    if (text.size() != 10) return false;
    for (std::size_t place = 0; place < text.size(); ++place) {
        const bool hyphen = place == 4 || place == 7;
        if (hyphen ? text[place] != '-' : !Text::isAsciiDigit(text[place])) return false;
    }
    return true;
}

/// Takes the date off an entry of a timeline; false when `left` is no date.
bool readDate(std::string_view left, StructuredAnswer::Item& item) {
    if (Text::equalsIgnoringCase(left, "undated")) return true;
    if (!hasFormOfDay(left)) return false;
    item.date = left;
    return true;
}

/// Takes the owner off a commitment; false when `left` can be no owner.
bool readOwner(std::string_view left, StructuredAnswer::Item& item) {
    if (Text::equalsIgnoringCase(left, "unowned")) return true;
    if (!ListItem::canBeOwner(left)) return false;
    item.owner = left;
    return true;
}

/// The item of a line whose bullet is already removed.
StructuredAnswer::Item item(std::string_view line, AnswerShape shape) {
    StructuredAnswer::Item result{.text = std::string(line),
                                  .citationIndices = bracketNumbers(line)};
    const auto dash = line.find(separator);
    if (dash == line.npos) return result;
    const auto left = Text::trimmedBlanks(line.substr(0, dash));
    const auto right = Text::trimmedBlanks(line.substr(dash + separator.size()));
    const bool split =
        shape == AnswerShape::timeline ? readDate(left, result) : readOwner(left, result);
    if (split) result.text = right;
    return result;
}

/// The items of the remaining lines.
std::vector<StructuredAnswer::Item> items(LineCursor& lines, AnswerShape shape) {
    std::vector<StructuredAnswer::Item> result;
    while (const auto line = lines.next()) {
        const auto text = Text::trimmedBlanks(*line);
        if (text == nothingFound) break;
        if (const auto bullet = ListItem::afterBullet(text)) result.push_back(item(*bullet, shape));
    }
    return result;
}

/// Reads past the heading: the text before it, on one line. Nothing when there is no heading.
std::optional<std::string> overview(LineCursor& lines, AnswerShape shape) {
    std::string result;
    while (const auto line = lines.next()) {
        const auto text = Text::trimmedBlanks(*line);
        if (Text::equalsIgnoringCase(text, headingOf(shape))) return result;
        if (!result.empty() && !text.empty()) result += ' ';
        result += text;
    }
    return std::nullopt;
}

StructuredAnswer prose(std::string_view trimmed, std::vector<std::string> citationIDs) {
    StructuredAnswer answer{.citationIDs = std::move(citationIDs)};
    if (!trimmed.empty()) answer.proseText = trimmed;
    return answer;
}
}  // namespace

StructuredAnswer parse(std::string_view text, AnswerShape shape,
                       std::vector<std::string> citationIDs) {
    const auto trimmed = Text::trimmed(text);
    if (trimmed.empty() || shape == AnswerShape::prose)
        return prose(trimmed, std::move(citationIDs));
    LineCursor lines(trimmed);
    auto summary = overview(lines, shape);
    if (!summary || lines.isAtEnd()) return prose(trimmed, std::move(citationIDs));
    if (summary->empty()) summary.reset();
    return {.shape = shape,
            .summary = std::move(summary),
            .items = items(lines, shape),
            .citationIDs = std::move(citationIDs)};
}
}  // namespace ombrix::StructuredAnswerParser
