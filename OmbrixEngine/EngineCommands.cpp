#include "OmbrixEngine/EngineCommands.h"

namespace ombrix {

void declareEngineCommands(const CommandLine& line, const std::string&) {
    const Command root = line.root();
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
