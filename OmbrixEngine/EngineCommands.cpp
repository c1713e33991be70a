#include "OmbrixEngine/EngineCommands.h"

namespace ombrix {

Program::Tool engineTool() {
    return {.name = "ombrix-engine",
            .abstract =
                "The memory engine over a transcripts folder: asks an agent, takes its answers, "
                "writes what follows from them. It calls no model.",
            .declare = declareEngineCommands};
}

void declareEngineCommands(const CommandLine& line, const std::string&) {
    const Command root = line.root();
    root.everyCommandTakesNow();
    declareSpec(root, EngineSpec::commands);
    declareStatus(root);

    const Command ask = root.subcommand(
        "ask", "Print what a step asks a model: recipe, prompt, schema, input, and its hash.");
    declareAskLand(ask);
    declareAskConsolidate(ask);
    declareAskBefore(ask);
    declareAskPrepare(ask);

    const Command give = root.subcommand(
        "give", "Take the answer to what was asked: accept it strictly and write what follows.");
    declareGiveLand(give);
    declareGiveConsolidate(give);
    declareGiveBefore(give);
    declareGivePrepare(give);

    declareRefresh(root);
    declareFollowUps(root);
    declareMemory(root);
    declareAlias(root);
}
}  // namespace ombrix
