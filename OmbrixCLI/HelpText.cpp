#include "OmbrixCLI/HelpText.h"

#include <algorithm>

#include "OmbrixPlatform/Text.h"

namespace ombrix::HelpText {
namespace {

constexpr std::size_t width = 80;
/// Where the explanations begin; a longer name has its own line.
constexpr std::size_t indent = 26;

/// The columns that a text of narrow characters takes: its code points.
std::size_t columns(std::string_view text) {
    return static_cast<std::size_t>(
        std::count_if(text.begin(), text.end(), [](char byte) { return (byte & 0xC0) != 0x80; }));
}

/// Appends the words of `text` at column `from`, broken into lines that begin at column `left`.
void appendWrapped(std::string& out, std::string_view text, std::size_t left, std::size_t from) {
    std::size_t column = from;
    bool isFirst = true;
    while (!text.empty()) {
        const auto end = std::min(text.find(' '), text.size());
        const auto word = text.substr(0, end);
        text.remove_prefix(std::min(end + 1, text.size()));
        if (!isFirst && column + 1 + columns(word) > width) {
            out += '\n' + std::string(left, ' ');
            column = left;
        } else if (!isFirst) {
            out += ' ';
            ++column;
        }
        out += word;
        column += columns(word);
        isFirst = false;
    }
    out += '\n';
}

void appendRow(std::string& out, const std::string& name, std::string_view explanation) {
    out += "  " + name;
    std::size_t column = 2 + columns(name);
    if (explanation.empty()) {
        out += '\n';
        return;
    }
    if (column + 2 > indent) {
        out += '\n';
        column = 0;
    }
    out += std::string(indent - column, ' ');
    appendWrapped(out, explanation, indent, indent);
}

bool isAlternative(const CommandDescription& command, const std::string& name) {
    return std::any_of(command.alternatives.begin(), command.alternatives.end(),
                       [&name](const auto& group) {
                           return std::find(group.begin(), group.end(), name) != group.end();
                       });
}

const OptionDescription& optionNamed(const CommandDescription& command, const std::string& name) {
    return *std::find_if(command.options.begin(), command.options.end(),
                         [&name](const OptionDescription& option) { return option.name == name; });
}
}  // namespace

std::string positionalName(std::string_view name) {
    std::string shown(name);
    std::ranges::transform(shown, shown.begin(), Text::asciiUppercased);
    return shown;
}

std::string withValue(const OptionDescription& option) {
    if (!option.name.starts_with('-')) return positionalName(option.name);
    return option.value.empty() ? option.name : option.name + " " + option.value;
}

std::string withInitial(const OptionDescription& option) {
    if (option.initial.empty() || option.help.find("default") != std::string::npos)
        return option.help;
    return option.help + " (default: " + option.initial + ")";
}

std::string usage(const CommandDescription& command) {
    std::string line = "Usage: " + command.path;
    const auto isFree = [&command](const OptionDescription& option) {
        return !option.isRequired && !isAlternative(command, option.name);
    };
    if (std::any_of(command.options.begin(), command.options.end(), isFree)) line += " [OPTIONS]";
    for (const OptionDescription& option : command.options)
        if (option.isRequired) line += " " + withValue(option);
    for (const auto& group : command.alternatives) {
        std::vector<std::string> shown;
        for (const std::string& name : group)
            shown.push_back(withValue(optionNamed(command, name)));
        line += " (" + Text::joined(shown, " | ") + ")";
    }
    for (const OptionDescription& positional : command.positionals) {
        const std::string name = positionalName(positional.name);
        line += positional.isRequired ? " " + name : " [" + name + "]";
    }
    if (!command.subcommands.empty()) line += command.works ? " [COMMAND]" : " COMMAND";
    return line + "\n";
}

std::string help(const CommandDescription& command) {
    std::string out;
    appendWrapped(out, command.abstract, 0, 0);
    out += '\n' + usage(command);
    if (!command.positionals.empty()) out += "\nArguments:\n";
    for (const OptionDescription& positional : command.positionals)
        appendRow(out, withValue(positional), withInitial(positional));
    out += "\nOptions:\n";
    for (const OptionDescription& option : command.options)
        appendRow(out, withValue(option), withInitial(option));
    appendRow(out, "-h, --help", "Show this help.");
    if (!command.subcommands.empty()) out += "\nCommands:\n";
    for (const CommandDescription& subcommand : command.subcommands)
        appendRow(out, subcommand.name(), subcommand.abstract);
    if (!command.examples.empty()) out += "\nExamples:\n";
    for (const std::string& example : command.examples) out += "  " + example + "\n";
    return out;
}
}  // namespace ombrix::HelpText
