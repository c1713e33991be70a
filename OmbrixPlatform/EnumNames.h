// Raw strings of enumerations. Beside an enumeration is one table, a function named `rawValues`:
//
//   enum class Certainty { recorded, read };
//   constexpr auto rawValues(Certainty) {  // files on disk hold these
//       return EnumNames::table<Certainty>({{Certainty::recorded, "recorded"},
//                                           {Certainty::read, "read"}});
//   }
//
// It is found by overload, and everything else follows from it: `rawValue(value)`,
// `fromRawValue<Certainty>(text)`, and reading and writing as JSON, alone and inside lists, maps
// and records. For an enumeration inside a class the table is in the namespace around the class.
#pragma once

#include <array>
#include <cstddef>
#include <optional>
#include <string_view>
#include <type_traits>
#include <utility>

namespace ombrix {
namespace EnumNames {

template <typename Enum>
using Row = std::pair<Enum, std::string_view>;

/// The rows as they are. Does not compile when a value or a raw string is there twice.
template <typename Enum, std::size_t count>
consteval std::array<Row<Enum>, count> table(const Row<Enum> (&rows)[count]) {
    for (std::size_t i = 0; i < count; ++i) {
        for (std::size_t j = 0; j < i; ++j) {
            if (rows[i].first == rows[j].first || rows[i].second == rows[j].second)
                throw "a value or a raw string is there twice";
        }
    }
    return std::to_array(rows);
}

/// An enumeration with a table beside it.
template <typename Enum>
concept Named = std::is_enum_v<Enum> && requires {
    rawValues(Enum{});
};

/// The table of an enumeration, in the order in which it is written.
template <Named Enum>
inline constexpr auto rows = rawValues(Enum{});
}  // namespace EnumNames

/// The raw string of `value`; empty for a number that no enumerator has.
template <EnumNames::Named Enum>
constexpr std::string_view rawValue(Enum value) {
    for (const auto& [each, name] : EnumNames::rows<Enum>)
        if (each == value) return name;
    return {};
}

/// The value whose raw string is exactly `text`.
template <EnumNames::Named Enum>
constexpr std::optional<Enum> fromRawValue(std::string_view text) {
    for (const auto& [each, name] : EnumNames::rows<Enum>)
        if (name == text) return each;
    return std::nullopt;
}
}  // namespace ombrix
