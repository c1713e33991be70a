// `spec`: a tool's table of commands, by which an agent discovers it. The table is fixed text, so
// each tool writes its own; what is printed of it is the same for all.
#pragma once

#include <string_view>
#include <vector>

#include "OmbrixCLI/CommandLine.h"

namespace ombrix {

struct SpecCommand {
    std::string_view name;
    std::string_view usage;
    std::string_view summary;
    std::vector<std::string_view> examples;
};

/// Declares `spec`, which prints these rows in their order, and lets the bare tool do the same. The
/// rows' examples are also those of the help.
void declareSpec(const Command& root, const std::vector<SpecCommand>& (*rows)());
}  // namespace ombrix
