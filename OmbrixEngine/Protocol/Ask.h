// What an `ask` prints: all that a model needs for one step, and how to hand in what it answers.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "OmbrixEngine/Workspace/EngineWorkspace.h"
#include "OmbrixMemoryKit/Land/CanonicalInput.h"
#include "OmbrixPlatform/Json.h"

namespace ombrix {

/// The text of a recipe's input and its hash, without what no model is told (Privacy.h). Every
/// input goes through here.
CanonicalInput askInput(EngineWorkspace& workspace, Json::Value input);

/// One of EngineRecipes.h, with the prompt as a model gets it.
struct Recipe {
    std::string_view version, sha256;
    std::string systemPrompt;
    std::string_view schemaJSON;
};

struct Ask {
    std::vector<std::string> step;  ///< the words after "ask" and "give"; the first names the step
    Json::Value subject;            ///< what is asked about
    Recipe recipe;
    CanonicalInput input;
    Json::Members more{};  ///< members of `data` that only this step has
};

/// Prints the envelope: step, subject, recipe, systemPrompt, schema, input (the very text that the
/// hash is of), inputHash, answerWith: the command line that takes the answer.
void emitAsk(const CLIContext& context, EngineWorkspace& workspace, Ask ask);

/// The subject of what is asked about a meeting.
Json::Value meetingSubject(EngineWorkspace& workspace, const TranscriptEntry& entry);
}  // namespace ombrix
