#include "OmbrixEngine/EngineCommands.h"
#include "OmbrixEngine/Protocol/Ask.h"
#include "OmbrixEngine/Protocol/CommandText.h"
#include "OmbrixEngine/Protocol/PlannedWork.h"
#include "OmbrixEngine/Protocol/StepCommands.h"
#include "OmbrixEngine/Steps/PrepareStep.h"
#include "OmbrixMemoryKit/EngineRecipes.h"

namespace ombrix {
namespace {

using StepCommands::AskOptions;
using StepCommands::SubjectGiveOptions;

constexpr StepCommands::Subject meetingArgument{
    "meeting", "A landed transcript's path, its meeting key, or a part of its title."};

std::vector<std::string> words(const TranscriptEntry& entry) { return {"prepare", entry.key}; }

PrepareStep stepOf(const CLIContext& context, EngineWorkspace& workspace,
                   const TranscriptEntry& entry) {
    return {workspace, entry, askCommand(context, {"land", entry.key})};
}

void askPrepare(const CLIContext& context, const AskOptions& options) {
    EngineWorkspace workspace(context);
    const auto& entry = workspace.meeting(options.subject);
    const PrepareStep step = stepOf(context, workspace, entry);
    Json::Members more;
    more.emplace("chunked", step.input().chunked);
    emitAsk(context, workspace,
            {.step = words(entry),
             .subject = meetingSubject(workspace, entry),
             .recipe = {.version = EngineRecipes::prepareVersion,
                        .sha256 = EngineRecipes::prepareSHA256,
                        .systemPrompt = std::string(EngineRecipes::prepareSystemPrompt),
                        .schemaJSON = EngineRecipes::prepareOutputSchemaJSON},
             .input = step.question(),
             .more = std::move(more)});
}

void givePrepare(const CLIContext& context, const SubjectGiveOptions& options) {
    takeAnswer(context, options, [&](EngineWorkspace& workspace, const GivenAnswer& answer) {
        const auto& entry = workspace.meeting(options.subject);
        const std::string ask = askCommand(context, words(entry));
        const PrepareStep step = stepOf(context, workspace, entry);
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
    });
}
}  // namespace

void declareAskPrepare(Command ask) {
    StepCommands::declareAsk(ask, "prepare", "Ask for the next moves of one landed meeting.",
                             meetingArgument, askPrepare);
}

void declareGivePrepare(Command give) {
    StepCommands::declareGive(give, "prepare",
                              "Take the next moves of one meeting: the sidecar of its moves.",
                              meetingArgument, givePrepare);
}
}  // namespace ombrix
