// The parts of a line in a Markdown list, such as "- Ann Jones — send the deck".
#pragma once

#include <optional>
#include <string_view>

namespace ombrix::ListItem {

/// What follows the bullet, "- " or "* ", of a line without blanks around it, itself without blanks
/// around it; nothing for a line without a bullet. A view of the line.
std::optional<std::string_view> afterBullet(std::string_view line);

/// True for 1 to 40 characters: a longer text before a dash or a colon is part of the sentence.
bool canBeOwner(std::string_view text);
}  // namespace ombrix::ListItem
