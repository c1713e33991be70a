// Searches that ignore case and diacritics.
#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "OmbrixPlatform/ByteRange.h"

namespace ombrix {

/// A text prepared for many searches. Stores its fold and the source offset of each folded byte:
/// about nine bytes for each byte of the text, one when the text is ASCII.
class FoldedText {
  public:
    explicit FoldedText(std::string_view text);

    /// True when the fold of the text contains the fold of `part`. An empty part is never found.
    bool contains(std::string_view part) const;
    /// The first occurrence of `part`, in bytes of the original text. It includes combining marks
    /// after the last letter.
    std::optional<ByteRange> find(std::string_view part) const;

  private:
    /// The first occurrence of `part`, in bytes of the fold.
    std::optional<ByteRange> placeInFold(std::string_view part) const;

    std::string fold_;
    std::vector<std::size_t> sources_;  // the source byte of each folded byte; empty for ASCII
    std::size_t sourceSize_;
};
}  // namespace ombrix
