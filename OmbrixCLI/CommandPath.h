// The full name of a command, from its place in the tree of CLI11.
#pragma once

#include <string>

namespace CLI {
class App;
}

namespace ombrix {

/// "ombrix-cli meetings list": the names that lead to the command, joined by blanks.
std::string commandPath(const CLI::App& command);
}  // namespace ombrix
