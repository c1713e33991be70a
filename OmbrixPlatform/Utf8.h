// UTF-8 as bytes: validation, repair, reading and writing one scalar, offsets in UTF-16 units.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace ombrix::Utf8 {

/// One scalar that was read. A byte that is not part of a scalar reads as U+FFFD with length 1.
struct Decoded {
    char32_t scalar = 0;
    std::size_t length = 0;  ///< in bytes, 1 to 4
};

constexpr char32_t replacement = 0xFFFD;

/// True when every byte is below 0x80.
bool isAscii(std::string_view text);

/// True for well-formed UTF-8: no overlong forms, no surrogates, nothing above U+10FFFF.
bool isValid(std::string_view text);

/// `text` with each maximal ill-formed sequence replaced by one U+FFFD; valid text unchanged.
std::string repaired(std::string_view text);

/// The scalar that starts at byte `at`, which must be less than `text.size()`.
Decoded decode(std::string_view text, std::size_t at);

/// The offset of the scalar that ends at byte `at`, which must be greater than 0.
std::size_t scalarStartBefore(std::string_view text, std::size_t at);

/// Appends the one to four bytes of `scalar`; U+FFFD when it is not a Unicode scalar value.
void append(std::string& text, char32_t scalar);

/// The length of `text` in UTF-16 units; linear.
std::size_t utf16Length(std::string_view text);

/// The offset in UTF-16 units of byte `at`, which is the first byte of a scalar or the size.
std::size_t utf16Offset(std::string_view text, std::size_t at);

/// The byte offset of UTF-16 unit `unit`. For the second unit of a surrogate pair it is the offset
/// of that scalar; after the end it is `text.size()`.
std::size_t byteOffset(std::string_view text, std::size_t unit);
}  // namespace ombrix::Utf8
