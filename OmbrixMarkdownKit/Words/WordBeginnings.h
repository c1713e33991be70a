// The second half of a search for words that begin with certain prefixes: `ByteScan` proposes
// bytes, this decides. Scripts of two and three bytes are judged by table lookups, without ICU.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "OmbrixPlatform/Text.h"

namespace ombrix {

class WordBeginnings {
  public:
    /// The prefixes are folded, not empty, and end at a scalar.
    explicit WordBeginnings(std::vector<std::string> prefixes);

    const std::vector<std::string>& prefixes() const { return prefixes_; }

    /// True when a word whose normal form begins with a prefix may begin at the byte `at`, or after
    /// the characters there that normal forms lack. Never false for such a word at the first byte
    /// that is in its normal form. False inside a character.
    bool mayBeginAt(std::string_view text, std::size_t at) const {
        if (Text::isAscii(text[at])) return mayBeginInAscii(text, at);
        return isCandidate(text, at) && beginsAt(text, at);
    }

    /// Calls `visit` with the first two bytes of each character of two or three bytes with which a
    /// word of the prefixes can begin.
    template <typename Visit>
    void eachCharacter(Visit visit) const {
        const auto byte = [](std::size_t value) { return static_cast<unsigned char>(value); };
        for (std::size_t i = 0; i < afterOne_.size() * 64; ++i)
            if ((afterOne_[i / 64] >> (i % 64) & 1U) != 0)
                visit(byte(0xC0 | i / 64), byte(0x80 | i % 64));
        for (std::size_t i = 0; i < afterTwo_.size(); ++i)
            if (afterTwo_[i] != 0) visit(byte(0xE0 | i / 64), byte(0x80 | i % 64));
    }

  private:
    /// The first eight bytes of a prefix, as long as they are ASCII letters and digits.
    struct Head {
        std::uint64_t bytes = 0;
        std::uint64_t mask = 0;  ///< all bits of the bytes that are set
        bool isWhole = false;    ///< nothing of the prefix is missing
    };
    enum class Fit { no, yes, unknown };

    void addHeads();
    bool mayBeginInAscii(std::string_view text, std::size_t at) const;
    Fit headFit(std::string_view text, std::size_t at) const;
    bool isCandidate(std::string_view text, std::size_t at) const;
    bool beginsAt(std::string_view text, std::size_t at) const;

    std::vector<std::string> prefixes_;
    std::vector<Head> heads_;  // by their first byte; those that begin with an ASCII character
    std::array<std::uint32_t, 0x81> headsFrom_{};  // the place of the first one for each byte
    /// For each lead byte of two bytes and for each two first ones of three: a bit for each last
    /// byte with which the fold can begin a prefix.
    std::array<std::uint64_t, 32> afterOne_{};
    std::array<std::uint64_t, 1024> afterTwo_{};
};

/// Rules out most characters that are not ASCII by their bytes. Inline, since it runs for each.
inline bool WordBeginnings::isCandidate(std::string_view text, std::size_t at) const {
    const auto byte = [&](std::size_t i) -> unsigned {
        return static_cast<unsigned char>(text[at + i]);
    };
    const unsigned lead = byte(0);
    if (lead < 0xC2) return false;  // inside a character
    const std::size_t left = text.size() - at;
    if (lead < 0xE0) return left > 1 && (afterOne_[lead & 0x1FU] >> (byte(1) & 0x3FU) & 1U) != 0;
    if (lead >= 0xF0) return true;
    if (left < 3) return false;
    const unsigned firstTwo = (lead & 0x0FU) << 6U | (byte(1) & 0x3FU);
    return (afterTwo_[firstTwo] >> (byte(2) & 0x3FU) & 1U) != 0;
}
}  // namespace ombrix
