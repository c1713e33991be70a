#include "OmbrixPlatform/Text.h"

#include <algorithm>

#include "OmbrixPlatform/Characters.h"
#include "OmbrixPlatform/Utf8.h"

namespace ombrix::Text {
namespace {

template <typename Predicate>
std::string_view trimmedWhile(std::string_view text, Predicate drop) {
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

std::string_view trimmed(std::string_view text) { return trimmedWhile(text, isWhiteSpace); }

std::string_view trimmedBlanks(std::string_view text) {
    return trimmedWhile(text, [](char32_t scalar) {
        if (scalar < 0x80) return scalar == ' ' || scalar == '\t';
        return isWhiteSpace(scalar) && scalar != 0x85 && scalar != 0x2028 && scalar != 0x2029;
    });
}

std::string_view trimmedSpacesAndTabs(std::string_view text) {
    const std::size_t begin = text.find_first_not_of(" \t");
    if (begin == std::string_view::npos) return text.substr(text.size());
    return text.substr(begin, text.find_last_not_of(" \t") + 1 - begin);
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

std::vector<std::string_view> splitAtWhiteSpace(std::string_view text) {
    std::vector<std::string_view> pieces;
    Characters::Cursor cursor(text);
    std::size_t begin = 0;
    const auto finish = [&](std::size_t end) {
        if (end > begin) pieces.push_back(text.substr(begin, end - begin));
    };
    for (std::size_t at = 0; at < text.size();) {
        const std::size_t next = cursor.after(at);
        if (isWhiteSpace(Utf8::decode(text, at).scalar)) {
            finish(at);
            begin = next;
        }
        at = next;
    }
    finish(text.size());
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

std::string withStraightApostrophes(std::string_view text) {
    constexpr std::string_view quoteLead = "\xE2\x80";  // of U+2018 and U+2019
    if (text.find(quoteLead) == std::string_view::npos) return std::string(text);
    return replacingAll(replacingAll(text, "\u2019", "'"), "\u2018", "'");
}

bool startsWithIgnoringAsciiCase(std::string_view text, std::string_view asciiPrefix) {
    return text.size() >= asciiPrefix.size() &&
           std::equal(asciiPrefix.begin(), asciiPrefix.end(), text.begin(),
                      [](char a, char b) { return asciiLowercased(a) == asciiLowercased(b); });
}
}  // namespace ombrix::Text
