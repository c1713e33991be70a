// ICU's root break iterators over UTF-8. Opening one is dear, so a thread keeps those it has opened
// and points them at text after text. Only the .cpp files of this storey include this header.
#pragma once

#include <cstddef>
#include <memory>
#include <string_view>
#include <vector>

namespace ombrix {

/// Borrows an iterator of its kind for its own lifetime. Places are bytes of the text that was
/// given, which must outlive it and stay below 2 GiB.
class BreakIterator {
  public:
    enum class Kind { character, word };
    static constexpr std::size_t done = static_cast<std::size_t>(-1);

    BreakIterator(Kind kind, std::string_view text);
    ~BreakIterator();
    BreakIterator(const BreakIterator&) = delete;
    BreakIterator& operator=(const BreakIterator&) = delete;

    std::size_t first();
    std::size_t next();
    /// The first boundary behind `place`.
    std::size_t following(std::size_t place);
    /// The last boundary before `place`.
    std::size_t preceding(std::size_t place);
    int ruleStatus() const;

  private:
    struct Handles;
    using Pool = std::vector<std::unique_ptr<Handles>>;
    static Pool& poolOf(Kind kind);

    Kind kind_;
    std::unique_ptr<Handles> handles_;
};
}  // namespace ombrix
