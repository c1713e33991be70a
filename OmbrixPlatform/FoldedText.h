// Searches that ignore case and diacritics.
#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "OmbrixPlatform/ByteRange.h"

namespace ombrix {

/// A text made ready for many searches that ignore case and diacritics. Keeps its own fold and the
/// places it came from: about nine bytes a byte for a text that is not ASCII, one for ASCII.
class FoldedText {
  public:
    explicit FoldedText(std::string_view text);

    /// True when the fold of `part` stands in the fold of the text. An empty part is found nowhere.
    bool contains(std::string_view part) const;
    /// The first place that reads as `part`, in bytes of the text that was given. It covers whole
    /// characters: marks behind the last letter belong to it.
    std::optional<ByteRange> find(std::string_view part) const;

  private:
    std::optional<std::size_t> placeOf(std::string_view part) const;

    std::string fold_;
    std::vector<std::size_t> sources_;  // the source byte of each folded byte; empty for ASCII
    std::size_t sourceSize_;
};
}  // namespace ombrix
