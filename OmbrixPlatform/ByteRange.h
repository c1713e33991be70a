// A stretch of a text, in bytes.
#pragma once

#include <cstddef>
#include <string_view>

namespace ombrix {

/// Half open: `begin` is the first byte, `end` the one behind the last. The text it belongs to is
/// the caller's business.
struct ByteRange {
    std::size_t begin = 0;
    std::size_t end = 0;

    std::size_t size() const { return end - begin; }
    bool isEmpty() const { return begin == end; }
    bool intersects(const ByteRange& other) const { return begin < other.end && other.begin < end; }
    /// The bytes of `text` in this range; they are `text`'s.
    std::string_view of(std::string_view text) const { return text.substr(begin, size()); }
    bool operator==(const ByteRange&) const = default;
};
}  // namespace ombrix
