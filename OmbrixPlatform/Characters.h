// The characters of a text as a person counts them: extended grapheme clusters; CR LF is one.
// Positions are byte offsets of character boundaries.
#pragma once

#include <cstddef>
#include <memory>
#include <string_view>
#include <vector>

namespace ombrix::Characters {

/// Steps over the characters of one text. A step between scalars that stand alone (Letters.h), as
/// most do, costs a few instructions; others ask ICU, whose iterator is set up once. The text must
/// outlive the cursor.
class Cursor {
  public:
    explicit Cursor(std::string_view text);
    ~Cursor();
    Cursor(const Cursor&) = delete;
    Cursor& operator=(const Cursor&) = delete;

    /// The end of the character that starts at `place`; the text's size at the end.
    std::size_t after(std::size_t place) {
        return isBetweenAscii(place) ? place + 1 : afterAny(place);
    }
    /// The start of the character that ends at `place`; 0 at the start.
    std::size_t before(std::size_t place);

  private:
    struct Iterator;
    Iterator& iterator();
    std::size_t afterAny(std::size_t place);

    /// True for a character of one byte with one after it, as nearly all are.
    bool isBetweenAscii(std::size_t place) const {
        const auto isAscii = [&](std::size_t at) {
            return static_cast<unsigned char>(text_[at]) < 0x80;
        };
        return place + 1 < text_.size() && isAscii(place) && isAscii(place + 1) &&
               text_[place] != '\r';
    }

    std::string_view text_;
    std::unique_ptr<Iterator> iterator_;
};

/// The number of characters in `text`; linear.
std::size_t count(std::string_view text);

/// The byte offset `n` characters after `from`; the text's size when fewer are left.
std::size_t forward(std::string_view text, std::size_t from, std::size_t n);

/// The byte offset `n` characters before `from`; 0 when there are fewer.
std::size_t backward(std::string_view text, std::size_t from, std::size_t n);

/// The first `n` characters, as a view of `text`.
inline std::string_view prefix(std::string_view text, std::size_t n) {
    return text.substr(0, forward(text, 0, n));
}

/// The pieces between white space, none of them empty. A character is white space when its first
/// scalar is, so combining marks after a blank are dropped with it.
std::vector<std::string_view> splitAtWhiteSpace(std::string_view text);

/// True when `text` has at least `n` characters; reads no further than that.
bool hasAtLeast(std::string_view text, std::size_t n);
}  // namespace ombrix::Characters
