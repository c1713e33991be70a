// The tree of commands, in the order in which the help lists them.
#pragma once

#include <string>

#include "OmbrixCLI/CommandLine.h"
#include "OmbrixCLI/Program.h"

namespace ombrix {

/// `ombrix-cli`.
Program::Tool commandTool();

/// Declares every command below `line`'s root. `argument0` is the path the tool was started by.
void declareCommands(const CommandLine& line, const std::string& argument0);

// One function a command or group, each in the file of its name; the one-way debug commands share
// `DebugCommands.cpp`.
void declareSpec(Command root);
void declareInfo(Command root, const std::string& argument0);
void declareMeetings(Command root);
void declareDictations(Command root);
void declareAnswer(Command root);
void declareAppState(Command root);
void declareOneWayDebugCommands(Command root);
void declareDebugWebEval(Command root);
void declareTidyTxt(Command root);
void declareImport(Command root);
void declareMoves(Command root);
void declareKey(Command root);
}  // namespace ombrix
