#include "OmbrixEngine/EngineCommands.h"
#include "OmbrixEngine/Protocol/Ask.h"
#include "OmbrixEngine/Protocol/CommandText.h"
#include "OmbrixEngine/Protocol/Give.h"
#include "OmbrixEngine/Protocol/PlannedWork.h"
#include "OmbrixEngine/Steps/PrepareStep.h"
#include "OmbrixMemoryKit/EngineRecipes.h"

namespace ombrix {
namespace {

constexpr const char* meetingHelp =
    "A landed transcript's path, its meeting key, or a part of its title.";

struct AskOptions {
    std::string meeting;
    GlobalOptions global;
};

struct PrepareGiveOptions : GiveOptions {
    std::string meeting;
};

std::string landCommand(const CLIContext& context, const TranscriptEntry& entry) {
    return engineCommand(context, {"ask", "land", entry.key});
}

void askPrepare(const CLIContext& context, const AskOptions& options) {
    EngineWorkspace workspace(context);
    const auto& entry = workspace.meeting(options.meeting);
    const PrepareStep step(workspace, entry, landCommand(context, entry));
    const auto& question = step.question();
    Json::Members more;
    more.emplace("chunked", step.input().chunked);
    emitAsk(
        context, workspace,
        {.step = "prepare",
         .subject = Json::object({{"key", entry.key},
                                  {"title", workspace.privacy().cleanedText(entry.header.title)},
                                  {"date", entry.header.date}}),
         .recipeVersion = EngineRecipes::prepareVersion,
         .recipeSHA256 = EngineRecipes::prepareSHA256,
         .systemPrompt = std::string(EngineRecipes::prepareSystemPrompt),
         .schemaJSON = EngineRecipes::prepareOutputSchemaJSON,
         .input = question,
         .answerWith =
             engineCommand(context, {"give", "prepare", entry.key, "--input-hash", question.hash,
                                     "--model", "NAME", "--route", "claudeCode", "--stdin"}),
         .more = std::move(more)});
}

void givePrepare(const CLIContext& context, const PrepareGiveOptions& options) {
    const GivenAnswer answer = readAnswer(options);
    const auto plan = [&](EngineWorkspace& workspace) {
        const auto& entry = workspace.meeting(options.meeting);
        const std::string ask = engineCommand(context, {"ask", "prepare", entry.key});
        const PrepareStep step(workspace, entry, landCommand(context, entry));
        requireCurrent(answer, step.question().hash, ask);
        auto output = decodeAnswer(answer, ask, [&](std::string_view text) {
            auto decoded = PrepareOutput::decode(text);
            step.check(decoded);
            return decoded;
        });
        PlannedWork work{.changes = ChangeSet(workspace.folder())};
        work.data.emplace("step", "prepare");
        work.data.emplace("meeting", entry.key);
        work.data.emplace("moves", static_cast<std::int64_t>(output.moves.size()));
        work.data.emplace("sidecar", step.plan(work.changes, answer, std::move(output)));
        return work;
    };
    runPlanned(context, options.dryRun ? Writing::dryRun : Writing::forReal, plan);
}
}  // namespace

void declareAskPrepare(Command ask) {
    const Command command =
        ask.subcommand("prepare", "Ask for the next moves of one landed meeting.");
    const auto options = command.options<AskOptions>();
    command.positional("meeting", options->meeting, meetingHelp);
    command.run(options, askPrepare);
}

void declareGivePrepare(Command give) {
    const Command command =
        give.subcommand("prepare", "Take the next moves of one meeting: the sidecar of its moves.");
    const auto options = command.options<PrepareGiveOptions>();
    command.positional("meeting", options->meeting, meetingHelp);
    declareGiveOptions(command, *options);
    command.run(options, givePrepare);
}
}  // namespace ombrix
