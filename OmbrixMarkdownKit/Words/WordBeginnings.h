// The second half of a search for words that begin with certain prefixes: `ByteScan` proposes
// bytes, this decides. Scripts of two and three bytes are judged by table lookups, without ICU.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace ombrix {

class WordBeginnings {
  public:
    /// The prefixes are folded, not empty, and end at a scalar.
    explicit WordBeginnings(std::vector<std::string> prefixes);

    const std::vector<std::string>& prefixes() const { return prefixes_; }

    /// True when a word whose normal form begins with a prefix may begin at the byte `at`, or after
    /// the characters there that normal forms lack. Never false for such a word at the first byte
    /// that is in its normal form. False inside a character.
    bool mayBeginAt(std::string_view text, std::size_t at) const;

  private:
    bool isCandidate(std::string_view text, std::size_t at) const;

    std::vector<std::string> prefixes_;
    /// For each lead byte of two bytes and for each two first ones of three: a bit for each last
    /// byte with which the fold can begin a prefix.
    std::vector<std::uint64_t> afterOne_;
    std::vector<std::uint64_t> afterTwo_;
};
}  // namespace ombrix
