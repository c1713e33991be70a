// Searches that run over every byte of a library, 64 bytes a step. They say where it is worth
// looking closer; the tokenizer has the last word.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace ombrix::ByteScan {

/// The first byte at or behind `from` that is a "1" or begins "one" in any case; the size when
/// there is none.
std::size_t findOneForm(std::string_view text, std::size_t from);

/// Finds where words may stand that begin, in their normal form, with one of some beginnings.
class WordStarts {
  public:
    /// Each beginning is folded and not empty.
    explicit WordStarts(std::vector<std::string> beginnings);

    /// The first such place at or behind `from`, or the size. Every word of the text (as the
    /// tokenizer cuts it, "one on one" not rewritten) whose normal form begins with a beginning has
    /// a place inside it; a place without such a word is possible and rare in ASCII text.
    std::size_t next(std::string_view text, std::size_t from) const;

  private:
    bool mayBeginAt(std::string_view text, std::size_t at) const;

    std::vector<std::string> beginnings_;
    std::vector<std::pair<char, char>> pairs_;  // first and second byte, each pair once
};
}  // namespace ombrix::ByteScan
