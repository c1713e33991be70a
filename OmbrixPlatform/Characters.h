// A text as a person counts it: extended grapheme clusters, CR LF being one. Offsets are bytes and
// stand on the boundaries of characters.
#pragma once

#include <cstddef>
#include <memory>
#include <string_view>
#include <vector>

namespace ombrix::Characters {

/// Steps over the characters of one text. ASCII costs a few instructions a step; the rest asks ICU,
/// whose iterator is set up once. The text must outlive the cursor.
class Cursor {
  public:
    explicit Cursor(std::string_view text);
    ~Cursor();
    Cursor(const Cursor&) = delete;
    Cursor& operator=(const Cursor&) = delete;

    /// The boundary behind the character that begins at `place`; the size at the end.
    std::size_t after(std::size_t place);
    /// The beginning of the character that ends at `place`; 0 at the beginning.
    std::size_t before(std::size_t place);

  private:
    struct Iterator;
    Iterator& iterator();
    std::string_view text_;
    std::unique_ptr<Iterator> iterator_;
};

/// How many characters `text` holds; linear.
std::size_t count(std::string_view text);

/// The byte behind `n` characters from `from` on, or the size when fewer are left.
std::size_t forward(std::string_view text, std::size_t from, std::size_t n);

/// The byte `n` characters before `from`, or 0 when fewer stand there.
std::size_t backward(std::string_view text, std::size_t from, std::size_t n);

/// The first `n` characters; `text`'s bytes.
inline std::string_view prefix(std::string_view text, std::size_t n) {
    return text.substr(0, forward(text, 0, n));
}

/// The runs of characters that are not white space. A character is white space by its first scalar,
/// so marks that stand on a blank go with it.
std::vector<std::string_view> splitAtWhiteSpace(std::string_view text);

/// True for the few scalars that join what stands behind them into their own character.
bool isPrefix(char32_t scalar);

/// True when `text` has at least `n` characters; looks no farther than that.
bool hasAtLeast(std::string_view text, std::size_t n);
}  // namespace ombrix::Characters
