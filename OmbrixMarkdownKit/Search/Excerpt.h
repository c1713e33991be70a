// Short excerpts of a text around what was found in it.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

#include "OmbrixPlatform/ByteRange.h"

namespace ombrix::Excerpt {

/// `range` of `text` with `context` characters on each side, trimmed, and "…" at each end that is
/// not the text's. The cost depends on the excerpt, not on the text.
std::string at(std::string_view text, ByteRange range, std::size_t context);

/// The same around the first occurrence of `term`, ignoring case and diacritics; without one the
/// first `2 * context` characters, without "…".
std::string around(std::string_view text, std::string_view term, std::size_t context);
}  // namespace ombrix::Excerpt
