// An answer with its shape, and the reader that makes one of Markdown text, a model's or our own:
//
//   Two promises came up.
//   ## Commitments
//   - Ann Jones — send the deck [1]
//   - unowned — book the room [2][3]
//
// What does not follow the format stays prose, so that no answer is lost.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "OmbrixAnswerKit/Shape/AnswerShape.h"

namespace ombrix {

struct StructuredAnswer {
    struct Item {
        std::optional<std::string> date{};   ///< "YYYY-MM-DD" by its form alone; timelines only
        std::optional<std::string> owner{};  ///< commitments only
        std::string text{};                  ///< with its bracketed numbers
        std::vector<std::int64_t> citationIndices{};  ///< the numbers in its brackets, in order
        bool operator==(const Item&) const = default;
    };

    /// The shape that the text has: `prose` when it does not have the one that was asked for.
    AnswerShape shape = AnswerShape::prose;
    std::optional<std::string> summary{};    ///< the text before the heading, on one line
    std::vector<Item> items{};               ///< in the order of the text
    std::optional<std::string> proseText{};  ///< the whole trimmed text of a `prose` answer
    std::vector<std::string> citationIDs{};  ///< a bracket "[n]" means the one at position n - 1
    bool operator==(const StructuredAnswer&) const = default;
};

namespace StructuredAnswerParser {

/// `text` read in the form of `shape`. Prose when prose is asked for, when no line
/// is that shape's heading, and when nothing follows the heading. A list that reads "(none)" is a
/// structured answer without items. `citationIDs` is passed on. Never throws; linear.
StructuredAnswer parse(std::string_view text, AnswerShape shape,
                       std::vector<std::string> citationIDs);
}  // namespace StructuredAnswerParser
}  // namespace ombrix
