#include "OmbrixEngine/EngineCommands.h"

namespace ombrix {

void declareEngineCommands(const CommandLine& line, const std::string&) {
    const Command root = line.root();
    declareSpec(root, EngineSpec::commands);
    declareStatus(root);

    const Command ask = root.subcommand(
        "ask", "Print what a step asks a model: recipe, prompt, schema, input, and its hash.");
    declareAskLand(ask);

    const Command give = root.subcommand(
        "give", "Take the answer to what was asked: accept it strictly and write what follows.");
    declareGiveLand(give);

    declareRefresh(root);
}
}  // namespace ombrix
