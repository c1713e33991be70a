// The part of `ByteScan` that looks at every byte of a library: marks the bytes at which a word can
// begin with one of some beginnings, judged by three bytes and the two before them.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <string_view>

namespace ombrix::WordMarks {

constexpr std::size_t blockSize = 64;
/// Bytes next to the blocks that are read along.
constexpr std::size_t readBefore = 2;
constexpr std::size_t readAfter = 2;

/// True for ASCII characters that can be inside a word and have no part in its normal form.
constexpr bool isSilentJoint(char c) {
    return c == '\'' || c == '.' || c == ',' || c == ';' || c == '_' || c == '@';
}

/// Eight sets of bytes. Bit n of `low[c & 15] & high[c >> 4]` tells whether byte c is in set n, so
/// a set is all pairs of some low halves and some high ones. Two table look-ups find all eight.
struct ByteSets {
    alignas(16) std::array<std::uint8_t, 16> low{};
    alignas(16) std::array<std::uint8_t, 16> high{};

    void add(unsigned char byte, unsigned set);
    void addAll(unsigned set);
};

/// Where the beginnings are looked for.
enum class Where {
    wordStarts,  ///< no ASCII letter or digit before it; the word can hold bytes that leave nothing
    anywhere,
};

/// What is looked for: the first three bytes of each beginning, beginnings that are alike in one
/// set together.
class Beginnings {
  public:
    /// The beginnings are folded and not empty.
    Beginnings(std::span<const std::string_view> beginnings, Where where);

    /// Adds characters of two or three bytes, by their first two: at word starts no other ones are
    /// marked.
    void addCharacters(unsigned char first, unsigned char second);

    std::array<ByteSets, 3> letters;       ///< by place in the beginning
    ByteSets joints;                       ///< silent ones, and all bytes that are not ASCII
    std::array<ByteSets, 2> characters;    ///< by place in a character that is not ASCII
    std::array<ByteSets, 2> lettersOfTwo;  ///< letters that no word begins after; by their place
    Where where;

  private:
    std::array<std::optional<unsigned>, 256> setOfFirst_;
    unsigned firsts_ = 0;
};

/// Writes 64 bits for each of `count` blocks from `bytes` on, the bits of the first byte lowest. A
/// bit is set where a beginning is possible by its first three bytes, whatever their case, and at
/// word starts also where a character that is not ASCII begins, if it was added or has four bytes,
/// unless it goes on with a word by the one or two bytes before it. Reads two bytes before the
/// first block and two after the last.
using Mark = void (*)(const Beginnings& beginnings, const char* bytes, std::size_t count,
                      std::uint64_t* marks);

/// The same loop, compiled for one kind of vectors.
struct Way {
    const char* vectors = nullptr;
    Mark mark = nullptr;
};

/// What this processor can run, the widest first; never empty.
std::span<const Way> ways();
}  // namespace ombrix::WordMarks
