// Completions for shells: a script that knows every command, option and description of one tool.
// The last word of a line is completed to subcommands, to options, or to files where the value is a
// path. The words before it are read as the tool reads them: options do not change the command.
#pragma once

#include <algorithm>
#include <string>
#include <string_view>
#include <vector>

#include "OmbrixCLI/CommandDescription.h"

namespace ombrix::Completion {

/// For bash-completion, in a file named after the tool.
std::string bash(const CommandDescription& tool);
/// For fish, in TOOL.fish.
std::string fish(const CommandDescription& tool);
/// For zsh, in _TOOL.
std::string zsh(const CommandDescription& tool);

/// What a shell offers in the place of a value or a positional.
enum class ValueKind { files, folders, none };

/// By the word that stands for the value.
inline ValueKind kindOf(const OptionDescription& option) {
    if (option.value == "DIR" || option.name == "folder") return ValueKind::folders;
    if (option.value == "PATH" || option.name == "path") return ValueKind::files;
    return ValueKind::none;
}

/// The tool's name as a shell's functions may be called: "ombrix_cli".
inline std::string identifier(const CommandDescription& tool) {
    std::string name = tool.path;
    std::replace(name.begin(), name.end(), '-', '_');
    return name;
}

/// The first sentence of a description.
inline std::string firstSentence(const std::string& text) {
    return text.substr(0, text.find(". "));
}

/// `text` between single quotes, as POSIX shells and zsh read it.
inline std::string singleQuoted(std::string_view text) {
    std::string out = "'";
    for (const char byte : text) out += byte == '\'' ? std::string("'\\''") : std::string(1, byte);
    return out + "'";
}

/// Every command of the tool, the tool first.
inline std::vector<const CommandDescription*> all(const CommandDescription& tool) {
    std::vector<const CommandDescription*> found{&tool};
    for (std::size_t i = 0; i < found.size(); ++i)
        for (const CommandDescription& one : found[i]->subcommands) found.push_back(&one);
    return found;
}
}  // namespace ombrix::Completion
