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

/// The line that asks for a step, and the one that takes the answer to the input of that hash, with
/// NAME for the model. `step` are the words after "ask" and "give": {"land", "m-5167ffc7d6a63589"}.
std::string askCommand(const CLIContext& context, std::vector<std::string> step);
std::string giveCommand(const CLIContext& context, std::vector<std::string> step,
                        const std::string& inputHash);
}  // namespace ombrix
