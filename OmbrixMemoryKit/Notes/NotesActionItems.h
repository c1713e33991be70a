// The "## Action Items" section of a notes block, taken apart so that a person can change the words
// of one item:
//
//   **You owe**
//   - Send the quote → Ann Jones · due 2026-03-06 (Bob: "I will send it")
//   - Reads as: a call with Tomas ← Tomas
//
// What is not understood is kept word for word, so a section in an older form survives.
#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <variant>
#include <vector>

namespace ombrix {

struct NotesActionItems {
    enum class Group { youOwe, owedToYou, unsure };

    struct Item {
        std::optional<Group> group;  ///< the one it stands under
        std::string indent;          ///< the white space ahead of the dash
        std::string what;
        std::string rest;              ///< all that follows `what` on the line, separators included
        bool readsAs = false;          ///< the words stand after "Reads as:"
        std::string readsAsGap = " ";  ///< what follows "Reads as:": a blank or nothing

        /// The words after "→ " or "← " in `rest`, up to the next " · ", trimmed.
        std::optional<std::string> who() const;
        /// What follows "due " in the piece of `rest`, cut at " · " and trimmed, that starts with
        /// it.
        std::optional<std::string> due() const;
        bool operator==(const Item&) const = default;
    };

    /// The line that opens a group.
    struct GroupLine {
        Group group{};
        std::string before, after;  ///< the white space around its bold text
        bool operator==(const GroupLine&) const = default;
    };
    /// A line that is neither, as it stands.
    struct Legacy {
        std::string text;
        bool operator==(const Legacy&) const = default;
    };
    using Line = std::variant<GroupLine, Item, Legacy>;

    std::vector<Line> lines;

    /// Never fails. CR LF reads as LF.
    static NotesActionItems parse(std::string_view text);
    /// The lines, joined by line feeds. What was parsed and not changed gives the same text.
    std::string render() const;

    /// The items with their indices in `lines`.
    std::vector<std::pair<std::size_t, Item>> items() const;
    /// The line at `hint` when it is an item with exactly these words, else the first such item.
    std::optional<std::size_t> index(std::string_view what, std::size_t hint) const;
    /// With the trimmed new words for the item at `index`. Words that are blank, and any other
    /// index, change nothing. Line breaks become blanks.
    NotesActionItems updatingWhat(std::size_t index, std::string_view words) const;
    /// True when a legacy line is not blank.
    bool hasLegacy() const;
    bool operator==(const NotesActionItems&) const = default;
};

/// "**You owe**", "**Owed to you**", "**Unsure**".
std::string_view shown(NotesActionItems::Group group);
}  // namespace ombrix
