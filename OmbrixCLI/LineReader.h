// Sorts the words of a command line for CLI11, which would take the next word for the value of
// `--name=`, "-5" for an option, a surplus positional for a subcommand, and "-hx" for "-h". The
// result is unambiguous: command names, then `--name value` pairs, then "--" and the positionals.
#pragma once

#include <optional>
#include <string>
#include <vector>

namespace CLI {
class App;
}

namespace ombrix {

struct ReadLine {
    CLI::App* command = nullptr;         ///< the deepest command that the line names
    bool asksForHelp = false;            ///< wins over `problem`
    std::optional<std::string> problem;  ///< the first word that does not fit, as a sentence
    std::vector<std::string> words;      ///< for CLI11; valid only without a problem
};

/// Never throws, whatever `arguments` hold; linear in their bytes.
ReadLine readLine(CLI::App& root, const std::vector<std::string>& arguments);
}  // namespace ombrix
