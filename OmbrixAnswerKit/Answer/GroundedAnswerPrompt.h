// What a model-backed synthesizer is asked: the system prompt, the user message with its numbered
// sources, and the instructions for a shape. A model sees these texts to the byte.
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "OmbrixAnswerKit/Answer/RetrievedCitation.h"
#include "OmbrixAnswerKit/Shape/AnswerShape.h"

namespace ombrix::GroundedAnswerPrompt {

/// The system prompt; no line feed at its end.
extern const std::string_view instructions;

/// The user message: the question, the sources under their numbers with all their snippets, and the
/// request to cite them. Titles, dates and snippets are unchanged; an empty date is empty.
std::string build(std::string_view question, const std::vector<RetrievedCitation>& citations);

/// How to write a timeline or a list of commitments so that `StructuredAnswerParser` reads it;
/// nothing for prose.
std::optional<std::string_view> shapeInstructions(AnswerShape shape);
}  // namespace ombrix::GroundedAnswerPrompt
