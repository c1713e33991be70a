#include "OmbrixMemoryKit/Identity/EntityKeys.h"

#include <algorithm>
#include <array>
#include <cstdint>

#include "OmbrixPlatform/Characters.h"
#include "OmbrixPlatform/Numbers.h"
#include "OmbrixPlatform/Text.h"

namespace ombrix::EntityKeys {
namespace {

constexpr auto genericLabels =
    std::to_array<std::string_view>({"them", "speaker", "unknown", "someone"});
constexpr std::string_view numberedLabel = "speaker ";
constexpr std::string_view hedgedLabel = "someone in ";
constexpr std::string_view unnamedKey = "name:unnamed";

std::string prefixed(std::string_view prefix, std::string_view rest) {
    std::string key(prefix);
    return key += rest;
}
}  // namespace

std::optional<std::string> normalizeKey(std::optional<std::string_view> name,
                                        std::optional<std::string_view> email) {
    if (const auto address = Text::trimmed(email.value_or("")); !address.empty())
        return prefixed(emailPrefix, Text::lowercased(address));
    const std::string lowered = Text::lowercased(Text::trimmed(name.value_or("")));
    const auto words = Characters::splitAtWhiteSpace(lowered);
    if (words.empty()) return std::nullopt;
    return prefixed(namePrefix, Text::joined(words, " "));
}

Shown forModel(std::string_view key, std::string_view display) {
    const std::string_view shown = isAddress(display) ? std::string_view() : display;
    const std::string lowered = Text::lowercased(key);
    const bool holdsAddress = lowered.starts_with(emailPrefix) ||
                              (lowered.starts_with(namePrefix) &&
                               isAddress(std::string_view(lowered).substr(namePrefix.size())));
    if (!holdsAddress) return {std::string(key), std::string(shown)};
    return {normalizeKey(shown).value_or(std::string(unnamedKey)), std::string(shown)};
}

bool isGenericLabel(std::string_view label) {
    const std::string lowered = Text::lowercased(Text::trimmed(label));
    if (std::ranges::find(genericLabels, lowered) != genericLabels.end()) return true;
    if (lowered.starts_with(numberedLabel)) {
        const auto number = std::string_view(lowered).substr(numberedLabel.size());
        return Numbers::parseInteger<std::int64_t>(number).has_value();
    }
    return lowered.starts_with(hedgedLabel);
}

bool isGenericKey(std::string_view key) {
    if (key.starts_with(namePrefix)) return isGenericLabel(key.substr(namePrefix.size()));
    return key.empty();
}

bool isAddress(std::string_view text) {
    const auto address = Text::trimmed(text);
    const auto at = address.find('@');
    if (at == 0 || at >= address.size() - 1 || address.find('@', at + 1) != address.npos)
        return false;
    // Nothing is cut off or apart when there is no white space.
    const auto words = Characters::splitAtWhiteSpace(address);
    return words.size() == 1 && words.front().size() == address.size();
}
}  // namespace ombrix::EntityKeys
