#include "OmbrixEngine/Protocol/Ask.h"

#include <utility>

#include "OmbrixCLI/Envelope.h"
#include "OmbrixEngine/Protocol/CommandText.h"
#include "OmbrixPlatform/JsonDocument.h"

namespace ombrix {

CanonicalInput askInput(EngineWorkspace& workspace, Json::Value input) {
    return canonicalInput(workspace.privacy().cleaned(std::move(input)));
}

void emitAsk(const CLIContext& context, EngineWorkspace& workspace, Ask ask) {
    Json::Members data = std::move(ask.more);
    auto& [version, sha256, systemPrompt, schemaJSON] = ask.recipe;
    data.emplace("step", ask.step.front());
    data.emplace("subject", std::move(ask.subject));
    data.emplace("recipe", Json::object({{"version", version}, {"sha256", sha256}}));
    data.emplace("systemPrompt", std::move(systemPrompt));
    data.emplace("schema", Json::parse(schemaJSON));
    data.emplace("answerWith", giveCommand(context, std::move(ask.step), ask.input.hash));
    data.emplace("input", std::move(ask.input.json));
    data.emplace("inputHash", std::move(ask.input.hash));
    auto warnings = workspace.warnings();
    for (auto& warning : warnings) warning = workspace.privacy().cleanedText(warning);
    emitSuccess(context, std::move(data), std::move(warnings));
}

Json::Value meetingSubject(EngineWorkspace& workspace, const TranscriptEntry& entry) {
    return Json::object({{"key", entry.key},
                         {"title", workspace.privacy().cleanedText(entry.header.title)},
                         {"date", entry.header.date}});
}
}  // namespace ombrix
