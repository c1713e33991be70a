#include "Completion.h"

namespace ombrix::Completion {
namespace {

/// The branch of one command: what it offers, each as "word<TAB>description", what its options take
/// and whether its positionals are paths.
std::string branch(const CommandDescription& command) {
    std::string words;
    const auto offer = [&words](std::string_view word, const std::string& text) {
        words += "                " + singleQuoted(std::string(word) + "\t" + firstSentence(text)) +
                 "\n";
    };
    for (const CommandDescription& one : command.subcommands) offer(one.name(), one.abstract);
    std::string valued;
    std::string files;
    std::string folders;
    for (const OptionDescription& option : command.options) {
        offer(option.name, option.help);
        if (option.value.empty()) continue;
        valued += " " + option.name;
        if (kindOf(option) == ValueKind::files) files += " " + option.name;
        if (kindOf(option) == ValueKind::folders) folders += " " + option.name;
    }
    offer("--help", "Show this help.");
    for (const OptionDescription& positional : command.positionals)
        if (kindOf(positional) == ValueKind::files) files += " argument";
    return "        " + singleQuoted(command.path) + ")\n            offers=(\n" + words +
           "            )\n            valued='" + valued + " ' files='" + files + " ' folders='" +
           folders + " ' ;;\n";
}
}  // namespace

std::string bash(const CommandDescription& tool) {
    const std::string function = "_" + identifier(tool);
    std::string table;
    std::string paths;
    for (const CommandDescription* const command : all(tool)) {
        table += branch(*command);
        paths += singleQuoted("|" + command->path + "|");
    }
    return "# bash completion of " + tool.path + ", written by its build.\n\n" + function +
           "_table() {\n    case $1 in\n" + table + "    esac\n}\n\n" + function +
           R"(() {
    local paths=)" +
           paths + R"( current=${COMP_WORDS[COMP_CWORD]} previous=
    local path=')" +
           tool.path + R"(' offers=() valued= files= folders= i word
    )" + function +
           R"(_table "$path"
    for ((i = 1; i < COMP_CWORD; i++)); do
        word=${COMP_WORDS[i]}
        if [[ $paths == *"|$path $word|"* ]]; then
            path="$path $word"
            )" +
           function + R"(_table "$path"
        elif [[ $valued == *" $word "* ]]; then
            [[ ${COMP_WORDS[i + 1]} != = ]] || ((i++))
            ((i + 1 < COMP_CWORD)) || previous=$word
            ((i++))
        fi
    done
    [[ $current != = ]] || current=
    COMPREPLY=()
    if [[ -n $previous ]]; then
        if [[ $folders == *" $previous "* ]]; then
            compopt -o filenames; mapfile -t COMPREPLY < <(compgen -d -- "$current")
        elif [[ $files == *" $previous "* ]]; then
            compopt -o filenames; mapfile -t COMPREPLY < <(compgen -f -- "$current")
        fi
        return
    fi
    for word in "${offers[@]}"; do
        [[ $word != "$current"* || ($word == -* && $current != -*) ]] || COMPREPLY+=("$word")
    done
    if ((${#COMPREPLY[@]} == 0)) && [[ $files == *' argument '* && $current != -* ]]; then
        compopt -o filenames; mapfile -t COMPREPLY < <(compgen -f -- "$current")
    elif ((${#COMPREPLY[@]} == 1)) || [[ $COMP_TYPE == 37 || $COMP_TYPE == 42 ]]; then
        COMPREPLY=("${COMPREPLY[@]%%$'\t'*}")
    else
        # Several: shown with what they are; bash takes only what they begin with.
        COMPREPLY=("${COMPREPLY[@]/$'\t'/  -- }")
    fi
}

complete -F )" +
           function + " " + tool.path + "\n";
}
}  // namespace ombrix::Completion
