// Quotes as engine files show them.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace ombrix {

constexpr std::size_t longestQuote = 240;  ///< in characters

/// `text` when it has at most `longestQuote` characters. A longer one is cut there, then at its
/// last blank if it has one, is trimmed and gets "…".
std::string clipQuote(std::string_view text);
}  // namespace ombrix
