// Regular expressions with ICU's syntax and semantics over UTF-8. An expression is a constant of
// the program. It is compiled at the first search; one that does not compile ends the process then.
// Searching is safe from several threads; texts are not copied.
//
// ICU limits its stack but not its time: do not search texts of any length with an expression that
// can match the same piece of text in many ways. Runs of white space are safe: `\s+` and `\s*` are
// compiled as `[\s]+` and `[\s]*`, which mean the same. For a set, ICU keeps one state for the
// whole run; for a bare `\s` it keeps one for each blank, and the search ends without a match at
// the limit, after half a million blanks.
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

    /// Group 0 is the whole match. A group that did not match has no range.
    struct Match {
        std::vector<std::optional<ByteRange>> groups;

        const ByteRange& range() const { return *groups.front(); }
        /// The group's part of `text`, the text that was searched; empty when it did not match.
        std::string_view group(std::size_t n, std::string_view text) const {
            return n < groups.size() && groups[n] ? groups[n]->of(text) : std::string_view();
        }
        bool has(std::size_t n) const { return n < groups.size() && groups[n].has_value(); }
    };

    /// True when the expression matches somewhere. This and every other search ends without a match
    /// when it reaches ICU's limit on backtracking.
    bool found(std::string_view text) const;
    std::optional<Match> firstMatch(std::string_view text, std::size_t from = 0) const;
    /// All matches, from left to right, not overlapping.
    std::vector<Match> matches(std::string_view text) const;
    /// The text with every match replaced by the result of `replacement` for it.
    std::string replacingAll(std::string_view text,
                             const std::function<std::string(const Match&)>& replacement) const;

    /// A pattern that matches `literal` exactly.
    static std::string escaped(std::string_view literal);

  private:
    struct Expression;
    std::unique_ptr<Expression> expression_;
};
}  // namespace ombrix
