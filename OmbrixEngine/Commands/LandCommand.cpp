#include "OmbrixEngine/EngineCommands.h"
#include "OmbrixEngine/Protocol/Ask.h"
#include "OmbrixEngine/Protocol/CommandText.h"
#include "OmbrixEngine/Protocol/PlannedWork.h"
#include "OmbrixEngine/Protocol/StepCommands.h"
#include "OmbrixEngine/Steps/LandContexts.h"
#include "OmbrixEngine/Steps/LandStep.h"
#include "OmbrixMemoryKit/EngineRecipes.h"
#include "OmbrixMemoryKit/Land/LandNotesPolicy.h"

namespace ombrix {
namespace {

using StepCommands::AskOptions;
using StepCommands::SubjectGiveOptions;

constexpr StepCommands::Subject meetingArgument{
    "meeting", "A transcript's path, its meeting key, or a part of its title."};

std::vector<std::string> words(const TranscriptEntry& entry) { return {"land", entry.key}; }

/// Which of a long transcript's questions it is: "whole", "chunk" or "reduce".
Json::Members pass(const LandStep& step, const LandStep::Question& question) {
    Json::Members more;
    more.emplace("pass", question.chunk ? "chunk" : step.reduces() ? "reduce" : "whole");
    if (question.chunk) more.emplace("chunk", encode(*question.chunk));
    return more;
}

void askLand(const CLIContext& context, const AskOptions& options) {
    EngineWorkspace workspace(context);
    const auto& entry = workspace.meeting(options.subject);
    const LandStep step(workspace, entry);
    const auto& question = step.next();
    std::string prompt(EngineRecipes::landSystemPrompt);
    prompt.append("\n\n").append(LandNotesPolicy::prompt);
    emitAsk(context, workspace,
            {.step = words(entry),
             .subject = meetingSubject(workspace, entry),
             .recipe = {.version = EngineRecipes::landVersion,
                        .sha256 = EngineRecipes::landSHA256,
                        .systemPrompt = std::move(prompt),
                        .schemaJSON = EngineRecipes::landOutputSchemaJSON},
             .input = question.input,
             .more = pass(step, question)});
}

void giveLand(const CLIContext& context, const SubjectGiveOptions& options) {
    takeAnswer(context, options, [&](EngineWorkspace& workspace, const GivenAnswer& answer) {
        const auto& entry = workspace.meeting(options.subject);
        const std::string ask = askCommand(context, words(entry));
        LandStep step(workspace, entry);
        const auto* question = step.find(answer.inputHash);
        if (question == nullptr) throw staleAnswer(step.next().input.hash, ask);
        LandOutput output = decodeAnswer(answer, ask, [&](std::string_view text) {
            auto decoded = LandOutput::decode(text);
            step.check(decoded);
            return decoded;
        });
        for (auto& doubt : step.doubts(output)) workspace.warnings().push_back(std::move(doubt));
        PlannedWork work{.changes = ChangeSet(workspace.folder()), .data = pass(step, *question)};
        work.data.emplace("step", "land");
        work.data.emplace("meeting", entry.key);
        if (question->chunk) {
            step.planChunk(work.changes, *question, answer, output);
            work.data.emplace("next", ask);
            return work;
        }
        work.data.emplace("sidecar", step.plan(work.changes, answer, std::move(output)));
        work.afterwards = [&workspace, &entry] { LandContexts::record(workspace, entry); };
        return work;
    });
}
}  // namespace

void declareAskLand(Command ask) {
    StepCommands::declareAsk(
        ask, "land", "Ask for the record of one meeting. A long transcript comes in chunks.",
        meetingArgument, askLand);
}

void declareGiveLand(Command give) {
    StepCommands::declareGive(
        give, "land", "Take the record of one meeting: its sidecar, the follow-ups, its notes.",
        meetingArgument, giveLand);
}
}  // namespace ombrix
