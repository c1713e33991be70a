// Numbers in text, independent of the locale.
#pragma once

#include <charconv>
#include <concepts>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace ombrix::Numbers {

/// A base-10 integer: an optional "+" or "-", then ASCII digits and nothing else. Nothing when it
/// has another form or does not fit `Integer`. "010" is 10.
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

/// What the C library's strtod reads in the "C" locale, when it takes the whole of a text that is
/// not empty: leading white space, hexadecimal forms, "inf" and "nan" included.
std::optional<double> parseDouble(std::string_view text);

/// The shortest decimal form that reads back as `value`; a whole number has no fraction ("30"),
/// very large and very small ones an exponent ("1e-05", "1e+22"). `value` is finite.
std::string shortest(double value);

/// The form numbers take in our sentences: as `shortest`, but a whole number shows its fraction
/// ("3.0"); "inf", "-inf", "nan" for what is not finite.
std::string described(double value);

enum class HexDigits { lower, upper };
/// Appends `byte` as two hexadecimal digits.
void appendHex(std::string& text, std::uint8_t byte, HexDigits digits = HexDigits::lower);
}  // namespace ombrix::Numbers
