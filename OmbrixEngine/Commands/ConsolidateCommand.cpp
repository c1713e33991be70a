#include "OmbrixEngine/EngineCommands.h"
#include "OmbrixEngine/Protocol/Ask.h"
#include "OmbrixEngine/Protocol/CommandText.h"
#include "OmbrixEngine/Protocol/PlannedWork.h"
#include "OmbrixEngine/Protocol/StepCommands.h"
#include "OmbrixEngine/Steps/ConsolidateStep.h"
#include "OmbrixMemoryKit/EngineRecipes.h"

namespace ombrix {
namespace {

using StepCommands::AskOptions;
using StepCommands::SubjectGiveOptions;

constexpr StepCommands::Subject entityArgument{
    "entity", "A person or thread: its key, its name, a part of the name, or its memory file."};

std::vector<std::string> words(const std::string& entity) { return {"consolidate", entity}; }

void askConsolidate(const CLIContext& context, const AskOptions& options) {
    EngineWorkspace workspace(context);
    const ConsolidateStep step(workspace, options.subject);
    const auto& shown = step.input().entity;
    emitAsk(context, workspace,
            {.step = words(options.subject),
             .subject = workspace.privacy().cleaned(Json::object(
                 {{"key", shown.key}, {"kind", shown.kind}, {"title", shown.display}})),
             .recipe = {.version = EngineRecipes::consolidateVersion,
                        .sha256 = EngineRecipes::consolidateSHA256,
                        .systemPrompt = std::string(EngineRecipes::consolidateSystemPrompt),
                        .schemaJSON = EngineRecipes::consolidateOutputSchemaJSON},
             .input = step.question()});
}

void giveConsolidate(const CLIContext& context, const SubjectGiveOptions& options) {
    const std::string ask = askCommand(context, words(options.subject));
    takeAnswer(context, options, [&](EngineWorkspace& workspace, const GivenAnswer& answer) {
        const ConsolidateStep step(workspace, options.subject);
        // Writing the file changes the next input, which tells of what was unsure last time. So the
        // same answer, given again, is known by what the file says.
        const bool isCurrent = answer.inputHash == step.question().hash;
        const auto output = decodeAnswer(answer, ask, [&](std::string_view text) {
            auto decoded = ConsolidateOutput::decode(text);
            if (isCurrent) EntityCitations::check(decoded, step.input());
            return decoded;
        });
        PlannedWork work{.changes = ChangeSet(workspace.folder())};
        if (isCurrent)
            step.plan(work.changes, answer, output);
        else if (!step.isWritten(output))
            throw staleAnswer(step.question().hash, ask);
        work.data.emplace("step", "consolidate");
        work.data.emplace("entity", step.entity().key);
        work.data.emplace("file", step.path());
        return work;
    });
}
}  // namespace

void declareAskConsolidate(Command ask) {
    StepCommands::declareAsk(ask, "consolidate", "Ask for the memory file of one person or thread.",
                             entityArgument, askConsolidate);
}

void declareGiveConsolidate(Command give) {
    StepCommands::declareGive(give, "consolidate", "Take the memory file of one person or thread.",
                              entityArgument, giveConsolidate);
}
}  // namespace ombrix
