// The search for a phrase in many texts, few of which have it.
#pragma once

#include <array>
#include <cstddef>
#include <optional>
#include <span>
#include <string_view>

#include "OmbrixPlatform/ByteRange.h"
#include "OmbrixPlatform/Regex.h"

namespace ombrix {

/// An expression, ignoring case, that begins with \b and one of a few literals. A scan for these
/// quickly rules out nearly all texts, and otherwise gives the expression a later place to start
/// from. It never changes what is found.
class Cue {
  public:
    /// Every match begins with one of `openings`: lower-case ASCII, the first character a letter or
    /// a digit. An opening that is a digit means all digits, those of other scripts too. Keeps a
    /// view of them.
    Cue(std::string_view pattern, std::span<const std::string_view> openings);

    /// The first match in a text with straight apostrophes. Linear.
    std::optional<ByteRange> firstMatch(std::string_view text) const;

  private:
    std::optional<std::size_t> firstOpening(std::string_view text) const;
    bool opensWithDigit() const;

    Regex regex_;
    std::span<const std::string_view> openings_;
    std::array<bool, 128> first_{};  // the openings' first characters, in both cases
};
}  // namespace ombrix
