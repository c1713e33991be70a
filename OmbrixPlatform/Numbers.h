// Numbers in text, independent of the locale.
#pragma once

#include <charconv>
#include <concepts>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace ombrix::Numbers {

/// A base-10 integer: an optional "+" or "-", then ASCII digits and nothing else. Nothing for any
/// other form and when the value is out of range for `Integer`. "010" is 10.
template <std::integral Integer>
std::optional<Integer> parseInteger(std::string_view text) {
    if (text.starts_with('+')) {
        text.remove_prefix(1);
        if (text.starts_with('-')) return std::nullopt;
    }
    Integer value{};
    const char* const end = text.data() + text.size();
    const auto [stop, error] = std::from_chars(text.data(), end, value);
    if (error != std::errc() || stop != end) return std::nullopt;
    return value;
}

/// The value that strtod of the C library reads in the "C" locale, including leading white space,
/// hexadecimal forms, "inf" and "nan". Nothing when it does not read the whole text, or the text is
/// empty.
std::optional<double> parseDouble(std::string_view text);

/// The shortest decimal form that reads back as `value`; a whole number has no fraction ("30"),
/// very large and very small ones an exponent ("1e-05", "1e+22"). `value` is finite.
std::string shortest(double value);

/// The form for numbers in messages: as `shortest`, but whole numbers have a fraction ("3.0").
/// "inf", "-inf" or "nan" when `value` is not finite.
std::string described(double value);

enum class HexDigits { lower, upper };
/// Appends `byte` as two hexadecimal digits.
void appendHex(std::string& text, std::uint8_t byte, HexDigits digits = HexDigits::lower);
}  // namespace ombrix::Numbers
