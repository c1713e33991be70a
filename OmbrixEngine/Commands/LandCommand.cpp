#include "OmbrixCLI/Envelope.h"
#include "OmbrixEngine/EngineCommands.h"
#include "OmbrixEngine/Protocol/Ask.h"
#include "OmbrixEngine/Protocol/CommandText.h"
#include "OmbrixEngine/Protocol/Give.h"
#include "OmbrixEngine/Steps/LandContexts.h"
#include "OmbrixEngine/Steps/LandStep.h"
#include "OmbrixEngine/Workspace/EngineLock.h"
#include "OmbrixMemoryKit/EngineRecipes.h"
#include "OmbrixMemoryKit/Land/LandNotesPolicy.h"

namespace ombrix {
namespace {

struct AskOptions {
    std::string meeting;
    GlobalOptions global;
};

struct LandGiveOptions : GiveOptions {
    std::string meeting;
};

Json::Value subject(const Privacy& privacy, const TranscriptEntry& entry) {
    return Json::object({{"key", entry.key},
                         {"title", privacy.cleanedText(entry.header.title)},
                         {"date", entry.header.date}});
}

std::string askCommand(const CLIContext& context, const TranscriptEntry& entry) {
    return engineCommand(context, {"ask", "land", entry.key});
}

std::string giveCommand(const CLIContext& context, const TranscriptEntry& entry,
                        const std::string& inputHash) {
    return engineCommand(context, {"give", "land", entry.key, "--input-hash", inputHash, "--model",
                                   "NAME", "--route", "claudeCode", "--stdin"});
}

/// Which of a long transcript's questions it is: "whole", "chunk" or "reduce".
Json::Members pass(const LandStep& step, const LandStep::Question& question) {
    Json::Members more;
    more.emplace("pass", question.chunk ? "chunk" : step.reduces() ? "reduce" : "whole");
    if (question.chunk) more.emplace("chunk", encode(*question.chunk));
    return more;
}

void askLand(const CLIContext& context, const AskOptions& options) {
    EngineWorkspace workspace(context);
    const auto& entry = workspace.meeting(options.meeting);
    const LandStep step(workspace, entry);
    const auto& question = step.next();
    std::string prompt(EngineRecipes::landSystemPrompt);
    prompt.append("\n\n").append(LandNotesPolicy::prompt);
    emitAsk(context, workspace,
            {.step = "land",
             .subject = subject(workspace.privacy(), entry),
             .recipeVersion = EngineRecipes::landVersion,
             .recipeSHA256 = EngineRecipes::landSHA256,
             .systemPrompt = std::move(prompt),
             .schemaJSON = EngineRecipes::landOutputSchemaJSON,
             .input = question.input,
             .answerWith = giveCommand(context, entry, question.input.hash),
             .more = pass(step, question)});
}

const LandStep::Question& answered(const LandStep& step, const GivenAnswer& answer,
                                   const std::string& ask) {
    const auto* question = step.find(answer.inputHash);
    if (question == nullptr) throw staleAnswer(step.next().input.hash, ask);
    return *question;
}

/// With the step of a workspace in which the answer still counts.
void land(const CLIContext& context, EngineWorkspace& workspace, const TranscriptEntry& entry,
          const GivenAnswer& answer, LandOutput output, bool dryRun) {
    LandStep step(workspace, entry);
    const std::string ask = askCommand(context, entry);
    const auto& question = answered(step, answer, ask);
    for (auto& doubt : step.doubts(output)) workspace.warnings().push_back(std::move(doubt));
    ChangeSet changes(workspace.folder());
    Json::Members data = pass(step, question);
    data.emplace("step", "land");
    data.emplace("meeting", entry.key);
    if (question.chunk) {
        step.planChunk(changes, question, answer, output);
        data.emplace("next", ask);
        return emitChanges(context, workspace, changes, dryRun, std::move(data));
    }
    data.emplace("sidecar", step.plan(changes, answer, std::move(output)));
    emitChanges(context, workspace, changes, dryRun, std::move(data));
    if (!dryRun) LandContexts::record(workspace, entry);
}

void giveLand(const CLIContext& context, const LandGiveOptions& options) {
    const GivenAnswer answer = readAnswer(options);
    EngineWorkspace workspace(context);
    const auto& entry = workspace.meeting(options.meeting);
    const std::string ask = askCommand(context, entry);
    const LandStep step(workspace, entry);
    answered(step, answer, ask);
    LandOutput output = decodeAnswer(answer, ask, [&](std::string_view text) {
        auto decoded = LandOutput::decode(text);
        step.check(decoded);
        return decoded;
    });
    if (options.dryRun)
        return land(context, workspace, entry, answer, std::move(output), options.dryRun);
    // What was read so far may have changed while this waited.
    const EngineLock lock(workspace.folder());
    EngineWorkspace present(context);
    land(context, present, present.meeting(entry.key), answer, std::move(output), options.dryRun);
}
}  // namespace

void declareAskLand(Command ask) {
    const Command command = ask.subcommand(
        "land", "Ask for the record of one meeting. A long transcript comes in chunks.");
    const auto options = command.options<AskOptions>();
    command.positional("meeting", options->meeting,
                       "A transcript's path, its meeting key, or a part of its title.");
    command.run(options, askLand);
}

void declareGiveLand(Command give) {
    const Command command = give.subcommand(
        "land", "Take the record of one meeting: its sidecar, the follow-ups, its notes.");
    const auto options = command.options<LandGiveOptions>();
    command.positional("meeting", options->meeting,
                       "A transcript's path, its meeting key, or a part of its title.");
    declareGiveOptions(command, *options);
    command.run(options, giveLand);
}
}  // namespace ombrix
