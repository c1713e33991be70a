#pragma once

#include <string>

namespace CLI {
class App;
}

namespace ombrix {

/// "ombrix-cli meetings list": the names that lead to a command, joined by blanks.
std::string commandPath(const CLI::App& command);
}  // namespace ombrix
