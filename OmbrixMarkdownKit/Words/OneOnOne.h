// "One on one" in its written forms. Cut into words it would vanish among number and stop words, so
// before words are cut from a text, each form becomes the single word "1o1" or "1o1s".
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
/// with an "s" or without, ignoring case, at word boundaries. Nearly all text has none, and ASCII
/// text without any costs a scan.
std::vector<Match> matches(std::string_view text);

/// `text` with each match written as "1o1" or "1o1s" and filled up with blanks to its length, so
/// that every place stays where it was.
std::string rewritten(std::string_view text, const std::vector<Match>& matches);
}  // namespace ombrix::OneOnOne
