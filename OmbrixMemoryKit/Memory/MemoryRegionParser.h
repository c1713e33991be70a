// Reads the engine's region of a memory file back into sections and lines, for a view.
//
//   ## Open
//   - They owe you: The price list, due Sep 5 · id c-0a1b2c3d [Weekly, 2026-09-01]
//
//   ## The through-line
//   On Sep 1 the launch moved to October.
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace ombrix::MemoryRegionParser {

/// What an empty section has for a line, and the last line of a region.
constexpr std::string_view nothing = "(none)";
constexpr std::string_view closingLine = "Ask your Claude to go further.";

/// A meeting that a line rests on.
struct Source {
    std::string title{};
    std::string date{};  ///< a day by its form
    bool operator==(const Source&) const = default;
};

struct Line {
    std::string text{};  ///< without what the other fields say
    std::vector<Source> sources{};
    bool readsAs = false;                     ///< the line says that it was inferred
    std::optional<std::string> followUpID{};  ///< a `CommitmentID` with lower-case digits
    bool operator==(const Line&) const = default;
};

struct Section {
    std::string title{};
    std::vector<Line> lines{};
    std::string prose{};  ///< the lines that are not in a list
    bool operator==(const Section&) const = default;
};

/// The sections of a region's content, in order; none for a text without a "## " heading. What is
/// above the first heading is skipped, and so are empty lines, `nothing` and `closingLine`. Never
/// throws; linear.
std::vector<Section> sections(std::string_view text);

/// One line that begins with "- ". Where a source was cut out, the blanks around it are kept.
Line parseLine(std::string_view line);
}  // namespace ombrix::MemoryRegionParser
