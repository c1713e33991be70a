// The frontmatter of the engine's Markdown files: scalars and lists of strings, a small part of
// YAML.
//
//   ---
//   title: "Q3: launch"
//   commitments: []
//   recipients:
//     - Ana Ruiz
//   ---
#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace ombrix::Frontmatter {

/// A value as it is written: between double quotes, with a backslash before each double quote in
/// it, when it contains ":", "#" or a quote or begins with "["; else bare.
std::string quotedScalar(std::string_view value);

/// Writes "---", the fields in the order in which they are added, and "---". A value is one line:
/// the white space in one that has line ends becomes single blanks.
class Writer {
  public:
    /// `value` as it is.
    Writer& bare(std::string_view key, std::string_view value);
    Writer& quoted(std::string_view key, std::string_view value);
    /// Each item by `quotedScalar` on a line of its own; "[]" for none.
    Writer& list(std::string_view key, const std::vector<std::string>& items);
    /// The same with each item as it is.
    Writer& bareList(std::string_view key, const std::vector<std::string>& items);
    /// Without a line feed at its end.
    std::string text() const { return text_ + "---"; }

  private:
    std::string text_ = "---\n";
};

/// Reads the frontmatter of a text with LF line ends.
class Reader {
  public:
    /// Nothing when `text` does not begin with a line "---" that a later line "---" closes. Views
    /// `text`.
    static std::optional<Reader> of(std::string_view text);

    /// True when it has exactly this line.
    bool hasLine(std::string_view line) const;
    /// The first value of that key, trimmed and without its quotes.
    std::optional<std::string> scalar(std::string_view key) const;
    /// The items below the first line of that key, or none for "[]"; they end at the first line
    /// that is not indented. Nothing without that key.
    std::optional<std::vector<std::string>> list(std::string_view key) const;

  private:
    explicit Reader(std::vector<std::string_view> lines) : lines_(std::move(lines)) {}
    /// The index of the first line of that key, and what follows its colon.
    std::optional<std::pair<std::size_t, std::string_view>> field(std::string_view key) const;

    std::vector<std::string_view> lines_;
};
}  // namespace ombrix::Frontmatter
