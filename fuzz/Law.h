// How a fuzz target states laws that its reader must keep, besides not crashing.
#pragma once

#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <string_view>
#include <utility>

namespace ombrix::Fuzz {

/// Prints the claim and aborts unless it holds; the fuzzer then keeps the input.
inline void law(bool holds, const char* claim) {
    if (holds) return;
    std::fprintf(stderr, "broken: %s\n", claim);
    std::abort();
}

/// The input as text; shows the fuzzer's bytes.
inline std::string_view text(const std::uint8_t* data, std::size_t size) {
    return {reinterpret_cast<const char*>(data), size};
}

/// The input split at its first line feed, for targets that take two texts. Without a line feed the
/// second is empty.
inline std::pair<std::string_view, std::string_view> firstLineAndRest(std::string_view input) {
    const std::size_t end = input.find('\n');
    if (end == std::string_view::npos) return {input, {}};
    return {input.substr(0, end), input.substr(end + 1)};
}
}  // namespace ombrix::Fuzz
