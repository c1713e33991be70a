// The shape of an answer, which a question asks for and an answer has.
#pragma once

#include "OmbrixPlatform/EnumNames.h"

namespace ombrix {

enum class AnswerShape {
    prose,
    timeline,     ///< dated entries, oldest first
    commitments,  ///< one promise a line, each with its owner
};

constexpr auto rawValues(AnswerShape) {
    return EnumNames::table<AnswerShape>({{AnswerShape::prose, "prose"},
                                          {AnswerShape::timeline, "timeline"},
                                          {AnswerShape::commitments, "commitments"}});
}
}  // namespace ombrix
