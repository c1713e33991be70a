// Searches that run over every byte of a library, 64 bytes a step. They find candidates; the
// tokenizer decides. docs/search.md shows where they are used.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "OmbrixMarkdownKit/Words/WordBeginnings.h"

namespace ombrix::ByteScan {

/// The first byte from `from` on that is a "1" or the start of "one", ignoring case; the size when
/// there is none.
std::size_t findOneForm(std::string_view text, std::size_t from);

/// Finds candidates for words whose normal form begins with one of some prefixes.
class WordStarts {
  public:
    /// The prefixes are folded, not empty, and end at a scalar. None of them: `next` finds
    /// nothing.
    explicit WordStarts(std::vector<std::string> prefixes);

    /// The first candidate from `from` on, or the size. Every word of the text (as the tokenizer
    /// cuts it, "one on one" not rewritten) whose normal form begins with a prefix has a candidate
    /// inside it; a candidate without such a word is possible, and rare.
    std::size_t next(std::string_view text, std::size_t from) const;

  private:
    WordBeginnings beginnings_;
    std::vector<std::pair<char, char>> pairs_;  // first bytes of the ASCII ones, each pair once
};
}  // namespace ombrix::ByteScan
