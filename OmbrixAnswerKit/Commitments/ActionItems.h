// The action items of a document: the bullets of its action item section and the check boxes in its
// notes. Each is read as "owner: task" where it can be.
//
//   - [ ] Tomas Berg — send the deck by Friday
//   * Ann: book the room
//   - Budget: review numbers        (nobody is called Budget: the line stays whole)
//   - [x] ring the landlord         (done, so no item)
#pragma once

#include <optional>
#include <string_view>
#include <vector>

#include "OmbrixMarkdownKit/Transcript/TranscriptDocument.h"

namespace ombrix::ActionItems {

/// Views of the line that was read.
struct Item {
    std::optional<std::string_view> owner;
    std::string_view text;  ///< never empty
    bool operator==(const Item&) const = default;
};

/// All lines of the action item section, then the check box lines of the notes ("- [ ]", "* [ ]",
/// "- [x]", "* [x]"), trimmed, without empty ones; views of the document.
std::vector<std::string_view> lines(const TranscriptDocument& document);

/// Nothing for a line without a bullet, a ticked item and a bullet without text. The part before
/// the first " — ", else " – ", else ": " is the owner, if neither side is empty and the owner has
/// at most 40 characters and at most 4 words.
std::optional<Item> parse(std::string_view line);

/// The line without its bullet and its open check box; a view of it.
std::string_view trimmedBullet(std::string_view line);
}  // namespace ombrix::ActionItems
