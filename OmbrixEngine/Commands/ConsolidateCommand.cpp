#include "OmbrixEngine/EngineCommands.h"
#include "OmbrixEngine/Protocol/Ask.h"
#include "OmbrixEngine/Protocol/CommandText.h"
#include "OmbrixEngine/Protocol/Give.h"
#include "OmbrixEngine/Protocol/PlannedWork.h"
#include "OmbrixEngine/Steps/ConsolidateStep.h"
#include "OmbrixMemoryKit/EngineRecipes.h"

namespace ombrix {
namespace {

constexpr const char* entityHelp =
    "A person or thread: its key, its name, a part of the name, or its memory file.";

struct AskOptions {
    std::string entity;
    GlobalOptions global;
};

struct ConsolidateGiveOptions : GiveOptions {
    std::string entity;
};

void askConsolidate(const CLIContext& context, const AskOptions& options) {
    EngineWorkspace workspace(context);
    const ConsolidateStep step(workspace, options.entity);
    const auto& shown = step.input().entity;
    const auto& question = step.question();
    emitAsk(context, workspace,
            {.step = "consolidate",
             .subject =
                 Json::object({{"key", shown.key}, {"kind", shown.kind}, {"title", shown.display}}),
             .recipeVersion = EngineRecipes::consolidateVersion,
             .recipeSHA256 = EngineRecipes::consolidateSHA256,
             .systemPrompt = std::string(EngineRecipes::consolidateSystemPrompt),
             .schemaJSON = EngineRecipes::consolidateOutputSchemaJSON,
             .input = question,
             .answerWith = engineCommand(
                 context, {"give", "consolidate", options.entity, "--input-hash", question.hash,
                           "--model", "NAME", "--route", "claudeCode", "--stdin"})});
}

void giveConsolidate(const CLIContext& context, const ConsolidateGiveOptions& options) {
    const GivenAnswer answer = readAnswer(options);
    const std::string ask = engineCommand(context, {"ask", "consolidate", options.entity});
    const auto plan = [&](EngineWorkspace& workspace) {
        const ConsolidateStep step(workspace, options.entity);
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
    };
    runPlanned(context, options.dryRun ? Writing::dryRun : Writing::forReal, plan);
}
}  // namespace

void declareAskConsolidate(Command ask) {
    const Command command =
        ask.subcommand("consolidate", "Ask for the memory file of one person or thread.");
    const auto options = command.options<AskOptions>();
    command.positional("entity", options->entity, entityHelp);
    command.run(options, askConsolidate);
}

void declareGiveConsolidate(Command give) {
    const Command command =
        give.subcommand("consolidate", "Take the memory file of one person or thread.");
    const auto options = command.options<ConsolidateGiveOptions>();
    command.positional("entity", options->entity, entityHelp);
    declareGiveOptions(command, *options);
    command.run(options, giveConsolidate);
}
}  // namespace ombrix
