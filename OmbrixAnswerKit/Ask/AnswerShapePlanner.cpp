#include "OmbrixAnswerKit/Ask/AnswerShapePlanner.h"

#include <optional>

#include "OmbrixAnswerKit/Ask/AskIntentRouter.h"

namespace ombrix::AnswerShapePlanner {

AnswerShape plan(std::string_view question) {
    return AskIntentRouter::route(question, std::nullopt, /*hasTypedScope=*/false).shape;
}
}  // namespace ombrix::AnswerShapePlanner
