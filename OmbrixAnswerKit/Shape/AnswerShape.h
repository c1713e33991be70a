// The shape of an answer, which a question asks for and an answer has.
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
}  // namespace ombrix
