#include "OmbrixPlatform/Characters.h"

#include "OmbrixPlatform/BreakIterator.h"
#include "OmbrixPlatform/Letters.h"
#include "OmbrixPlatform/Text.h"
#include "OmbrixPlatform/Utf8.h"

namespace ombrix::Characters {

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

// Of two scalars that stand alone each is a character, except CR LF.
std::size_t Cursor::afterAny(std::size_t place) {
    if (place >= text_.size()) return text_.size();
    if (const auto [letter, length] = Letters::find(text_, place); letter.standsAlone) {
        const std::size_t next = place + length;
        if (next == text_.size()) return next;
        if (text_[place] == '\r' && text_[next] == '\n') return next + 1;
        if (Letters::find(text_, next).letter.standsAlone) return next;
    }
    return iterator().it.following(place);
}

std::size_t Cursor::before(std::size_t place) {
    if (place == 0) return 0;
    if (const auto [letter, length] = Letters::findBefore(text_, place); letter.standsAlone) {
        const std::size_t last = place - length;
        if (last == 0) return last;
        if (text_[last] == '\n' && text_[last - 1] == '\r') return last - 1;
        if (Letters::findBefore(text_, last).letter.standsAlone) return last;
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
