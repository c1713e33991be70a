#include "OmbrixCLI/LineAdvice.h"

#include <CLI/CLI.hpp>
#include <array>

#include "OmbrixCLI/CommandPath.h"
#include "OmbrixPlatform/Text.h"

namespace ombrix::LineAdvice {
namespace {

constexpr std::size_t longestWord = 64;

/// Words of other tools for what a command of ours does.
struct Synonym {
    std::string_view word;
    std::string_view command;
};
constexpr std::array synonyms{
    Synonym{"ls", "list"},      Synonym{"all", "list"},      Synonym{"show", "get"},
    Synonym{"view", "get"},     Synonym{"read", "get"},      Synonym{"cat", "get"},
    Synonym{"ask", "answer"},   Synonym{"search", "answer"}, Synonym{"find", "answer"},
    Synonym{"query", "answer"}, Synonym{"actions", "moves"}, Synonym{"notes", "update-notes"}};

std::vector<const CLI::App*> subcommands(const CLI::App& group) {
    return group.get_subcommands([](const CLI::App*) { return true; });
}

const CLI::App& rootOf(const CLI::App& command) {
    return command.get_parent() == nullptr ? command : rootOf(*command.get_parent());
}

template <typename Visit>
void visitAll(const CLI::App& command, const Visit& visit) {
    visit(command);
    for (const CLI::App* const one : subcommands(command)) visitAll(*one, visit);
}

bool hasOption(const CLI::App& command, const std::string& name) {
    return command.get_option_no_throw(name) != nullptr;
}

/// "'a', 'b' or 'c'".
std::string alternatives(const std::vector<std::string>& names) {
    std::string text;
    for (std::size_t i = 0; i < names.size(); ++i) {
        if (i > 0) text += i + 1 == names.size() ? " or " : ", ";
        text += "'" + names[i] + "'";
    }
    return text;
}

/// `text` as one word of a shell's line.
std::string shellWord(std::string_view text) {
    std::string out = "\"";
    for (const char byte : text) {
        if (std::string_view("\"\\$`").find(byte) != std::string_view::npos) out += '\\';
        out += byte;
    }
    return out + "\"";
}

/// The deepest command below `from` that words of `rest` name, others among them passed over.
const CLI::App& commandNamed(const CLI::App& from, std::span<const std::string> rest) {
    const CLI::App* command = &from;
    for (const std::string& word : rest)
        for (const CLI::App* const one : subcommands(*command))
            if (one->get_name() == word) {
                command = one;
                break;
            }
    return *command;
}

std::size_t edits(std::string_view a, std::string_view b) {
    std::vector<std::vector<std::size_t>> cost(a.size() + 1,
                                               std::vector<std::size_t>(b.size() + 1));
    for (std::size_t i = 0; i <= a.size(); ++i) {
        for (std::size_t j = 0; j <= b.size(); ++j) {
            if (i == 0 || j == 0) {
                cost[i][j] = i + j;
                continue;
            }
            const std::size_t differs = a[i - 1] == b[j - 1] ? 0 : 1;
            cost[i][j] =
                std::min({cost[i - 1][j] + 1, cost[i][j - 1] + 1, cost[i - 1][j - 1] + differs});
            if (i > 1 && j > 1 && a[i - 1] == b[j - 2] && a[i - 2] == b[j - 1])
                cost[i][j] = std::min(cost[i][j], cost[i - 2][j - 2] + 1);
        }
    }
    return cost[a.size()][b.size()];
}
}  // namespace

std::string nearest(std::string_view word, std::span<const std::string> candidates) {
    if (word.size() > longestWord) return {};
    std::size_t best = std::min<std::size_t>(3, (word.size() + 2) / 3) + 1;
    std::string found;
    for (const std::string& candidate : candidates) {
        const std::size_t distance = edits(word, candidate);
        if (distance >= best) continue;
        best = distance;
        found = candidate;
    }
    return found;
}

std::string unknownCommand(const CLI::App& group, std::string_view word) {
    std::string problem = "Unknown command '" + std::string(word) + "'";
    std::vector<std::string> names;
    for (const CLI::App* const one : subcommands(group)) names.push_back(one->get_name());
    std::string_view meant = word;
    for (const Synonym& synonym : synonyms)
        if (synonym.word == word) meant = synonym.command;
    // The same name in another group: "list" alone is "meetings list" or "dictations list".
    std::vector<std::string> elsewhere;
    visitAll(rootOf(group), [&](const CLI::App& command) {
        if (command.get_name() == meant) elsewhere.push_back(commandPath(command));
    });
    if (std::find(names.begin(), names.end(), meant) != names.end())
        return problem + ". Did you mean '" + std::string(meant) + "'?";
    if (!elsewhere.empty()) return problem + ". Did you mean " + alternatives(elsewhere) + "?";
    const std::string near = nearest(word, names);
    return near.empty() ? problem : problem + ". Did you mean '" + near + "'?";
}

std::string unknownOption(const CLI::App& command, std::string_view word,
                          std::span<const std::string> rest) {
    const std::string problem = "Unknown option '" + std::string(word) + "'";
    const std::string name(word.substr(0, word.find('=')));
    std::vector<std::string> holders;
    visitAll(rootOf(command), [&](const CLI::App& one) {
        if (hasOption(one, name)) holders.push_back(commandPath(one));
    });
    const CLI::App& meant = commandNamed(command, rest);
    if (&meant != &command && hasOption(meant, name)) {
        return "The option '" + name + "' goes after the command: " + commandPath(meant) + " " +
               name + " …";
    }
    if (holders.size() > 3) return problem + " here. Options go after the command they belong to.";
    if (!holders.empty()) return problem + ". It is an option of " + alternatives(holders) + ".";

    std::vector<std::string> names;
    for (const CLI::Option* const option : command.get_options())
        if (!option->get_positional()) names.push_back(option->get_name());
    const std::string near = nearest(name, names);
    return near.empty() ? problem : problem + ". Did you mean '" + near + "'?";
}

std::string unexpectedArgument(const CLI::App& command, std::span<const std::string> positionals,
                               std::string_view word, std::span<const std::string> rest) {
    const std::string problem = "Unexpected argument '" + std::string(word) + "'";
    const auto takesText = [](const CLI::Option* option) {
        return option->get_positional() && option->get_type_name() == "TEXT";
    };
    if (positionals.size() != 1 || positionals.front().find(' ') != std::string::npos ||
        command.get_options(takesText).empty())
        return problem;
    std::string whole = positionals.front() + " " + std::string(word);
    for (const std::string& next : rest) {
        if (next.starts_with('-')) break;
        whole += " " + next;
    }
    return problem + ". A text of several words needs quotes: " + commandPath(command) + " " +
           shellWord(whole);
}
}  // namespace ombrix::LineAdvice
