#include "Completion.h"

namespace ombrix::Completion {
namespace {

/// A description inside what _arguments is told: brackets and colons end its parts.
std::string specText(std::string_view text) {
    std::string out;
    for (const char byte : text) {
        if (byte == '[' || byte == ']' || byte == ':' || byte == '\\') out += '\\';
        out += byte;
    }
    return out;
}

std::string action(const OptionDescription& option) {
    switch (kindOf(option)) {
        case ValueKind::files:
            return "_files";
        case ValueKind::folders:
            return "_files -/";
        case ValueKind::none:
            return " ";
    }
    return " ";
}

/// The branch of one command: the arguments of _arguments, then its subcommands.
std::string branch(const CommandDescription& command) {
    std::string arguments;
    const auto add = [&arguments](const std::string& spec) {
        arguments += " \\\n                " + singleQuoted(spec);
    };
    for (const OptionDescription& option : command.options) {
        const std::string text = "[" + specText(firstSentence(option.help)) + "]";
        if (option.value.empty())
            add(option.name + text);
        else
            add(option.name + "=" + text + ":" + specText(option.value) + ":" + action(option));
    }
    add("(-h --help)-h[Show this help.]");
    add("(-h --help)--help[Show this help.]");
    std::size_t place = 1;
    for (const OptionDescription& positional : command.positionals) {
        add(std::to_string(place++) + ":" + specText(firstSentence(positional.help)) + ":" +
            action(positional));
    }
    std::string commands;
    for (const CommandDescription& one : command.subcommands) {
        commands += " \\\n                " + singleQuoted(specText(one.name()) + ":" +
                                                           specText(firstSentence(one.abstract)));
    }
    std::string out = "        " + singleQuoted(command.path) + ")\n";
    if (!commands.empty()) {
        out += "            commands=(" + commands + ")\n            _describe command commands\n";
    }
    return out + "            _arguments" + arguments + " ;;\n";
}
}  // namespace

std::string zsh(const CommandDescription& tool) {
    std::string paths;
    std::string branches;
    for (const CommandDescription* const command : all(tool)) {
        paths += " " + singleQuoted(command->path);
        branches += branch(*command);
    }
    return "#compdef " + tool.path + "\n# zsh completion of " + tool.path +
           ", written by its build.\n\nlocal curcontext=$curcontext ret=1 path_=" + tool.path +
           "\nlocal -a paths commands\nlocal -i at\npaths=(" + paths + R"()
# The command that the words before this one name; it becomes the first word.
for ((at = 2; at < CURRENT; at++)); do
    (( ${paths[(Ie)$path_ ${words[at]}]} )) || continue
    path_="$path_ ${words[at]}"
    words=("$path_" "${(@)words[at + 1, -1]}")
    (( CURRENT -= at - 1, at = 1 ))
done
case $path_ in
)" + branches +
           "esac\n";
}
}  // namespace ombrix::Completion
