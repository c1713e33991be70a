// UTF-8 as bytes: is it valid, repair it, read and write one scalar, count UTF-16 units.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace ombrix::Utf8 {

/// One scalar as it was read: U+FFFD with length 1 stands for a byte that belongs to none.
struct Decoded {
    char32_t scalar = 0;
    std::size_t length = 0;  ///< in bytes, 1 to 4
};

constexpr char32_t replacement = 0xFFFD;

/// True when every byte is below 0x80.
bool isAscii(std::string_view text);

/// True for well-formed UTF-8: no overlong forms, no surrogates, nothing above U+10FFFF.
bool isValid(std::string_view text);

/// `text` with each maximal ill-formed sequence replaced by one U+FFFD; valid text as it is.
std::string repaired(std::string_view text);

/// The scalar that begins at byte `at`, which must be below `text.size()`.
Decoded decode(std::string_view text, std::size_t at);

/// The first byte of the scalar that ends right before byte `at`, which must be above 0.
std::size_t scalarStartBefore(std::string_view text, std::size_t at);

/// Appends the one to four bytes of `scalar`; what is no scalar appends U+FFFD.
void append(std::string& text, char32_t scalar);

/// The length of `text` in UTF-16 units; linear.
std::size_t utf16Length(std::string_view text);

/// The UTF-16 unit at which byte `at` stands; `at` is a scalar's first byte or the size.
std::size_t utf16Offset(std::string_view text, std::size_t at);

/// The byte at which UTF-16 unit `unit` stands. A unit inside a surrogate pair gives the byte of
/// the scalar that the pair spells; a unit behind the end gives `text.size()`.
std::size_t byteOffset(std::string_view text, std::size_t unit);
}  // namespace ombrix::Utf8
