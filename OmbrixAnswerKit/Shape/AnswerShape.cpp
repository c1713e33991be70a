#include "OmbrixAnswerKit/Shape/AnswerShape.h"

#include "OmbrixPlatform/EnumNames.h"

namespace ombrix {

std::string_view rawValue(AnswerShape shape) { return EnumNames::name(answerShapeNames, shape); }

std::optional<AnswerShape> answerShape(std::string_view rawValue) {
    return EnumNames::value(answerShapeNames, rawValue);
}
}  // namespace ombrix
