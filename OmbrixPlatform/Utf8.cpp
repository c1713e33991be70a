#include "OmbrixPlatform/Utf8.h"

#include <simdjson.h>

#include <cstdint>
#include <cstring>

namespace ombrix::Utf8 {
namespace {

constexpr std::uint64_t highBits = 0x8080808080808080U;

/// True when the first eight bytes are ASCII.
bool startsWithAsciiWord(std::string_view text) {
    std::uint64_t word = 0;
    if (text.size() < sizeof word) return false;
    std::memcpy(&word, text.data(), sizeof word);
    return (word & highBits) == 0;
}

bool isContinuation(char c) { return (static_cast<unsigned char>(c) & 0xC0U) == 0x80U; }

/// What a lead byte determines: the length of the sequence and the range of the second byte. Length
/// 0 means that the byte does not start a sequence.
struct Lead {
    std::size_t length;
    unsigned char lowest, highest;
};

Lead leadOf(unsigned char c) {
    if (c < 0xC2) return {0, 0, 0};
    if (c < 0xE0) return {2, 0x80, 0xBF};
    if (c == 0xE0) return {3, 0xA0, 0xBF};
    if (c == 0xED) return {3, 0x80, 0x9F};  // no surrogates
    if (c < 0xF0) return {3, 0x80, 0xBF};
    if (c == 0xF0) return {4, 0x90, 0xBF};
    if (c < 0xF4) return {4, 0x80, 0xBF};
    if (c == 0xF4) return {4, 0x80, 0x8F};
    return {0, 0, 0};
}

/// The length of the longest prefix of a well-formed sequence at `at`, at least 1: the bytes that
/// one U+FFFD replaces. The whole sequence when it is well-formed.
std::size_t maximalPart(std::string_view text, std::size_t at, bool& wellFormed) {
    const auto lead = leadOf(static_cast<unsigned char>(text[at]));
    wellFormed = false;
    if (lead.length == 0 || at + 1 >= text.size()) return 1;
    const auto second = static_cast<unsigned char>(text[at + 1]);
    if (second < lead.lowest || second > lead.highest) return 1;
    std::size_t length = 2;
    while (length < lead.length && at + length < text.size() && isContinuation(text[at + length]))
        ++length;
    wellFormed = length == lead.length;
    return length;
}
}  // namespace

bool isAscii(std::string_view text) {
    std::size_t at = 0;
    for (; at + 32 <= text.size(); at += 32) {
        std::uint64_t words[4];
        std::memcpy(words, text.data() + at, sizeof words);
        if (((words[0] | words[1] | words[2] | words[3]) & highBits) != 0) return false;
    }
    unsigned tail = 0;
    for (; at < text.size(); ++at) tail |= static_cast<unsigned char>(text[at]);
    return tail < 0x80;
}

bool isValid(std::string_view text) {
    // Below this, loading the library and calling it costs more than it saves.
    constexpr std::size_t shortText = 4096;
    if (text.size() >= shortText) return simdjson::validate_utf8(text.data(), text.size());
    if (isAscii(text)) return true;
    for (std::size_t at = 0; at < text.size();) {
        if (static_cast<unsigned char>(text[at]) < 0x80) {
            at += startsWithAsciiWord(text.substr(at)) ? sizeof(std::uint64_t) : 1;
            continue;
        }
        bool wellFormed = false;
        at += maximalPart(text, at, wellFormed);
        if (!wellFormed) return false;
    }
    return true;
}

std::string repaired(std::string_view text) {
    if (isValid(text)) return std::string(text);
    std::string result;
    result.reserve(text.size() + 16);
    for (std::size_t at = 0; at < text.size();) {
        if (static_cast<unsigned char>(text[at]) < 0x80) {
            result.push_back(text[at++]);
            continue;
        }
        bool wellFormed = false;
        const std::size_t length = maximalPart(text, at, wellFormed);
        if (wellFormed)
            result.append(text.substr(at, length));
        else
            append(result, replacement);
        at += length;
    }
    return result;
}

Decoded decode(std::string_view text, std::size_t at) {
    const auto first = static_cast<unsigned char>(text[at]);
    if (first < 0x80) return {first, 1};
    bool wellFormed = false;
    const std::size_t length = maximalPart(text, at, wellFormed);
    if (!wellFormed) return {replacement, 1};
    char32_t scalar = first & (0x7FU >> length);
    for (std::size_t i = 1; i < length; ++i)
        scalar = (scalar << 6U) | (static_cast<unsigned char>(text[at + i]) & 0x3FU);
    return {scalar, length};
}

std::size_t scalarStartBefore(std::string_view text, std::size_t at) {
    for (std::size_t length = 1; length <= 4 && length <= at; ++length) {
        if (!isContinuation(text[at - length]))
            return decode(text, at - length).length == length ? at - length : at - 1;
    }
    return at - 1;
}

void append(std::string& text, char32_t scalar) {
    if (scalar > 0x10FFFF || (scalar >= 0xD800 && scalar <= 0xDFFF)) scalar = replacement;
    const auto tail = [&](unsigned shift) {
        text.push_back(static_cast<char>(0x80U | ((scalar >> shift) & 0x3FU)));
    };
    if (scalar < 0x80) {
        text.push_back(static_cast<char>(scalar));
    } else if (scalar < 0x800) {
        text.push_back(static_cast<char>(0xC0U | (scalar >> 6U)));
        tail(0);
    } else if (scalar < 0x10000) {
        text.push_back(static_cast<char>(0xE0U | (scalar >> 12U)));
        tail(6);
        tail(0);
    } else {
        text.push_back(static_cast<char>(0xF0U | (scalar >> 18U)));
        tail(12);
        tail(6);
        tail(0);
    }
}

std::size_t utf16Length(std::string_view text) { return utf16Offset(text, text.size()); }

std::size_t utf16Offset(std::string_view text, std::size_t at) {
    std::size_t units = 0;
    for (std::size_t place = 0; place < at;) {
        const auto [scalar, length] = decode(text, place);
        units += scalar > 0xFFFF ? 2 : 1;
        place += length;
    }
    return units;
}

std::size_t byteOffset(std::string_view text, std::size_t unit) {
    std::size_t units = 0;
    std::size_t place = 0;
    while (place < text.size()) {
        const auto [scalar, length] = decode(text, place);
        units += scalar > 0xFFFF ? 2 : 1;
        if (units > unit) return place;
        place += length;
    }
    return place;
}
}  // namespace ombrix::Utf8
