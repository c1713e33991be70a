#include "OmbrixEngine/EngineCommands.h"
#include "OmbrixEngine/Protocol/Ask.h"
#include "OmbrixEngine/Protocol/CommandText.h"
#include "OmbrixEngine/Protocol/PlannedWork.h"
#include "OmbrixEngine/Steps/BeforeStep.h"
#include "OmbrixMemoryKit/EngineRecipes.h"

namespace ombrix {
namespace {

struct AskOptions {
    UpcomingCall call;
    GlobalOptions global;
};

struct BeforeGiveOptions : GiveOptions {
    UpcomingCall call;
};

/// The words of the command line that name the call.
std::vector<std::string> words(const UpcomingCall& call) {
    std::vector<std::string> words = {"before",   "--people", call.people, "--title",
                                      call.title, "--for",    call.time};
    if (call.thread) words.insert(words.end(), {"--thread", *call.thread});
    return words;
}

void declareCall(const Command& command, UpcomingCall& call) {
    command.option("--people NAMES", call.people,
                   "Who will be there: names or keys, with commas between them.",
                   Presence::required);
    command.option("--title TITLE", call.title, "What the call is called.", Presence::required);
    command.option("--for TIME", call.time,
                   "When it begins: 2026-09-08T10:00 on this machine's clock, or with an offset.",
                   Presence::required);
    command.option("--thread ENTITY", call.thread,
                   "The thread it belongs to, instead of the one these people share.");
}

void askBefore(const CLIContext& context, const AskOptions& options) {
    EngineWorkspace workspace(context);
    const BeforeStep step(workspace, options.call);
    std::vector<std::string> keys;
    for (const auto& person : step.input().people)
        keys.push_back(workspace.privacy().cleanedText(person.key));
    emitAsk(context, workspace,
            {.step = words(options.call),
             .subject = Json::object({{"people", keys}, {"card", step.path()}}),
             .recipe = {.version = EngineRecipes::beforeVersion,
                        .sha256 = EngineRecipes::beforeSHA256,
                        .systemPrompt = std::string(EngineRecipes::beforeSystemPrompt),
                        .schemaJSON = EngineRecipes::beforeOutputSchemaJSON},
             .input = step.question()});
}

void giveBefore(const CLIContext& context, const BeforeGiveOptions& options) {
    const std::string ask = askCommand(context, words(options.call));
    takeAnswer(context, options, [&](EngineWorkspace& workspace, const GivenAnswer& answer) {
        const BeforeStep step(workspace, options.call);
        requireCurrent(answer, step.question().hash, ask);
        const auto output = decodeAnswer(answer, ask, [&](std::string_view text) {
            auto decoded = BeforeOutput::decodeOrRefuse(text);
            EntityCitations::check(decoded, step.input());
            return decoded;
        });
        PlannedWork work{.changes = ChangeSet(workspace.folder())};
        step.plan(work.changes, answer, output);
        work.data.emplace("step", "before");
        work.data.emplace("people", Json::toValue(step.people()));
        work.data.emplace("card", step.path());
        return work;
    });
}
}  // namespace

void declareAskBefore(Command ask) {
    const Command command =
        ask.subcommand("before", "Ask for the card of a call with people the user has met.");
    const auto options = command.options<AskOptions>();
    declareCall(command, options->call);
    command.run(options, askBefore);
}

void declareGiveBefore(Command give) {
    const Command command = give.subcommand("before", "Take the card of a call.");
    const auto options = command.options<BeforeGiveOptions>();
    declareCall(command, options->call);
    declareGiveOptions(command, *options);
    command.run(options, giveBefore);
}
}  // namespace ombrix
