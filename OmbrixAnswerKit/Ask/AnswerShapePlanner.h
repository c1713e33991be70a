// The shape of the answer a question wants, as the intent router plans it.
#pragma once

#include <string_view>

#include "OmbrixAnswerKit/Ask/ShapeWords.h"
#include "OmbrixAnswerKit/Shape/AnswerShape.h"

namespace ombrix::AnswerShapePlanner {

using ShapeWords::legacyShape;

/// The shape in the question's plan, without a time phrase of its own or a typed scope.
AnswerShape plan(std::string_view question);
}  // namespace ombrix::AnswerShapePlanner
