#include "ManualPage.h"

#include <algorithm>

#include "OmbrixCLI/HelpText.h"
#include "OmbrixPlatform/Text.h"

namespace ombrix::ManualPage {
namespace {

/// `text` so that roff prints each of its characters: a backslash and a hyphen have meanings of
/// their own, and so has a point or an apostrophe at the start of a line.
std::string escaped(std::string_view text) {
    std::string out;
    if (text.starts_with('.') || text.starts_with('\'')) out += "\\&";
    for (const char byte : text) {
        if (byte == '\\')
            out += "\\e";
        else if (byte == '-')
            out += "\\-";
        else
            out += byte;
    }
    return out;
}

std::string bold(std::string_view text) { return "\\fB" + escaped(text) + "\\fR"; }
std::string italic(std::string_view text) { return "\\fI" + escaped(text) + "\\fR"; }

/// "ombrix-cli answer" is one program and a word; its page is named with hyphens.
std::string reference(const CommandDescription& command) { return bold(name(command)) + "(1)"; }

void appendOption(std::string& out, const OptionDescription& option) {
    out += ".TP\n";
    if (!option.name.starts_with('-'))
        out += italic(HelpText::withValue(option));
    else
        out += bold(option.name) + (option.value.empty() ? "" : " " + italic(option.value));
    out += "\n" + escaped(HelpText::withInitial(option)) + "\n";
}

/// The usage as `help` has it, its first word being "Usage:".
std::string synopsis(const CommandDescription& command) {
    std::string line = HelpText::usage(command);
    line.erase(0, line.find(' ') + 1);
    line.pop_back();
    return bold(command.path) + escaped(line.substr(command.path.size())) + "\n";
}

void appendSubcommands(std::string& out, const CommandDescription& command) {
    if (command.subcommands.empty()) return;
    out += ".SH COMMANDS\n";
    for (const CommandDescription& one : command.subcommands)
        out += ".TP\n" + reference(one) + "\n" + escaped(one.abstract) + "\n";
}

void appendOptions(std::string& out, const CommandDescription& command) {
    out += ".SH OPTIONS\n";
    for (const OptionDescription& positional : command.positionals) appendOption(out, positional);
    for (const OptionDescription& option : command.options) appendOption(out, option);
    out += ".TP\n" + bold("-h") + ", " + bold("--help") + "\nShow the usage.\n";
}

void appendExamples(std::string& out, const CommandDescription& command) {
    if (command.examples.empty()) return;
    out += ".SH EXAMPLES\n";
    for (const std::string& example : command.examples)
        out += ".PP\n.nf\n.RS\n" + escaped(example) + "\n.RE\n.fi\n";
}

/// The first sentence, without its point: what apropos(1) lists.
std::string shortened(const std::string& abstract) {
    const auto end = std::min(abstract.find(". "), abstract.size());
    std::string first = abstract.substr(0, end);
    if (first.ends_with('.')) first.pop_back();
    return first;
}
}  // namespace

std::string name(const CommandDescription& command) {
    std::string page = command.path;
    std::replace(page.begin(), page.end(), ' ', '-');
    return page;
}

std::string text(const CommandDescription& tool, const CommandDescription& command,
                 std::string_view version, std::string_view common) {
    std::string title = name(command);
    std::ranges::transform(title, title.begin(), Text::asciiUppercased);
    std::string out = ".TH " + escaped(title) + " 1 \"\" \"" + tool.path + " " +
                      std::string(version) + "\" \"\"\n";
    // apropos(1) wants the plain name and one line.
    out += ".SH NAME\n" + escaped(name(command)) + " \\- " + escaped(shortened(command.abstract)) +
           "\n";
    out += ".SH SYNOPSIS\n" + synopsis(command);
    out += ".SH DESCRIPTION\n" + escaped(command.abstract) + "\n";
    appendSubcommands(out, command);
    appendOptions(out, command);
    appendExamples(out, command);
    out += common;
    out += ".SH SEE ALSO\n";
    if (tool.path != command.path) out += reference(tool) + ".\n";
    out += "The pages in\n.I /usr/share/doc/ombrix\\-cli/docs\n";
    return out;
}
}  // namespace ombrix::ManualPage
