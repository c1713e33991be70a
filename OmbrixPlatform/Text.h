// What the words of our vocabulary mean for a text: trim, split, lower-case, fold, find. Every text
// is UTF-8; a byte that is not well-formed counts as one U+FFFD and is never a reason to fail.
// Returned views show the bytes of the argument. All functions are linear unless they say
// otherwise; ASCII text takes a path of its own that allocates only the result.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace ombrix::Text {

// ---- one scalar -------------------------------------------------------------------------------

/// True for a byte that is a scalar of its own.
constexpr bool isAscii(char c) { return static_cast<unsigned char>(c) < 0x80; }
constexpr bool isAsciiDigit(char c) { return c >= '0' && c <= '9'; }
constexpr bool isAsciiLetter(char c) { return (c | 0x20) >= 'a' && (c | 0x20) <= 'z'; }
constexpr bool isAsciiAlphanumeric(char c) { return isAsciiDigit(c) || isAsciiLetter(c); }
/// A word character of regular expressions (\w, \b), among ASCII; false for bytes of other scripts.
constexpr bool isAsciiWordByte(char c) { return isAsciiAlphanumeric(c) || c == '_'; }
constexpr bool isAsciiHexDigit(char c) {
    return isAsciiDigit(c) || ((c | 0x20) >= 'a' && (c | 0x20) <= 'f');
}
constexpr char asciiLowercased(char c) {
    return c >= 'A' && c <= 'Z' ? static_cast<char>(c | 0x20) : c;
}

/// White_Space. The same scalars are what "white space and newlines" are trimmed of.
bool isWhiteSpace(char32_t scalar);
/// General category L*, M* or N*: "letter or digit" of a scalar.
bool isAlphanumeric(char32_t scalar);
/// Alphabetic, or with a numeric type: what makes the character it begins "a letter or a number".
bool isLetterOrNumber(char32_t scalar);
/// Alphabetic: what makes the character it begins a letter.
bool isLetter(char32_t scalar);

// ---- trim -------------------------------------------------------------------------------------

/// Without white space and newlines at both ends.
std::string_view trimmed(std::string_view text);
/// Without blanks of category Zs and tabs at both ends; line feeds stay.
std::string_view trimmedBlanks(std::string_view text);
/// Without U+0020 and tabs at both ends.
std::string_view trimmedSpacesAndTabs(std::string_view text);

// ---- split and join ---------------------------------------------------------------------------

/// The pieces between the occurrences of `separator` (not empty), empty ones included; at least
/// one.
std::vector<std::string_view> split(std::string_view text, std::string_view separator);
/// The same without the empty pieces; none for an empty text.
std::vector<std::string_view> splitDroppingEmpty(std::string_view text, std::string_view separator);
std::string joined(const std::vector<std::string_view>& pieces, std::string_view separator);
std::string joined(const std::vector<std::string>& pieces, std::string_view separator);

/// `text` with each occurrence of `from` (not empty), found left to right, replaced by `to`.
std::string replacingAll(std::string_view text, std::string_view from, std::string_view to);
/// CR LF as LF; a lone CR stays.
std::string withLineFeeds(std::string_view text);
/// The pieces between white space (line ends too), joined by single blanks; none at the ends. Goes
/// scalar by scalar: a mark after a blank is not white space and stays.
std::string flattened(std::string_view text);
/// U+2019 and U+2018 as a straight apostrophe.
std::string withStraightApostrophes(std::string_view text);

// ---- case and fold ----------------------------------------------------------------------------

/// Full lower-casing scalar by scalar, root locale, no context: a final sigma is "σ".
std::string lowercased(std::string_view text);
/// Full case folding, for tests that ignore case alone.
std::string caseFolded(std::string_view text);
/// The fold: canonical decomposition, nonspacing marks dropped, full case folding. "Café" is
/// "cafe", "ß" is "ss", "ø" stays. Folding twice changes nothing.
std::string folded(std::string_view text);
/// The fold of one scalar; empty for a nonspacing mark.
std::string folded(char32_t scalar);
/// Appends the fold of one scalar; nothing for a nonspacing mark.
void appendFolded(std::string& result, char32_t scalar);

bool equalsIgnoringCase(std::string_view a, std::string_view b);
bool startsWithIgnoringAsciiCase(std::string_view text, std::string_view asciiPrefix);

// ---- find -------------------------------------------------------------------------------------

inline bool contains(std::string_view text, std::string_view part) {
    return text.find(part) != std::string_view::npos;
}
}  // namespace ombrix::Text
