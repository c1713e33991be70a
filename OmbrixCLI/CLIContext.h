// What every command works on: its name, the two paths that the options of all commands lead to,
// and the clock.
#pragma once

#include <optional>
#include <string>

#include "OmbrixPlatform/Calendar.h"

namespace ombrix {

struct GlobalOptions {
    std::optional<std::string> dbPath;      ///< `--db-path`, also when it is empty
    std::optional<std::string> supportDir;  ///< `--support-dir`, also when it is empty
    std::optional<std::string> now;         ///< `--now`, where the tool has it for all commands
    bool operator==(const GlobalOptions&) const = default;
};

/// One run of a command. The paths are absolute; neither need exist.
struct CLIContext {
    /// The paths come from the options, then the environment, then the place of the executable.
    CLIContext(std::string command, const GlobalOptions& options);

    GlobalOptions options;  ///< as they were given
    std::string command;    ///< the full name, as an envelope has it: "ombrix-cli meetings list"
    std::string supportDirectory;
    std::string databaseURL;
};

/// The present time. No other place asks which day it is; everything below is given the instant.
Instant presentTime();
}  // namespace ombrix
