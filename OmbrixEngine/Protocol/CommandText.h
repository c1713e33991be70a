// Command lines for the caller to run, as a shell reads them.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "OmbrixCLI/CLIContext.h"

namespace ombrix {

/// "ombrix-engine ask land 'Q3 launch' --support-dir ~/x": `words` and the global options as they
/// were given, each in single quotes when a shell would read it otherwise.
std::string engineCommand(const CLIContext& context, std::vector<std::string> words);
}  // namespace ombrix
