#include "OmbrixAnswerKit/Commitments/ActionItems.h"

#include <algorithm>
#include <array>

#include "OmbrixAnswerKit/Commitments/SpokenWords.h"
#include "OmbrixAnswerKit/Shape/ListItem.h"
#include "OmbrixPlatform/LineCursor.h"
#include "OmbrixPlatform/Text.h"

namespace ombrix::ActionItems {
namespace {

constexpr std::size_t mostOwnerWords = 4;
constexpr std::array<std::string_view, 3> separators = {" — ", " – ", ": "};
constexpr std::string_view openBox = "[ ]";
constexpr std::array<std::string_view, 4> checkBoxes = {"- [ ]", "* [ ]", "- [x]", "* [x]"};

bool hasCheckBox(std::string_view line) {
    return std::ranges::any_of(checkBoxes, [&](auto box) { return line.starts_with(box); });
}

std::string_view withoutOpenBox(std::string_view text) {
    if (!text.starts_with(openBox)) return text;
    return Text::trimmedBlanks(text.substr(openBox.size()));
}

bool canBeOwner(std::string_view part) {
    return ListItem::canBeOwner(part) && !SpokenWords(part).hasAtLeast(mostOwnerWords + 1);
}
}  // namespace

std::vector<std::string_view> lines(const TranscriptDocument& document) {
    std::vector<std::string_view> found;
    for (LineCursor cursor(document.actionItems); const auto line = cursor.next();) {
        if (const auto trimmed = Text::trimmedBlanks(*line); !trimmed.empty())
            found.push_back(trimmed);
    }
    for (LineCursor cursor(document.notes); const auto line = cursor.next();) {
        if (const auto trimmed = Text::trimmedBlanks(*line); hasCheckBox(trimmed))
            found.push_back(trimmed);
    }
    return found;
}

std::optional<Item> parse(std::string_view line) {
    const auto item = ListItem::afterBullet(Text::trimmedBlanks(line));
    if (!item || Text::startsWithIgnoringAsciiCase(*item, "[x]")) return std::nullopt;
    const std::string_view rest = withoutOpenBox(*item);
    if (rest.empty()) return std::nullopt;
    for (const std::string_view separator : separators) {
        const std::size_t at = rest.find(separator);
        if (at == std::string_view::npos) continue;
        const auto owner = Text::trimmedBlanks(rest.substr(0, at));
        const auto text = Text::trimmedBlanks(rest.substr(at + separator.size()));
        if (!text.empty() && canBeOwner(owner)) return Item{.owner = owner, .text = text};
    }
    return Item{.owner = std::nullopt, .text = rest};
}

std::string_view trimmedBullet(std::string_view line) {
    line = Text::trimmedBlanks(line);
    return withoutOpenBox(ListItem::afterBullet(line).value_or(line));
}
}  // namespace ombrix::ActionItems
