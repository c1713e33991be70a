// ICU's root break iterators over UTF-8. Opening one is expensive, so each thread keeps those it
// has opened and uses them again for the next text. Only .cpp files of this library include this
// header.
#pragma once

#include <cstddef>
#include <memory>
#include <string_view>
#include <vector>

namespace ombrix {

/// Borrows an ICU iterator for its own lifetime. Positions are byte offsets in the text, which must
/// outlive this object and be smaller than 2 GiB.
class BreakIterator {
  public:
    enum class Kind { character, word };
    static constexpr std::size_t done = static_cast<std::size_t>(-1);

    /// Throws std::bad_alloc when memory is short for it, or for the dictionary of a script in
    /// `text`.
    BreakIterator(Kind kind, std::string_view text);
    ~BreakIterator();
    BreakIterator(const BreakIterator&) = delete;
    BreakIterator& operator=(const BreakIterator&) = delete;

    /// The start of the text, where `next` goes on from.
    std::size_t first();
    /// The boundary after the last one given. This and the next two give `done` when there is none.
    std::size_t next();
    /// The first boundary after `place`.
    std::size_t following(std::size_t place);
    /// The last boundary before `place`.
    std::size_t preceding(std::size_t place);
    /// ICU's rule status of the segment that ends at the last boundary given: what kind of word.
    int ruleStatus() const;

  private:
    struct Handles;
    using Pool = std::vector<std::unique_ptr<Handles>>;
    static Pool& poolOf(Kind kind);

    Kind kind_;
    std::unique_ptr<Handles> handles_;
};
}  // namespace ombrix
