// The scalars of the YAML in frontmatter, as texts with a place. Lines end in LF; a CR before it
// counts as a blank. Nothing here throws; everything is linear.
#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

#include "OmbrixPlatform/ByteRange.h"

namespace ombrix::YamlScalars {

/// A value and where it is written, quotes included.
struct Found {
    std::string value;
    ByteRange range;
};

constexpr bool isBlank(char c) { return c == ' ' || c == '\t' || c == '\r'; }

/// Without blanks at both ends.
std::string_view trimmedBlanksOf(std::string_view text);

/// How many blanks a line begins with.
std::size_t indentation(std::string_view line);

/// True for an item of a list or another value that is no scalar by its first character: "- a".
bool isItem(std::string_view content);

/// `at`, or the end of its line when a comment begins there. `at` is inside the text.
std::size_t afterComment(std::string_view text, std::size_t at);

/// The first byte at or after `from` that is no white space and no comment; the size without one.
std::size_t firstContent(std::string_view text, std::size_t from);

/// The scalar in quotes that begins at `start`. Nothing when it is not closed or has an escape that
/// YAML does not know.
std::optional<Found> quotedScalar(std::string_view text, std::size_t start);

/// The scalar of any form that begins at `start` and has nothing after it but comments.
/// `parentIndentation` is that of its key. Nothing for another value.
std::optional<Found> anyScalar(std::string_view text, std::size_t start,
                               std::size_t parentIndentation);

/// `value` as a scalar on one line: plain when that reads back as this text, else in double quotes.
std::string written(std::string_view value);
}  // namespace ombrix::YamlScalars
