// One run of a tool, from its arguments to its exit status. Two tools run this way: `ombrix-cli`
// and `ombrix-engine`. Each passes its own tree of commands, so neither knows the other's.
#pragma once

#include <functional>
#include <string>
#include <vector>

#include "OmbrixCLI/CommandLine.h"

namespace ombrix::Program {

struct Tool {
    std::string name;      ///< "ombrix-cli"
    std::string abstract;  ///< what the help says first
    /// Declares every command below the line's root. `argument0` is the path the tool was started
    /// by.
    std::function<void(const CommandLine& line, const std::string& argument0)> declare;
};

/// Makes the process safe to write from: writing to a reader that went away fails instead of
/// causing a signal, a signal that ends the process removes its temporary files first, and a
/// standard descriptor that was closed is not reused for a file or a socket.
void prepareProcess();

/// Parses `arguments` (argument 0 included), runs what they name and prints the result. The
/// exit status: 0, 64 for a line that cannot be read, 2 for `IncompleteWork`, 3 to 7 for a
/// `CLIError`, 1 for anything else.
int run(const Tool& tool, const std::vector<std::string>& arguments);
}  // namespace ombrix::Program
