// Property lists, XML or binary.
#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace ombrix::PropertyList {

/// The string under `key` of a property list that is a dictionary. Nothing when `bytes` are no
/// property list, no dictionary, or the key is missing or holds no string.
std::optional<std::string> string(std::string_view bytes, std::string_view key);
}  // namespace ombrix::PropertyList
