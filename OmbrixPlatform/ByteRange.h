// A range of bytes in a text.
#pragma once

#include <cstddef>
#include <string_view>

namespace ombrix {

/// Half open: `begin` is the first byte, `end` the one after the last. It does not know its text.
struct ByteRange {
    std::size_t begin = 0;
    std::size_t end = 0;

    std::size_t size() const { return end - begin; }
    bool isEmpty() const { return begin == end; }
    bool intersects(const ByteRange& other) const { return begin < other.end && other.begin < end; }
    /// The bytes of `text` in this range, as a view of `text`.
    std::string_view of(std::string_view text) const { return text.substr(begin, size()); }
    bool operator==(const ByteRange&) const = default;
};
}  // namespace ombrix
