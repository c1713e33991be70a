// Short stretches of a text, cut around what was found in it.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

#include "OmbrixPlatform/ByteRange.h"

namespace ombrix::Excerpt {

/// `range` of `text` with `context` characters on each side, trimmed, and "…" at each end that is
/// not the text's. Costs what it shows, however long the text is.
std::string at(std::string_view text, ByteRange range, std::size_t context);

/// The same around the first place that reads as `term`, ignoring case and diacritics; without such
/// a place the first `2 * context` characters, without "…".
std::string around(std::string_view text, std::string_view term, std::size_t context);
}  // namespace ombrix::Excerpt
