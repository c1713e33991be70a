// Searches that run over every byte of a library. They find candidates; the tokenizer decides.
// docs/search.md shows where they are used.
#pragma once

#include <array>
#include <bit>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "OmbrixMarkdownKit/Words/WordBeginnings.h"
#include "OmbrixMarkdownKit/Words/WordMarks.h"

namespace ombrix::ByteScan {

/// Walks the marked bytes of a text, which must outlive it.
class MarkedPlaces {
  public:
    MarkedPlaces(const WordMarks::Beginnings& beginnings, std::string_view text)
        : beginnings_(beginnings), text_(text) {}

    /// The first marked byte from `from` on, or the size. Quick when `from` never goes back.
    std::size_t next(std::size_t from) {
        if (from < begin_ || from >= end_) return nextUnread(from);
        std::size_t block = (from - begin_) / WordMarks::blockSize;
        std::uint64_t bits =
            marks_[block] & (~std::uint64_t{0} << ((from - begin_) % WordMarks::blockSize));
        const std::size_t blocks = (end_ - begin_ - 1) / WordMarks::blockSize;
        while (bits == 0) {
            if (block == blocks) return nextUnread(end_);
            bits = marks_[++block];
        }
        return begin_ + block * WordMarks::blockSize +
               static_cast<std::size_t>(std::countr_zero(bits));
    }

  private:
    static constexpr std::size_t blocksRead = 64;

    std::size_t nextUnread(std::size_t from);
    void read(std::size_t from);
    std::size_t readBeside(std::size_t from);

    const WordMarks::Beginnings& beginnings_;
    std::string_view text_;
    std::size_t begin_ = 0, end_ = 0;  // the bytes whose marks are known
    std::array<std::uint64_t, blocksRead> marks_;
};

/// Finds each byte of a text, which must outlive it, that is a "1" or the start of "one", ignoring
/// case.
class OneForms {
  public:
    explicit OneForms(std::string_view text);
    /// The first such byte from `from` on, or the size. Quick when `from` never goes back.
    std::size_t next(std::size_t from);

  private:
    std::string_view text_;
    MarkedPlaces marked_;
};

/// Finds candidates for words whose normal form begins with one of some prefixes.
class WordStarts {
  public:
    /// The prefixes are folded, not empty, and end at a scalar. None of them: there are no
    /// candidates.
    explicit WordStarts(std::vector<std::string> prefixes);

    /// Walks the candidates of a text; the prefixes and the text must outlive it.
    class Walk {
      public:
        Walk(const WordStarts& starts, std::string_view text)
            : starts_(starts), text_(text), marked_(starts.marked_, text) {}

        /// The first candidate from `from` on, or the size. Every word of the text (as the
        /// tokenizer cuts it, "one on one" not rewritten) whose normal form begins with a prefix
        /// has a candidate inside it; a candidate without such a word is possible, and rare. Quick
        /// when `from` never goes back.
        std::size_t next(std::size_t from) {
            if (starts_.beginnings_.prefixes().empty()) return text_.size();
            std::size_t place = marked_.next(from);
            while (place < text_.size() && !starts_.beginnings_.mayBeginAt(text_, place))
                place = marked_.next(place + 1);
            return place;
        }

      private:
        const WordStarts& starts_;
        std::string_view text_;
        MarkedPlaces marked_;
    };

  private:
    WordBeginnings beginnings_;
    WordMarks::Beginnings marked_;
};
}  // namespace ombrix::ByteScan
