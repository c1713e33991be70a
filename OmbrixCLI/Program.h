// One run of the tool, from its arguments to its exit status.
#pragma once

#include <string>
#include <vector>

namespace ombrix::Program {

/// Makes the process safe to write from: a reader that goes away causes an error instead of a
/// signal, and a standard descriptor that was closed is not reused for a file or a socket.
void prepareProcess();

/// Parses `arguments` (argument 0 included), runs what they name and prints the result. The
/// exit status: 0, 64 for a line that cannot be read, 3 to 7 for a `CLIError`, 1 for anything else.
int run(const std::vector<std::string>& arguments);
}  // namespace ombrix::Program
