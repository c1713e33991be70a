#include "OmbrixAnswerKit/Commitments/ActionItems.h"

#include <array>

#include "OmbrixAnswerKit/Commitments/SpokenWords.h"
#include "OmbrixPlatform/Characters.h"
#include "OmbrixPlatform/LineCursor.h"
#include "OmbrixPlatform/Text.h"

namespace ombrix::ActionItems {
namespace {

constexpr std::size_t ownerCharactersLimit = 41;  // a part as long as this is no owner
constexpr std::size_t ownerWordsLimit = 5;
constexpr std::array<std::string_view, 3> separators = {" — ", " – ", ": "};
constexpr std::string_view openBox = "[ ]";

bool isBullet(std::string_view line) { return line.starts_with("- ") || line.starts_with("* "); }

bool hasCheckBox(std::string_view line) {
    return isBullet(line) &&
           (line.substr(2).starts_with(openBox) || line.substr(2).starts_with("[x]"));
}

std::string_view withoutOpenBox(std::string_view text) {
    if (!text.starts_with(openBox)) return text;
    return Text::trimmedBlanks(text.substr(openBox.size()));
}

bool canBeOwner(std::string_view part) {
    return !part.empty() && !Characters::hasAtLeast(part, ownerCharactersLimit) &&
           !SpokenWords(part).hasAtLeast(ownerWordsLimit);
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
    line = Text::trimmedBlanks(line);
    if (!isBullet(line)) return std::nullopt;
    const std::string_view item = Text::trimmedBlanks(line.substr(2));
    if (Text::startsWithIgnoringAsciiCase(item, "[x]")) return std::nullopt;
    const std::string_view rest = withoutOpenBox(item);
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
    if (isBullet(line)) line = Text::trimmedBlanks(line.substr(2));
    return withoutOpenBox(line);
}
}  // namespace ombrix::ActionItems
