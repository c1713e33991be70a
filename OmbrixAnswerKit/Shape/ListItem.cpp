#include "OmbrixAnswerKit/Shape/ListItem.h"

#include <cstddef>

#include "OmbrixPlatform/Characters.h"
#include "OmbrixPlatform/Text.h"

namespace ombrix::ListItem {
namespace {

constexpr std::size_t longestOwner = 40;
}  // namespace

std::optional<std::string_view> afterBullet(std::string_view line) {
    if (!line.starts_with("- ") && !line.starts_with("* ")) return std::nullopt;
    return Text::trimmedBlanks(line.substr(2));
}

bool canBeOwner(std::string_view text) {
    return !text.empty() && !Characters::hasAtLeast(text, longestOwner + 1);
}
}  // namespace ombrix::ListItem
