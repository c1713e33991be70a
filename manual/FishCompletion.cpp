#include "Completion.h"

namespace ombrix::Completion {
namespace {

/// What the completion of an option says of its value.
std::string_view valueOf(const OptionDescription& option) {
    if (option.value.empty()) return "";
    switch (kindOf(option)) {
        case ValueKind::files:
            return " -r -F";
        case ValueKind::folders:
            return " -x -a '(__fish_complete_directories)'";
        case ValueKind::none:
            break;
    }
    return " -x";
}

/// Between single quotes as fish reads them: only a quote and a backslash are escaped.
std::string fishQuoted(std::string_view text) {
    std::string out = "'";
    for (const char byte : text) {
        if (byte == '\'' || byte == '\\') out += '\\';
        out += byte;
    }
    return out + "'";
}

/// "__ombrix_cli_at"
std::string functionName(const CommandDescription& tool) { return "__" + identifier(tool) + "_at"; }

std::string lines(const CommandDescription& tool, const CommandDescription& command) {
    const std::string start = "complete -c " + tool.path + " -n " +
                              fishQuoted(functionName(tool) + " " + fishQuoted(command.path));
    std::string out;
    for (const CommandDescription& one : command.subcommands) {
        out += start + " -f -a " + one.name() + " -d " + fishQuoted(firstSentence(one.abstract)) +
               "\n";
    }
    for (const OptionDescription& option : command.options) {
        out += start + " -l " + option.name.substr(2) + std::string(valueOf(option)) + " -d " +
               fishQuoted(firstSentence(option.help)) + "\n";
    }
    for (const OptionDescription& positional : command.positionals)
        if (kindOf(positional) == ValueKind::files) out += start + " -F\n";
    return out + start + " -s h -l help -d 'Show this help.'\n";
}
}  // namespace

std::string fish(const CommandDescription& tool) {
    const std::string function = functionName(tool);
    std::string paths;
    std::string completions;
    for (const CommandDescription* const command : all(tool)) {
        paths += " " + fishQuoted(command->path);
        completions += lines(tool, *command);
    }
    return "# fish completion of " + tool.path + ", written by its build.\n\n" +
           "# Whether the words of the line name this command and no command below it.\n" +
           "function " + function + "\n    set -l paths" + paths + R"(
    set -l path )" +
           tool.path + R"(
    for word in (commandline -opc)[2..-1]
        contains -- "$path $word" $paths; and set path "$path $word"
    end
    test "$path" = "$argv[1]"
end

complete -c )" +
           tool.path + " -f\n" + completions;
}
}  // namespace ombrix::Completion
