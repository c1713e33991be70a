// Property lists, XML or binary.
#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

namespace ombrix::PropertyList {

/// Anything larger is not read: the property list of a bundle is far smaller.
inline constexpr std::size_t largestSize = std::size_t{1} << 20;

/// The string under `key` of a property list that is a dictionary. Nothing when `bytes` is not
/// such a property list or is larger than `largestSize`, or when the key is missing or its value is
/// not a string of valid UTF-8.
std::optional<std::string> string(std::string_view bytes, std::string_view key);
}  // namespace ombrix::PropertyList
