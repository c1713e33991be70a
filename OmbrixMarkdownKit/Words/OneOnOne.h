// "One on one" in its written forms. Its words alone are number and stop words, which a question
// drops, so before a text is cut into words each form becomes the single word "1o1" or "1o1s".
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "OmbrixPlatform/ByteRange.h"

namespace ombrix::OneOnOne {

constexpr std::string_view word = "1o1";

struct Match {
    ByteRange range;
    bool isPlural = false;
};

/// The forms in `text`, in order: 1:1, 1-1, 1 on 1, one on one, one-on-one, one to one, one-to-one,
/// with an "s" or without, ignoring case, at word boundaries. Linear; text
/// without any costs one scan.
std::vector<Match> matches(std::string_view text);

/// `text` with each match written as "1o1" or "1o1s" and padded with blanks to its length, so that
/// every offset stays the same.
std::string rewritten(std::string_view text, const std::vector<Match>& matches);
}  // namespace ombrix::OneOnOne
