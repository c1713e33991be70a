// The texts that tell a person at a terminal how to call a command.
#pragma once

#include <string>
#include <string_view>

#include "OmbrixCLI/CommandDescription.h"

namespace ombrix::HelpText {

/// "Usage: tool notes [OPTIONS] (--stdin | --file PATH) ID" and a line feed.
std::string usage(const CommandDescription& command);

/// What it does, the usage, arguments, options, subcommands and examples; lines of at most 80
/// columns where words allow it, ending in a line feed.
std::string help(const CommandDescription& command);

/// `--file PATH`, or the positional `ID`.
std::string withValue(const OptionDescription& option);

/// "ID": how a positional of the name `id` is shown.
std::string positionalName(std::string_view name);

/// The help of an option with the value it has when it is not given, unless the help says so.
std::string withInitial(const OptionDescription& option);
}  // namespace ombrix::HelpText
