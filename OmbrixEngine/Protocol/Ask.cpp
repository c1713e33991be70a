#include "OmbrixEngine/Protocol/Ask.h"

#include <utility>

#include "OmbrixCLI/Envelope.h"
#include "OmbrixPlatform/JsonDocument.h"

namespace ombrix {

CanonicalInput askInput(EngineWorkspace& workspace, Json::Value input) {
    return canonicalInput(workspace.privacy().cleaned(std::move(input)));
}

void emitAsk(const CLIContext& context, EngineWorkspace& workspace, Ask ask) {
    Json::Members data = std::move(ask.more);
    data.emplace("step", ask.step);
    data.emplace("subject", std::move(ask.subject));
    data.emplace("recipe",
                 Json::object({{"version", ask.recipeVersion}, {"sha256", ask.recipeSHA256}}));
    data.emplace("systemPrompt", std::move(ask.systemPrompt));
    data.emplace("schema", Json::parse(ask.schemaJSON));
    data.emplace("input", std::move(ask.input.json));
    data.emplace("inputHash", std::move(ask.input.hash));
    data.emplace("answerWith", std::move(ask.answerWith));
    auto warnings = workspace.warnings();
    for (auto& warning : warnings) warning = workspace.privacy().cleanedText(warning);
    emitSuccess(context, std::move(data), std::move(warnings));
}
}  // namespace ombrix
