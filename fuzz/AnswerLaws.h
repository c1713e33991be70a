// What holds for every refusal of a model's answer.
#pragma once

#include "Law.h"
#include "OmbrixMemoryKit/Land/AnswerFault.h"
#include "OmbrixPlatform/Utf8.h"

namespace ombrix::Fuzz {

inline void checkRefusal(const RefusedAnswer& error) {
    law(!error.fault().problem.empty(), "a refusal says why");
    law(error.what() == error.fault().message(), "and where");
    law(Utf8::isValid(error.what()) && Utf8::isValid(error.fault().text), "in UTF-8");
}
}  // namespace ombrix::Fuzz
