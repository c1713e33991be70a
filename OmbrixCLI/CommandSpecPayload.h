// The table of commands by which an agent discovers the tool. Fixed text: agents have it in their
// prompts, so it is not generated from the parser, and a row stays as it is when its command
// changes.
#pragma once

#include <string_view>
#include <vector>

namespace ombrix::CommandSpecPayload {

struct SpecCommand {
    std::string_view name;
    std::string_view usage;
    std::string_view summary;
    std::vector<std::string_view> examples;
};

/// Every row, in the order in which `spec` prints them.
const std::vector<SpecCommand>& commands();
}  // namespace ombrix::CommandSpecPayload
