#include "OmbrixMemoryKit/Notes/EngineProvenance.h"

#include <algorithm>
#include <cstddef>
#include <vector>

#include "OmbrixAnswerKit/Answer/AnswerModels.h"
#include "OmbrixMemoryKit/Region/MarkerAttributes.h"
#include "OmbrixPlatform/Numbers.h"
#include "OmbrixPlatform/Text.h"

namespace ombrix {
namespace {

constexpr std::string_view family = "claude";
constexpr std::string_view familyName = "Claude";

std::string_view how(EngineProvenance::Route route) {
    switch (route) {
        case EngineProvenance::Route::ownKey:
            return "using your Anthropic key";
        case EngineProvenance::Route::claudeCode:
            return "using your Claude Code";
        case EngineProvenance::Route::ombrix:
            break;
    }
    return "through Ombrix";
}

/// "Claude Sonnet 4.5" of "claude", "sonnet", "4" and "5".
std::string nameInFamily(const std::vector<std::string_view>& pieces) {
    std::vector<std::string_view> numbers;
    for (std::size_t i = 2; i < pieces.size(); ++i)
        if (std::ranges::all_of(pieces[i], Text::isAsciiDigit)) numbers.push_back(pieces[i]);
    std::string name = std::string(familyName) + " " + Text::withUpperCaseFirst(pieces[1]);
    if (!numbers.empty()) name += " " + Text::joined(numbers, ".");
    return name;
}

/// What the catalogue calls a model of its own that it does not show.
std::string_view hiddenModelName() {
    const auto automatic = AnswerModels::spec(AnswerModels::automatic);
    return automatic ? automatic->displayName : AnswerModels::automatic;
}
}  // namespace

std::string EngineProvenance::machineLine() const {
    std::string line(machinePrefix);
    line += "route=\"";
    line += rawValue(route);
    line += "\" model=\"" + model + "\" at=\"" + isoInstant(at) + "\" v=\"" +
            std::to_string(version) + "\"";
    if (edited) line += " edited=\"" + isoInstant(*edited) + "\"";
    return line + " -->";
}

std::string EngineProvenance::humanLine(const Calendar& calendar) const {
    return "_" + byline() + " on " + calendar.formatted(at, "MMM d, yyyy") +
           ". Regenerate or delete any time._";
}

std::string EngineProvenance::byline() const {
    std::string text = "Written by " + writerName(model) + " ";
    return text += how(route);
}

std::optional<EngineProvenance> EngineProvenance::parse(std::string_view machineLine) {
    const auto line = Text::trimmed(machineLine);
    if (!line.starts_with(machinePrefix) || !line.ends_with("-->")) return std::nullopt;
    const MarkerAttributes attributes(line);
    const auto route = fromRawValue<Route>(attributes.text("route").value_or(""));
    const auto model = attributes.text("model");
    const auto at = attributes.instant("at");
    const auto version = Numbers::parseInteger<std::int64_t>(attributes.text("v").value_or(""));
    if (!route || !model || !at || !version) return std::nullopt;
    return EngineProvenance{.route = *route,
                            .model = std::string(*model),
                            .at = *at,
                            .version = *version,
                            .edited = attributes.instant("edited")};
}

std::string EngineProvenance::writerName(std::string_view model) {
    const std::string lowered = Text::lowercased(model);
    const auto pieces = Text::splitDroppingEmpty(lowered, "-");
    const bool isInFamily = !pieces.empty() && pieces.front() == family;
    if (isInFamily && pieces.size() >= 2) return nameInFamily(pieces);
    if (const auto spec = AnswerModels::spec(model))
        return std::string(spec->listed && spec->selectable ? spec->displayName
                                                            : hiddenModelName());
    return std::string(isInFamily ? familyName : "an AI model");
}
}  // namespace ombrix
