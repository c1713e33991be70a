// Regular expressions with ICU's syntax and semantics over UTF-8. An expression is a constant of
// the program, compiled when it is first searched for; one that does not compile ends the process
// then. Searching is safe from several threads; texts are never copied.
//
// ICU bounds its stack and not its time: an expression that can match a stretch of text in many
// ways does not belong over texts of any length. Runs of white space are safe: `\s+` and `\s*` are
// compiled as `[\s]+` and `[\s]*`, which mean the same. ICU repeats a set in one state, but for a
// bare `\s` it keeps a way back for every blank and ends the whole search after half a million.
#pragma once

#include <cstddef>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "OmbrixPlatform/ByteRange.h"

namespace ombrix {

class Regex {
  public:
    enum class Case { sensitive, ignored };

    /// `multiline` lets ^ and $ match at line ends, as (?m) does.
    explicit Regex(std::string_view pattern, Case letterCase = Case::sensitive,
                   bool multiline = false);
    ~Regex();
    Regex(Regex&&) noexcept;
    Regex& operator=(Regex&&) noexcept;

    /// Group 0 is the whole match; a group that took no part has no range.
    struct Match {
        std::vector<std::optional<ByteRange>> groups;

        const ByteRange& range() const { return *groups.front(); }
        /// The text of a group, in `text`, the text that was searched; empty when it took no part.
        std::string_view group(std::size_t n, std::string_view text) const {
            return n < groups.size() && groups[n] ? groups[n]->of(text) : std::string_view();
        }
        bool has(std::size_t n) const { return n < groups.size() && groups[n].has_value(); }
    };

    /// True when the expression matches somewhere. An expression that would need more than ICU's
    /// bound on backtracking matches nothing; so with all searches here.
    bool found(std::string_view text) const;
    std::optional<Match> firstMatch(std::string_view text, std::size_t from = 0) const;
    /// All matches, from left to right, not overlapping.
    std::vector<Match> matches(std::string_view text) const;
    /// The text with every match replaced by what `replacement` gives for it.
    std::string replacingAll(std::string_view text,
                             const std::function<std::string(const Match&)>& replacement) const;

    /// A pattern that matches `literal` as it stands.
    static std::string escaped(std::string_view literal);

  private:
    struct Expression;
    std::unique_ptr<Expression> expression_;
};
}  // namespace ombrix
