#include "OmbrixPlatform/Text.h"

#include <unicode/uchar.h>
#include <unicode/unorm2.h>
#include <unicode/ustring.h>

#include <algorithm>
#include <array>
#include <cstdlib>

#include "OmbrixPlatform/Letters.h"
#include "OmbrixPlatform/Numbers.h"
#include "OmbrixPlatform/Utf8.h"

namespace ombrix::Text {
namespace {

UChar32 icu(char32_t scalar) { return static_cast<UChar32>(scalar); }

const UNormalizer2* nfd() {
    static const UNormalizer2* const instance = [] {
        UErrorCode status = U_ZERO_ERROR;
        const UNormalizer2* found = unorm2_getNFDInstance(&status);
        if (U_FAILURE(status)) std::abort();  // the data is part of the library
        return found;
    }();
    return instance;
}

void appendUtf16(std::string& text, const UChar* units, std::int32_t count) {
    for (std::int32_t i = 0; i < count;) {
        UChar32 scalar = 0;
        U16_NEXT(units, i, count, scalar);
        Utf8::append(text, static_cast<char32_t>(scalar));
    }
}

void appendCaseFold(std::string& result, char32_t scalar) {
    std::array<UChar, 2> source{};
    std::int32_t length = 0;
    U16_APPEND_UNSAFE(source.data(), length, icu(scalar));
    std::array<UChar, 8> target{};
    UErrorCode status = U_ZERO_ERROR;
    const std::int32_t folded =
        u_strFoldCase(target.data(), static_cast<std::int32_t>(target.size()), source.data(),
                      length, U_FOLD_CASE_DEFAULT, &status);
    appendUtf16(result, target.data(), folded);
}

template <typename Append>
std::string mapped(std::string_view text, Append append) {
    std::string result;
    result.reserve(text.size() + 8);
    for (std::size_t at = 0; at < text.size();) {
        if (isAscii(text[at])) {
            result.push_back(asciiLowercased(text[at++]));
            continue;
        }
        const auto [scalar, length] = Utf8::decode(text, at);
        append(result, scalar);
        at += length;
    }
    return result;
}

template <typename Predicate>
std::string_view trimmedWhile(std::string_view text, Predicate drop) {
    // Most texts have nothing to trim, and begin and end with ASCII.
    const auto stays = [&](char c) { return isAscii(c) && !drop(static_cast<char32_t>(c)); };
    if (!text.empty() && stays(text.front()) && stays(text.back())) return text;
    std::size_t begin = 0;
    while (begin < text.size()) {
        const auto [scalar, length] = Utf8::decode(text, begin);
        if (!drop(scalar)) break;
        begin += length;
    }
    std::size_t end = text.size();
    while (end > begin) {
        const std::size_t start = Utf8::scalarStartBefore(text, end);
        if (start < begin || !drop(Utf8::decode(text, start).scalar)) break;
        end = start;
    }
    return text.substr(begin, end - begin);
}

template <typename Piece>
std::string joinedPieces(const std::vector<Piece>& pieces, std::string_view separator) {
    std::string result;
    std::size_t size = pieces.size() * separator.size();
    for (const auto& piece : pieces) size += piece.size();
    result.reserve(size);
    for (std::size_t i = 0; i < pieces.size(); ++i) {
        if (i > 0) result += separator;
        result += pieces[i];
    }
    return result;
}
}  // namespace

bool isWhiteSpace(char32_t scalar) {
    if (scalar < 0x80) return scalar == ' ' || (scalar >= 0x09 && scalar <= 0x0D);
    return u_isUWhiteSpace(icu(scalar)) != 0;
}

bool isAlphanumeric(char32_t scalar) {
    if (scalar < 0x80) return isAsciiAlphanumeric(static_cast<char>(scalar));
    return (U_GET_GC_MASK(icu(scalar)) & (U_GC_L_MASK | U_GC_M_MASK | U_GC_N_MASK)) != 0;
}

bool isLetter(char32_t scalar) {
    if (scalar < 0x80) return isAsciiLetter(static_cast<char>(scalar));
    return u_isUAlphabetic(icu(scalar)) != 0;
}

bool isDigit(char32_t scalar) {
    if (scalar < 0x80) return isAsciiDigit(static_cast<char>(scalar));
    return (U_GET_GC_MASK(icu(scalar)) & U_GC_N_MASK) != 0;
}

bool isLetterOrNumber(char32_t scalar) {
    if (scalar < 0x80) return isAsciiAlphanumeric(static_cast<char>(scalar));
    return isLetter(scalar) || isNumber(scalar);
}

bool isUppercase(char32_t scalar) {
    if (scalar < 0x80) return scalar >= 'A' && scalar <= 'Z';
    return u_isUUppercase(icu(scalar)) != 0;
}

bool isNumber(char32_t scalar) {
    if (scalar < 0x80) return isAsciiDigit(static_cast<char>(scalar));
    return u_getIntPropertyValue(icu(scalar), UCHAR_NUMERIC_TYPE) != U_NT_NONE;
}

bool isDecimalDigit(char32_t scalar) {
    if (scalar < 0x80) return isAsciiDigit(static_cast<char>(scalar));
    return u_isdigit(icu(scalar)) != 0;
}

std::optional<int> decimalDigitValue(char32_t scalar) {
    if (!isDecimalDigit(scalar)) return std::nullopt;
    return u_charDigitValue(icu(scalar));
}

bool isCaselessLetter(char32_t scalar) {
    constexpr char32_t firstGeorgian = 0x10D0, lastGeorgian = 0x10FF;
    if (scalar < 0x80) return false;
    if (scalar >= firstGeorgian && scalar <= lastGeorgian) return true;
    constexpr std::uint32_t cased = U_GC_LU_MASK | U_GC_LL_MASK | U_GC_LT_MASK;
    return (U_GET_GC_MASK(icu(scalar)) & ((U_GC_L_MASK & ~cased) | U_GC_M_MASK)) != 0;
}

std::string_view trimmed(std::string_view text) { return trimmedWhile(text, isWhiteSpace); }

std::string_view trimmedBlanks(std::string_view text) {
    return trimmedWhile(text, [](char32_t scalar) {
        if (scalar < 0x80) return scalar == ' ' || scalar == '\t';
        return isWhiteSpace(scalar) && scalar != 0x85 && scalar != 0x2028 && scalar != 0x2029;
    });
}

std::string_view trimmedSpacesAndTabs(std::string_view text) {
    const auto isBlank = [](char c) { return c == ' ' || c == '\t'; };
    std::size_t begin = 0, end = text.size();
    while (begin < end && isBlank(text[begin])) ++begin;
    while (begin < end && isBlank(text[end - 1])) --end;
    return text.substr(begin, end - begin);
}

std::vector<std::string_view> split(std::string_view text, std::string_view separator) {
    std::vector<std::string_view> pieces;
    std::size_t begin = 0;
    for (std::size_t at; (at = text.find(separator, begin)) != std::string_view::npos;
         begin = at + separator.size()) {
        pieces.push_back(text.substr(begin, at - begin));
    }
    pieces.push_back(text.substr(begin));
    return pieces;
}

std::vector<std::string_view> splitDroppingEmpty(std::string_view text,
                                                 std::string_view separator) {
    auto pieces = split(text, separator);
    std::erase_if(pieces, [](std::string_view piece) { return piece.empty(); });
    return pieces;
}

std::string joined(const std::vector<std::string_view>& pieces, std::string_view separator) {
    return joinedPieces(pieces, separator);
}

std::string joined(const std::vector<std::string>& pieces, std::string_view separator) {
    return joinedPieces(pieces, separator);
}

std::string replacingAll(std::string_view text, std::string_view from, std::string_view to) {
    std::string result;
    result.reserve(text.size());
    std::size_t begin = 0;
    for (std::size_t at; (at = text.find(from, begin)) != std::string_view::npos;
         begin = at + from.size()) {
        result += text.substr(begin, at - begin);
        result += to;
    }
    result += text.substr(begin);
    return result;
}

std::string withLineFeeds(std::string_view text) { return replacingAll(text, "\r\n", "\n"); }

std::string flattened(std::string_view text) {
    std::string flat;
    flat.reserve(text.size());
    bool inGap = false;
    for (std::size_t at = 0; at < text.size();) {
        const auto [scalar, length] = Utf8::decode(text, at);
        const bool isGap = isWhiteSpace(scalar);
        if (!isGap) {
            if (inGap && !flat.empty()) flat.push_back(' ');
            flat += text.substr(at, length);
        }
        inGap = isGap;
        at += length;
    }
    return flat;
}

std::string withVisibleControls(std::string_view given) {
    const std::string text = Utf8::repaired(given);
    std::string result;
    for (std::size_t at = 0; at < text.size();) {
        const auto [scalar, length] = Utf8::decode(text, at);
        if (isControl(scalar) && scalar != '\n' && scalar != '\t') {
            result += "\\x";
            Numbers::appendHex(result, static_cast<std::uint8_t>(scalar),
                               Numbers::HexDigits::upper);
        } else {
            result.append(text, at, length);
        }
        at += length;
    }
    return result;
}

std::string withStraightApostrophes(std::string_view text) {
    constexpr std::string_view quoteLead = "\xE2\x80";  // of U+2018 and U+2019
    if (text.find(quoteLead) == std::string_view::npos) return std::string(text);
    return replacingAll(replacingAll(text, "\u2019", "'"), "\u2018", "'");
}

std::string lowercased(std::string_view text) {
    return mapped(text, [](std::string& result, char32_t scalar) {
        // The only scalar whose lower case is two scalars in any context.
        if (scalar == 0x130)
            result += "i\u0307";
        else
            Utf8::append(result, static_cast<char32_t>(u_tolower(icu(scalar))));
    });
}

std::string withUpperCaseFirst(std::string_view text) {
    if (text.empty()) return {};
    const auto [scalar, length] = Utf8::decode(text, 0);
    std::array<UChar, 2> units{};
    std::int32_t count = 0;
    U16_APPEND_UNSAFE(units.data(), count, icu(scalar));
    std::array<UChar, 8> upper{};  // no scalar has an upper case of more than three
    UErrorCode status = U_ZERO_ERROR;
    const auto upperCount = u_strToUpper(upper.data(), static_cast<std::int32_t>(upper.size()),
                                         units.data(), count, "", &status);
    std::string result;
    appendUtf16(result, upper.data(), upperCount);
    return result += text.substr(length);
}

std::string caseFolded(std::string_view text) { return mapped(text, appendCaseFold); }

std::string folded(char32_t scalar) {
    std::string result;
    std::array<UChar, 32> units{};
    UErrorCode status = U_ZERO_ERROR;
    std::int32_t count = unorm2_getDecomposition(nfd(), icu(scalar), units.data(),
                                                 static_cast<std::int32_t>(units.size()), &status);
    if (count < 0 || U_FAILURE(status)) {
        count = 0;
        U16_APPEND_UNSAFE(units.data(), count, icu(scalar));
    }
    for (std::int32_t i = 0; i < count;) {
        UChar32 part = 0;
        U16_NEXT(units.data(), i, count, part);
        if (u_charType(part) != U_NON_SPACING_MARK)
            appendCaseFold(result, static_cast<char32_t>(part));
    }
    return result;
}

std::size_t appendFolded(std::string& result, std::string_view text, std::size_t at) {
    if (isAscii(text[at])) {
        result.push_back(asciiLowercased(text[at]));
        return 1;
    }
    const auto found = Letters::find(text, at);
    if (found.letter.foldSize != Letters::Letter::noFold) {
        result += Letters::foldOf(found, text, at);
        return found.length;
    }
    const auto [scalar, length] = Utf8::decode(text, at);
    result += folded(scalar);
    return length;
}

std::string folded(std::string_view text) {
    std::string result;
    result.reserve(text.size() + 8);
    for (std::size_t at = 0; at < text.size();) at += appendFolded(result, text, at);
    return result;
}

bool equalsIgnoringCase(std::string_view a, std::string_view b) {
    if (Utf8::isAscii(a) && Utf8::isAscii(b))
        return a.size() == b.size() && startsWithIgnoringAsciiCase(a, b);
    return caseFolded(a) == caseFolded(b);
}

bool startsWithIgnoringAsciiCase(std::string_view text, std::string_view asciiPrefix) {
    return text.size() >= asciiPrefix.size() &&
           std::equal(asciiPrefix.begin(), asciiPrefix.end(), text.begin(),
                      [](char a, char b) { return asciiLowercased(a) == asciiLowercased(b); });
}
}  // namespace ombrix::Text
