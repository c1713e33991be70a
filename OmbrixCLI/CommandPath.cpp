#include "OmbrixCLI/CommandPath.h"

#include <CLI/CLI.hpp>

namespace ombrix {

std::string commandPath(const CLI::App& command) {
    const CLI::App* const parent = command.get_parent();
    return parent == nullptr ? command.get_name() : commandPath(*parent) + " " + command.get_name();
}
}  // namespace ombrix
