// What a fuzz target holds true of its reader besides "it does not crash".
#pragma once

#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <string_view>
#include <utility>

namespace ombrix::Fuzz {

/// Ends the process when a law is broken, so that the fuzzer keeps the input.
inline void law(bool holds, const char* claim) {
    if (holds) return;
    std::fprintf(stderr, "broken: %s\n", claim);
    std::abort();
}

inline std::string_view text(const std::uint8_t* data, std::size_t size) {
    return {reinterpret_cast<const char*>(data), size};
}

/// An input that holds a question or another short text and what it is asked of: cut at its first
/// line feed.
inline std::pair<std::string_view, std::string_view> firstLineAndRest(std::string_view input) {
    const std::size_t end = input.find('\n');
    if (end == std::string_view::npos) return {input, {}};
    return {input.substr(0, end), input.substr(end + 1)};
}
}  // namespace ombrix::Fuzz
