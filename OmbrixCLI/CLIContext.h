// What every command works on: the two options each of them takes, the two paths they lead to, and
// the clock.
#pragma once

#include <optional>
#include <string>

#include "OmbrixPlatform/Calendar.h"

namespace ombrix {

struct GlobalOptions {
    std::optional<std::string> dbPath;      ///< `--db-path`, also when it is empty
    std::optional<std::string> supportDir;  ///< `--support-dir`, also when it is empty
    bool operator==(const GlobalOptions&) const = default;
};

/// The support directory and the database of one run, as absolute paths. Neither need exist.
struct CLIContext {
    /// From the options, then the environment, then the place of the executable.
    explicit CLIContext(const GlobalOptions& options);

    std::string supportDirectory;
    std::string databaseURL;
};

/// The present time. The one place that reads the clock; everything below is given the instant.
Instant presentTime();
}  // namespace ombrix
