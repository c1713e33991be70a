// A text as a person counts it: extended grapheme clusters, CR LF being one. Offsets are bytes and
// stand on the boundaries of characters.
#pragma once

#include <cstddef>
#include <string_view>

namespace ombrix::Characters {

/// How many characters `text` holds; linear.
std::size_t count(std::string_view text);

/// The byte behind `n` characters from `from` on, or the size when fewer are left.
std::size_t forward(std::string_view text, std::size_t from, std::size_t n);

/// The byte `n` characters before `from`, or 0 when fewer stand there.
std::size_t backward(std::string_view text, std::size_t from, std::size_t n);

/// The first `n` characters; `text`'s bytes.
inline std::string_view prefix(std::string_view text, std::size_t n) {
    return text.substr(0, forward(text, 0, n));
}

/// True when `text` has at least `n` characters; looks no farther than that.
bool hasAtLeast(std::string_view text, std::size_t n);
}  // namespace ombrix::Characters
