// The tree of commands of `ombrix-engine`, in the order in which the help lists them.
#pragma once

#include <string>

#include "OmbrixCLI/CommandLine.h"
#include "OmbrixCLI/CommandSpec.h"
#include "OmbrixCLI/Program.h"

namespace ombrix {

/// `ombrix-engine`.
Program::Tool engineTool();

/// Declares every command below `line`'s root.
void declareEngineCommands(const CommandLine& line, const std::string& argument0);

namespace EngineSpec {

/// What `spec` prints. Fixed text: agents have it in their prompts.
const std::vector<SpecCommand>& commands();
}  // namespace EngineSpec

// One function a command, each in the file of its name; what is asked and the answer to it share
// one. `ask` and `give` are the groups.
void declareStatus(Command root);
void declareAskLand(Command ask);
void declareGiveLand(Command give);
void declareAskConsolidate(Command ask);
void declareGiveConsolidate(Command give);
void declareAskBefore(Command ask);
void declareGiveBefore(Command give);
void declareAskPrepare(Command ask);
void declareGivePrepare(Command give);
void declareRefresh(Command root);
void declareFollowUps(Command root);
void declareMemory(Command root);
void declareAlias(Command root);
}  // namespace ombrix
