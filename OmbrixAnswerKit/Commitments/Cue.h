// A phrase of spoken language that is searched for in many texts and stands in few of them.
#pragma once

#include <array>
#include <cstddef>
#include <optional>
#include <span>
#include <string_view>

#include "OmbrixPlatform/ByteRange.h"
#include "OmbrixPlatform/Regex.h"

namespace ombrix {

/// An expression, ignoring case, that begins with \b and a literal out of a known few. A scan for
/// those finds out quickly that a text, as nearly all of them, holds no match. The scan never
/// changes what is found; it spares the expression the text before the first place worth a look.
class Cue {
  public:
    /// Every match begins with one of `openings`: lower-case ASCII, the first character a letter or
    /// a digit. An opening that is a digit stands for all digits, those of other scripts too. Keeps
    /// a view of them.
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
