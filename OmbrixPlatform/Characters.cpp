#include "OmbrixPlatform/Characters.h"

#include <unicode/uchar.h>

#include "OmbrixPlatform/BreakIterator.h"
#include "OmbrixPlatform/Text.h"
#include "OmbrixPlatform/Utf8.h"

namespace ombrix::Characters {

namespace {

/// The length of the scalar that starts at `place` when it is below U+0300, otherwise 0. Of two
/// such scalars each is a character, except CR LF: all marks, prefixes and joiners come later.
std::size_t lengthOfPlain(std::string_view text, std::size_t place) {
    const auto byte = [&](std::size_t at) { return static_cast<unsigned char>(text[at]); };
    if (byte(place) < 0x80) return 1;
    const bool isPlain = byte(place) >= 0xC2 && byte(place) <= 0xCB && place + 1 < text.size() &&
                         (byte(place + 1) & 0xC0U) == 0x80;
    return isPlain ? 2 : 0;
}
}  // namespace

struct Cursor::Iterator {
    explicit Iterator(std::string_view text) : it(BreakIterator::Kind::character, text) {}
    BreakIterator it;
};

Cursor::Cursor(std::string_view text) : text_(text) {}
Cursor::~Cursor() = default;

Cursor::Iterator& Cursor::iterator() {
    if (!iterator_) iterator_ = std::make_unique<Iterator>(text_);
    return *iterator_;
}

std::size_t Cursor::after(std::size_t place) {
    if (place >= text_.size()) return text_.size();
    if (const std::size_t length = lengthOfPlain(text_, place)) {
        const std::size_t next = place + length;
        if (next == text_.size()) return next;
        if (lengthOfPlain(text_, next) > 0) {
            if (text_[place] != '\r' || text_[next] != '\n') return next;
            return next + 1;  // a mark never combines with a line feed
        }
    }
    return iterator().it.following(place);
}

// Two ASCII bytes are never one character, except CR LF.
std::size_t Cursor::before(std::size_t place) {
    if (place == 0) return 0;
    const std::size_t last = place - 1;
    if (Text::isAscii(text_[last])) {
        if (last == 0) return last;
        if (text_[last] == '\n' && text_[last - 1] == '\r') return last - 1;
        if (Text::isAscii(text_[last - 1])) return last;
    }
    return iterator().it.preceding(place);
}

std::size_t count(std::string_view text) {
    Cursor cursor(text);
    std::size_t characters = 0;
    for (std::size_t at = 0; at < text.size(); at = cursor.after(at)) ++characters;
    return characters;
}

std::size_t forward(std::string_view text, std::size_t from, std::size_t n) {
    Cursor cursor(text);
    while (n > 0 && from < text.size()) {
        from = cursor.after(from);
        --n;
    }
    return from;
}

std::size_t backward(std::string_view text, std::size_t from, std::size_t n) {
    Cursor cursor(text);
    while (n > 0 && from > 0) {
        from = cursor.before(from);
        --n;
    }
    return from;
}

std::vector<std::string_view> splitAtWhiteSpace(std::string_view text) {
    std::vector<std::string_view> pieces;
    Cursor cursor(text);
    std::size_t begin = 0;
    const auto finish = [&](std::size_t end) {
        if (end > begin) pieces.push_back(text.substr(begin, end - begin));
    };
    for (std::size_t at = 0; at < text.size();) {
        const std::size_t next = cursor.after(at);
        if (Text::isWhiteSpace(Utf8::decode(text, at).scalar)) {
            finish(at);
            begin = next;
        }
        at = next;
    }
    finish(text.size());
    return pieces;
}

bool isPrefix(char32_t scalar) {
    return u_getIntPropertyValue(static_cast<UChar32>(scalar), UCHAR_GRAPHEME_CLUSTER_BREAK) ==
           U_GCB_PREPEND;
}

bool hasAtLeast(std::string_view text, std::size_t n) {
    Cursor cursor(text);
    std::size_t at = 0;
    for (; n > 0; --n) {
        if (at >= text.size()) return false;
        at = cursor.after(at);
    }
    return true;
}
}  // namespace ombrix::Characters
