#include "OmbrixCLI/CommandTree.h"

namespace ombrix {

Program::Tool commandTool() {
    return {.name = "ombrix-cli",
            .abstract = "Agent-friendly CLI for local Ombrix meetings and dictations.",
            .declare = declareCommands};
}

void declareCommands(const CommandLine& line, const std::string& argument0) {
    const Command root = line.root();
    declareSpec(root);
    declareInfo(root, argument0);
    declareMeetings(root);
    declareDictations(root);
    declareAnswer(root);
    declareAppState(root);
    declareOneWayDebugCommands(root);
    declareDebugWebEval(root);
    declareTidyTxt(root);
    declareImport(root);
    declareMoves(root);
    declareKey(root);
}
}  // namespace ombrix
