// Raw strings of enumerations: one array of pairs beside the enumeration, walked both ways.
#pragma once

#include <array>
#include <cstddef>
#include <optional>
#include <string_view>
#include <utility>

namespace ombrix::EnumNames {

template <typename Enum, std::size_t count>
using Table = std::array<std::pair<Enum, std::string_view>, count>;

/// The raw string of `value`; empty for a number that no enumerator has.
template <typename Enum, std::size_t count>
constexpr std::string_view name(const Table<Enum, count>& table, Enum value) {
    for (const auto& [each, name] : table)
        if (each == value) return name;
    return {};
}

/// The value whose raw string is exactly `text`.
template <typename Enum, std::size_t count>
constexpr std::optional<Enum> value(const Table<Enum, count>& table, std::string_view text) {
    for (const auto& [each, name] : table)
        if (name == text) return each;
    return std::nullopt;
}
}  // namespace ombrix::EnumNames
