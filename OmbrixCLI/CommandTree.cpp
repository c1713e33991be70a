#include "OmbrixCLI/CommandTree.h"

namespace ombrix {

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
