#include "OmbrixCLI/CLIContext.h"

#include <chrono>
#include <utility>

#include "OmbrixCore/OmbrixPaths.h"
#include "OmbrixPlatform/Files.h"
#include "OmbrixPlatform/Process.h"

namespace ombrix {

CLIContext::CLIContext(std::string commandName, const GlobalOptions& given)
    : options(given), command(std::move(commandName)) {
    OmbrixPaths::Location location =
        OmbrixPaths::resolve({.dbPath = options.dbPath,
                              .supportDir = options.supportDir,
                              .environment = Process::environment,
                              .executable = Process::executable(),
                              .home = Files::homeDirectory(),
                              .workingDirectory = Files::workingDirectory});
    supportDirectory = std::move(location.supportDirectory);
    databaseURL = std::move(location.databaseURL);
}

Instant presentTime() {
    return std::chrono::floor<std::chrono::seconds>(std::chrono::system_clock::now());
}
}  // namespace ombrix
