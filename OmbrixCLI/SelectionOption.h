// The selection of a field as a command line writes it: "4:15", in UTF-16 units.
#pragma once

#include <optional>
#include <string_view>

#include "OmbrixAnswerKit/Key/KeyPress.h"

namespace ombrix {

/// The selection in a field of `length` units; nothing unless the text is two integers in order and
/// inside the field. Colons too many are passed over: ":4::15" is "4:15".
std::optional<KeyPress::Range> parseSelection(std::string_view text, std::int64_t length);
}  // namespace ombrix
