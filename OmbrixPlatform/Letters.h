// What a scalar is to words and to folds, for loops that run over every character of a library: a
// table of the Basic Multilingual Plane that the build derives from ICU's data. Words of scalars
// whose kind is known can be cut and folded without ICU; docs/search.md says where that is done.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

namespace ombrix::Letters {

/// What the rules for word boundaries make of a scalar. Only ICU can tell where words end beside an
/// `unknown` one: marks and joiners, scripts that need a dictionary, all scalars after U+FFFF, and
/// bytes that are not UTF-8.
enum class Kind : std::uint8_t {
    unknown,
    gap,     ///< in no word
    letter,  ///< with "@"
    digit,
    connector,       ///< "_" and its relatives: in a word, and a word when there are two
    betweenLetters,  ///< "·": inside a word between two letters
    betweenDigits,   ///< "," and ";": between two digits
    betweenBoth,     ///< ".", "'" and "’": between two letters or two digits
};

struct Letter {
    Kind kind = Kind::unknown;
    /// The bytes of `fold`; `asItIs` when the fold is the scalar itself and not repeated there;
    /// `noFold` when only `Text::folded` knows it.
    std::uint8_t foldSize = noFold;
    /// How many characters the scalar adds to the normal form of its word; its fold is these. 0 for
    /// a scalar that is dropped, as punctuation is, or that only ICU can judge, as marks are.
    std::uint8_t characters = 0;
    /// True for a scalar that forms one character with the scalar after it.
    bool isPrefix : 1 = false;
    /// True for a scalar that forms none with another that stands alone, but for CR with LF.
    bool standsAlone : 1 = false;
    /// True for a scalar of a run that is cut into words with a dictionary.
    bool needsDictionary : 1 = false;
    /// True for marks and joiners, which no word boundary separates from what is before them, and
    /// for all that is not in the table.
    bool attaches : 1 = true;
    std::array<char, 4> fold{};

    static constexpr std::uint8_t asItIs = 0xFE;
    static constexpr std::uint8_t noFold = 0xFF;

    constexpr bool isKnown() const { return kind != Kind::unknown; }
    /// True for a letter or digit that is in the normal form of its word.
    constexpr bool isSpelled() const {
        return (kind == Kind::letter || kind == Kind::digit) && characters > 0;
    }
    bool operator==(const Letter&) const = default;
};

/// The letter of the scalar that starts at a place, and its length in bytes. The length means
/// nothing when the letter has `noFold`.
struct Found {
    Letter letter;
    std::size_t length = 0;
};

/// The fold of a scalar that was found at `at`, as a view of `found` or of the text; valid when its
/// size is not `noFold`.
inline std::string_view foldOf(const Found& found, std::string_view text, std::size_t at) {
    if (found.letter.foldSize == Letter::asItIs) return text.substr(at, found.length);
    return {found.letter.fold.data(), found.letter.foldSize};
}
std::string_view foldOf(const Found&& found, std::string_view text, std::size_t at) = delete;

/// The scalar that starts at `at`, which must be less than the size. An unknown letter for a byte
/// that starts no scalar of the plane.
inline Found find(std::string_view text, std::size_t at);

/// The same for the scalar that ends at `end`, which must be greater than 0.
inline Found findBefore(std::string_view text, std::size_t end);

/// True for kinds that join: between two of them is no boundary.
constexpr bool isJoined(Kind kind) {
    return kind == Kind::letter || kind == Kind::digit || kind == Kind::connector;
}
/// True when a word goes on over a single scalar of kind `middle`.
constexpr bool bridges(Kind before, Kind middle, Kind after) {
    if (before != after) return false;
    if (before == Kind::letter)
        return middle == Kind::betweenLetters || middle == Kind::betweenBoth;
    return before == Kind::digit && (middle == Kind::betweenDigits || middle == Kind::betweenBoth);
}

// ---- the table ----------------------------------------------------------------------------------

namespace Table {
constexpr std::size_t pageSize = 64;  // the scalars that differ in their last byte
constexpr std::size_t asciiPages = 2;

/// Pages of letters: first those of ASCII, then one of unknown letters, then the others, each once.
extern const Letter letters[];
extern const std::size_t letterCount;
/// The page for each lead byte of two, less 0xC0, and for the leads and second bytes of three.
extern const std::uint16_t pagesOfTwo[32];
extern const std::uint16_t pagesOfThree[1024];
}  // namespace Table

inline Found find(std::string_view text, std::size_t at) {
    using namespace Table;
    const auto byte = [&](std::size_t i) -> unsigned {
        return static_cast<unsigned char>(text[at + i]);
    };
    const auto isTail = [&](std::size_t i) { return (byte(i) & 0xC0U) == 0x80; };
    const unsigned lead = byte(0);
    const std::size_t left = text.size() - at;
    if (lead < 0x80) return {letters[lead], 1};
    if (lead >= 0xC0 && lead < 0xE0) {
        if (left > 1 && isTail(1))
            return {letters[pagesOfTwo[lead & 0x1FU] * pageSize + (byte(1) & 0x3FU)], 2};
    } else if (lead >= 0xE0 && lead < 0xF0) {
        if (left > 2 && isTail(1) && isTail(2)) {
            const std::size_t page = pagesOfThree[(lead & 0x0FU) << 6U | (byte(1) & 0x3FU)];
            return {letters[page * pageSize + (byte(2) & 0x3FU)], 3};
        }
    }
    return {letters[asciiPages * pageSize], 1};
}

inline Found findBefore(std::string_view text, std::size_t end) {
    for (std::size_t length = 1; length <= 3 && length <= end; ++length) {
        const bool isTail = (static_cast<unsigned char>(text[end - length]) & 0xC0U) == 0x80;
        if (isTail) continue;
        const Found found = find(text.substr(0, end), end - length);
        if (found.length == length) return found;
        break;
    }
    return {Table::letters[Table::asciiPages * Table::pageSize], 1};
}
}  // namespace ombrix::Letters
