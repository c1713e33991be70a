// Trimming, splitting, case and folding of text, each defined once. Every text is UTF-8; a byte
// that is not well-formed counts as one U+FFFD and is never an error. Returned views are views of
// the argument. All functions are linear. ASCII text has its own path, which allocates only the
// result.
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace ombrix::Text {

// ---- one scalar -------------------------------------------------------------------------------

/// True for a byte that is a whole scalar.
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
constexpr char asciiUppercased(char c) {
    return c >= 'a' && c <= 'z' ? static_cast<char>(c & ~0x20) : c;
}
/// C0, DEL and C1: what a terminal may obey.
constexpr bool isControl(char32_t scalar) {
    return scalar < 0x20 || (scalar >= 0x7F && scalar < 0xA0);
}

/// The property White_Space. `trimmed` removes the same scalars.
bool isWhiteSpace(char32_t scalar);
/// General category L*, M* or N*: "letter or digit" of a scalar.
bool isAlphanumeric(char32_t scalar);
/// Alphabetic, or with a numeric type. A character whose first scalar is such is "a letter or a
/// number".
bool isLetterOrNumber(char32_t scalar);
/// Alphabetic. A character whose first scalar is such is a letter.
bool isLetter(char32_t scalar);
/// General category N*: decimal digits, letter-like numbers, fractions; not ideographs such as
/// "三".
bool isDigit(char32_t scalar);
/// The property Uppercase: "A", "É", not the title case "ǅ" and no letter of a script without case.
bool isUppercase(char32_t scalar);
/// With a numeric type: digits of every script, fractions, ideographic numbers.
bool isNumber(char32_t scalar);
/// General category Nd: \d of regular expressions.
bool isDecimalDigit(char32_t scalar);
/// 0 to 9 for the decimal digits of every script; nothing for any other scalar.
std::optional<int> decimalDigitValue(char32_t scalar);
/// A letter of a script that has no case, or a mark: "田", "ー", "ש". Georgian counts, whose
/// capitals begin neither names nor sentences.
bool isCaselessLetter(char32_t scalar);

// ---- trim -------------------------------------------------------------------------------------

/// Without white space and line ends at both ends.
std::string_view trimmed(std::string_view text);
/// Without tabs and blanks of category Zs at both ends; line ends are kept.
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
/// CR LF replaced by LF; a single CR is kept.
std::string withLineFeeds(std::string_view text);
/// The pieces between white space (line ends included), joined by single blanks; no blank at either
/// end. Goes scalar by scalar, so combining marks after a blank are kept.
std::string flattened(std::string_view text);
/// For a terminal: each control character (C0, DEL and C1) but line feeds and tabs as its number,
/// "\x1B", and ill-formed bytes repaired.
std::string withVisibleControls(std::string_view text);
/// U+2018 and U+2019 replaced by straight apostrophes.
std::string withStraightApostrophes(std::string_view text);

// ---- case and fold ----------------------------------------------------------------------------

/// Full lower-casing scalar by scalar, root locale, no context: a final sigma is "σ".
std::string lowercased(std::string_view text);
/// The text with its first scalar in full upper case, root locale: "ana ruiz" is "Ana ruiz".
std::string withUpperCaseFirst(std::string_view text);
/// Full case folding, for comparisons that ignore case but not diacritics.
std::string caseFolded(std::string_view text);
/// The fold: canonical decomposition, nonspacing marks dropped, full case folding. "Café" is
/// "cafe", "ß" is "ss", "ø" is kept. Folding twice changes nothing.
std::string folded(std::string_view text);
/// The fold of one scalar, through ICU; empty for a nonspacing mark.
std::string folded(char32_t scalar);
/// Appends the fold of the scalar at byte `at`; nothing for a nonspacing mark. Returns the scalar's
/// length in bytes.
std::size_t appendFolded(std::string& result, std::string_view text, std::size_t at);

bool equalsIgnoringCase(std::string_view a, std::string_view b);
bool startsWithIgnoringAsciiCase(std::string_view text, std::string_view asciiPrefix);

// ---- find -------------------------------------------------------------------------------------

inline bool contains(std::string_view text, std::string_view part) {
    return text.find(part) != std::string_view::npos;
}
}  // namespace ombrix::Text
