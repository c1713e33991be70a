// What an `ask` prints: all that a model needs for one step, and how to hand in what it answers.
#pragma once

#include <string>
#include <string_view>

#include "OmbrixEngine/Workspace/EngineWorkspace.h"
#include "OmbrixMemoryKit/Land/CanonicalInput.h"
#include "OmbrixPlatform/Json.h"

namespace ombrix {

/// The text of a recipe's input and its hash, without what no model is told (Privacy.h). Every
/// input goes through here.
CanonicalInput askInput(EngineWorkspace& workspace, Json::Value input);

struct Ask {
    std::string_view step;  ///< "land"
    Json::Value subject;    ///< what is asked about
    std::string_view recipeVersion, recipeSHA256;
    std::string systemPrompt;
    std::string_view schemaJSON;
    CanonicalInput input;
    std::string answerWith;  ///< the command line that takes the answer
    Json::Members more{};    ///< members of `data` that only this step has
};

/// Prints the envelope: step, subject, recipe, systemPrompt, schema, input (the very text that the
/// hash is of), inputHash, answerWith.
void emitAsk(const CLIContext& context, EngineWorkspace& workspace, Ask ask);
}  // namespace ombrix
