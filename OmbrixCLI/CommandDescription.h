// What a tool's command line is, as plain records: the one source of the help texts, the manual
// pages and the completions.
#pragma once

#include <string>
#include <vector>

namespace ombrix {

/// An option or a positional.
struct OptionDescription {
    std::string name;     ///< "--limit"; of a positional "id"
    std::string value;    ///< what stands for its value, "N"; empty for a flag
    std::string initial;  ///< its value when the line does not name it; empty when it has none
    std::string help;
    bool isRequired = false;
};

struct CommandDescription {
    std::string path;  ///< "ombrix-cli meetings list"
    std::string abstract;
    std::vector<OptionDescription> positionals;
    std::vector<OptionDescription> options;  ///< without "--help", which every command has
    /// Exactly one option of each group must be given.
    std::vector<std::vector<std::string>> alternatives;
    std::vector<std::string> examples;  ///< whole lines for a shell
    std::vector<CommandDescription> subcommands;
    bool works = false;  ///< false when it only groups its subcommands

    /// "list": the last word of the path.
    std::string name() const { return path.substr(path.rfind(' ') + 1); }
};
}  // namespace ombrix
