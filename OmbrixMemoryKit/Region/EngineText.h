// What the writers of engine files do to texts of models and users before they put them into a
// file.
#pragma once

#include <string>
#include <string_view>

namespace ombrix::EngineText {

/// What a new file has below its region: the user's empty notes and corrections.
constexpr std::string_view newTail =
    "\n## Notes\n(Yours. Ombrix never edits below its markers.)\n\n## Corrections\n";

/// Each line end becomes a blank, so that a text cannot begin a line of its own.
std::string onOneLine(std::string_view text);

/// A text of a paragraph, trimmed, as one line that is no heading: one that begins with "## " gets
/// a backslash in front, which Markdown does not show.
std::string paragraph(std::string_view text);

/// What a user wrote above the region: `before` without its frontmatter, or all of it when it has
/// none or one that is not closed. LF line ends.
std::string_view withoutFrontmatter(std::string_view before);
}  // namespace ombrix::EngineText
