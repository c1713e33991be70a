// One run of the tool, from its arguments to its exit status.
#pragma once

#include <string>
#include <vector>

namespace ombrix::Program {

/// Makes the process safe to write from: a reader that goes away is an error and not a signal, and
/// a standard descriptor that was closed cannot become the descriptor of a file or a socket.
void prepareProcess();

/// Parses `arguments` (argument 0 included), runs what they name and prints what comes of it. The
/// exit status: 0, 64 for a line that cannot be read, 3 to 7 for a `CLIError`, 1 for anything else.
int run(const std::vector<std::string>& arguments);
}  // namespace ombrix::Program
