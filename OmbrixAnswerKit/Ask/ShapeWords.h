// The guess at an answer's shape from single words, for a question without a clear intent.
#pragma once

#include <string_view>

#include "OmbrixAnswerKit/Shape/AnswerShape.h"

namespace ombrix::ShapeWords {

/// The shape that words anywhere in the question suggest, promises before dates: plain substrings
/// of the lower-cased question with straight apostrophes, so that "committee" counts as "commit".
AnswerShape legacyShape(std::string_view question);
}  // namespace ombrix::ShapeWords
