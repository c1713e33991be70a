// Words by Unicode word boundaries, as ICU's root iterator finds them: every segment whose rule
// status is not "none". "can't" and "3.5" are one word, "follow-up" is two.
#pragma once

#include <cstddef>
#include <string_view>
#include <vector>

#include "OmbrixPlatform/ByteRange.h"
#include "OmbrixPlatform/Text.h"

namespace ombrix::Words {

/// The words of `text`, in order, as ranges of it. Linear; ASCII stretches do not need ICU.
std::vector<ByteRange> ranges(std::string_view text);

/// A part of a text that can be cut into words by itself: the words of the text are the words of
/// its stretches. Stretches end at ASCII white space. Use `asciiWord` for an ASCII stretch.
struct Stretch {
    ByteRange range;
    bool isAscii = true;
};

/// Walks the stretches of a text without storing them.
class Stretches {
  public:
    explicit Stretches(std::string_view text) : text_(text) {}
    /// False after the last stretch.
    bool next(Stretch& stretch);

  private:
    std::string_view text_;
    std::size_t place_ = 0;
};

/// Appends the words of `text.substr(stretch)` as ranges of `text`, through ICU.
void appendIcuWords(std::string_view text, ByteRange stretch, std::vector<ByteRange>& words);

// The boundary rules for ASCII: a word is a run of letters, digits and "_" that may hold one "." or
// "'" between two letters, and one of ".',;" between two digits. "@" counts as a letter.
namespace AsciiRule {
constexpr bool isLetter(char c) { return Text::isAsciiLetter(c) || c == '@'; }
constexpr bool isJoined(char c) { return isLetter(c) || Text::isAsciiDigit(c) || c == '_'; }
constexpr bool bridges(char before, char c, char after) {
    if (c != '.' && c != '\'' && c != ',' && c != ';') return false;
    if (Text::isAsciiDigit(before)) return Text::isAsciiDigit(after);
    return (c == '.' || c == '\'') && isLetter(before) && isLetter(after);
}
}  // namespace AsciiRule

/// The first word of an ASCII text at or after byte `from`; an empty range at the end when there is
/// none.
ByteRange asciiWord(std::string_view text, std::size_t from);
}  // namespace ombrix::Words
