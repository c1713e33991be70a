// The shape of an answer, and the guess at it from single words that a question without a clear
// intent gets. The intent router stands above this; the planner that asks the router, above both.
#pragma once

#include <array>
#include <optional>
#include <string_view>
#include <utility>

namespace ombrix {

enum class AnswerShape {
    prose,
    timeline,     ///< dated entries, oldest first
    commitments,  ///< one promise a line, each with its owner
};

inline constexpr std::array<std::pair<AnswerShape, std::string_view>, 3> answerShapeNames{{
    {AnswerShape::prose, "prose"},
    {AnswerShape::timeline, "timeline"},
    {AnswerShape::commitments, "commitments"},
}};

std::string_view rawValue(AnswerShape shape);
/// The shape of a raw string; nothing for any other text.
std::optional<AnswerShape> answerShape(std::string_view rawValue);

namespace AnswerShapePlanner {

/// The shape that words anywhere in the question suggest, promises before dates: plain substrings
/// of the lower-cased question with straight apostrophes, so that "committee" counts as "commit".
AnswerShape legacyShape(std::string_view question);
}  // namespace AnswerShapePlanner
}  // namespace ombrix
