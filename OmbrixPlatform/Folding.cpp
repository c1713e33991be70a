// Case, folds, character classes and searches that ignore case and diacritics: what needs ICU's
// character database.
#include <unicode/uchar.h>
#include <unicode/unorm2.h>
#include <unicode/ustring.h>

#include <array>
#include <cstdlib>

#include "OmbrixPlatform/Text.h"
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

void appendFold(std::string& result, char32_t scalar) {
    if (scalar < 0x80) {
        result.push_back(asciiLowercased(static_cast<char>(scalar)));
        return;
    }
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

bool isLetterOrNumber(char32_t scalar) {
    if (scalar < 0x80) return isAsciiAlphanumeric(static_cast<char>(scalar));
    return isLetter(scalar) || u_getIntPropertyValue(icu(scalar), UCHAR_NUMERIC_TYPE) != U_NT_NONE;
}

std::string lowercased(std::string_view text) {
    return mapped(text, [](std::string& result, char32_t scalar) {
        // The one scalar whose lower case is two, whatever stands around it.
        if (scalar == 0x130)
            result += "i\u0307";
        else
            Utf8::append(result, static_cast<char32_t>(u_tolower(icu(scalar))));
    });
}

std::string caseFolded(std::string_view text) { return mapped(text, appendCaseFold); }

std::string folded(std::string_view text) { return mapped(text, appendFold); }

std::string folded(char32_t scalar) {
    std::string result;
    appendFold(result, scalar);
    return result;
}

bool equalsIgnoringCase(std::string_view a, std::string_view b) {
    if (Utf8::isAscii(a) && Utf8::isAscii(b))
        return a.size() == b.size() && startsWithIgnoringAsciiCase(a, b);
    return caseFolded(a) == caseFolded(b);
}

FoldedText::FoldedText(std::string_view text) : sourceSize_(text.size()) {
    if (Utf8::isAscii(text)) {
        fold_ = folded(text);
        return;
    }
    fold_.reserve(text.size());
    sources_.reserve(text.size());
    for (std::size_t at = 0; at < text.size();) {
        const auto [scalar, length] = Utf8::decode(text, at);
        appendFold(fold_, scalar);
        sources_.resize(fold_.size(), at);
        at += length;
    }
}

std::optional<std::size_t> FoldedText::placeOf(std::string_view part) const {
    const std::string wanted = folded(part);
    if (wanted.empty()) return std::nullopt;
    const std::size_t place = fold_.find(wanted);
    if (place == std::string::npos) return std::nullopt;
    return place;
}

bool FoldedText::contains(std::string_view part) const { return placeOf(part).has_value(); }

std::optional<ByteRange> FoldedText::find(std::string_view part) const {
    const auto place = placeOf(part);
    if (!place) return std::nullopt;
    const std::size_t end = *place + folded(part).size();
    if (sources_.empty()) return ByteRange{*place, end};
    // The end lies where the next letter begins, behind the marks of the last one; when it falls
    // into the fold of one scalar ("ß" is "ss"), that scalar belongs to the place as a whole.
    std::size_t next = end;
    while (next < fold_.size() && sources_[next] == sources_[end - 1]) ++next;
    return ByteRange{sources_[*place], next == fold_.size() ? sourceSize_ : sources_[next]};
}

bool containsFolded(std::string_view text, std::string_view part) {
    return FoldedText(text).contains(part);
}

std::optional<ByteRange> findFolded(std::string_view text, std::string_view part) {
    return FoldedText(text).find(part);
}
}  // namespace ombrix::Text
