// Words by Unicode word boundaries, as ICU's root iterator finds them: every segment whose rule
// status is not "none". "can't" and "3.5" are one word, "follow-up" is two.
#pragma once

#include <cstddef>
#include <string_view>
#include <vector>

#include "OmbrixPlatform/ByteRange.h"
#include "OmbrixPlatform/Letters.h"
#include "OmbrixPlatform/Text.h"

namespace ombrix::Words {

/// The words of `text`, in order, as ranges of it. Linear; text whose scalars are all known
/// (Letters.h) does not need ICU.
std::vector<ByteRange> ranges(std::string_view text);

/// What comes next in a text.
struct Piece {
    enum class Kind {
        word,
        stretch,  ///< part of the text that only ICU can cut, and that can be cut by itself
        end,      ///< no more words
    };
    Kind kind = Kind::end;
    ByteRange range;
    /// Where a word's part after its last joint starts ("s" in "Ann's"); its begin without one.
    std::size_t lastPart = 0;
};

/// The first piece at or after `from`, which is 0 or the end of another piece. Tells `speller` of
/// the word on the way: `begin()` where one starts, then `add(letter)` for each of its scalars but
/// the joints. What was told is void when the piece turns out to be a stretch.
template <typename Speller>
Piece next(std::string_view text, std::size_t from, Speller& speller);

/// The smallest part of `text` around the scalar at `at` that can be cut by itself.
ByteRange stretchAround(std::string_view text, std::size_t at);

/// Appends the words of a stretch, as ranges of `text`, through ICU.
void appendIcuWords(std::string_view text, ByteRange stretch, std::vector<ByteRange>& words);

// The boundary rules for ASCII: a word is a run of letters, digits and "_" that may hold one "." or
// "'" between two letters, and one of ".',;" between two digits. "@" counts as a letter.
namespace AsciiRule {
constexpr bool isLetter(char c) { return Text::isAsciiLetter(c) || c == '@'; }
constexpr bool isJoined(char c) { return isLetter(c) || Text::isAsciiDigit(c) || c == '_'; }
constexpr bool isJoint(char c) { return c == '.' || c == '\'' || c == ',' || c == ';'; }
constexpr bool bridges(char before, char c, char after) {
    if (!isJoint(c)) return false;
    if (Text::isAsciiDigit(before)) return Text::isAsciiDigit(after);
    return (c == '.' || c == '\'') && isLetter(before) && isLetter(after);
}
}  // namespace AsciiRule

// ---- inline, since it runs for every word of a library ------------------------------------------

namespace Detail {

/// The stretch that starts at `begin` and holds the unknown scalar at `unknown`.
ByteRange stretch(std::string_view text, std::size_t begin, std::size_t unknown);

/// Reads the word at the joined scalar `found`, which is at `begin`.
template <typename Speller>
Piece readWord(std::string_view text, std::size_t begin, Letters::Found found, Speller& speller) {
    Piece word{Piece::Kind::word, {begin, begin}, begin};
    std::size_t& at = word.range.end;
    for (;;) {
        auto last = found.letter.kind;
        for (;;) {
            speller.add(found.letter);
            last = found.letter.kind;
            at += found.length;
            if (at == text.size()) return word;
            found = Letters::find(text, at);
            if (!Letters::isJoined(found.letter.kind)) break;
        }
        if (!found.letter.isKnown()) return {Piece::Kind::stretch, stretch(text, begin, at)};
        const std::size_t beyond = at + found.length;
        if (found.letter.kind == Letters::Kind::gap || beyond >= text.size()) return word;
        const auto after = Letters::find(text, beyond);
        if (!after.letter.isKnown()) return {Piece::Kind::stretch, stretch(text, begin, beyond)};
        if (!Letters::bridges(last, found.letter.kind, after.letter.kind)) return word;
        word.lastPart = at = beyond;
        found = after;
    }
}
}  // namespace Detail

template <typename Speller>
Piece next(std::string_view text, std::size_t from, Speller& speller) {
    for (std::size_t at = from; at < text.size();) {
        const auto found = Letters::find(text, at);
        if (!found.letter.isKnown()) return {Piece::Kind::stretch, Detail::stretch(text, at, at)};
        if (Letters::isJoined(found.letter.kind)) {
            speller.begin();
            const Piece piece = Detail::readWord(text, at, found, speller);
            const bool isLoneConnector = found.letter.kind == Letters::Kind::connector &&
                                         piece.range.end == at + found.length;
            if (!isLoneConnector) return piece;
        }
        at += found.length;
    }
    return {Piece::Kind::end, {text.size(), text.size()}};
}
}  // namespace ombrix::Words
