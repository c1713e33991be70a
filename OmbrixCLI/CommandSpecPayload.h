// The table of commands by which an agent discovers the tool. Fixed text: agents have it in their
// prompts, so it is not generated from the parser, and a row stays as it is when its command
// changes.
#pragma once

#include <vector>

#include "OmbrixCLI/CommandSpec.h"

namespace ombrix::CommandSpecPayload {

/// Every row, in the order in which `spec` prints them.
const std::vector<SpecCommand>& commands();
}  // namespace ombrix::CommandSpecPayload
