#include "OmbrixCLI/LineReader.h"

#include <CLI/CLI.hpp>
#include <span>
#include <string_view>

#include "OmbrixCLI/CommandPath.h"
#include "OmbrixCLI/LineAdvice.h"
#include "OmbrixPlatform/Numbers.h"
#include "OmbrixPlatform/Text.h"

namespace ombrix {
namespace {

/// "-x", "--name" and "--name=value"; not "-", "-3", nor a text such as "- call Tomas back".
bool isOptionWord(std::string_view word) {
    if (word.size() < 2 || word.front() != '-') return false;
    if (Numbers::parseDouble(word)) return false;
    const auto name = word.substr(0, word.find('='));
    return name.find_first_of(" \t\n\r\f\v") == std::string_view::npos;
}

bool isHelpWord(std::string_view word) { return word == "--help" || word == "-h"; }

CLI::App* subcommandNamed(CLI::App& app, const std::string& name) {
    const auto found =
        app.get_subcommands([&name](const CLI::App* one) { return one->get_name() == name; });
    return found.empty() ? nullptr : found.front();
}

bool hasSubcommands(const CLI::App& app) { return !app.get_subcommands({}).empty(); }

class Reader {
  public:
    Reader(CLI::App& root, const std::vector<std::string>& arguments) : arguments_(arguments) {
        line_.command = &root;
    }

    ReadLine read() {
        for (; next_ < arguments_.size(); ++next_) {
            const std::string& word = arguments_[next_];
            if (optionsEnded_)
                addPositional(word);
            else if (word == "--")
                optionsEnded_ = true;
            else if (isHelpWord(word))
                line_.asksForHelp = true;
            else if (isOptionWord(word))
                readOption(word);
            else
                readWord(word);
        }
        // "help nosuch" names no command; with "--help" any line prints some help.
        if (asksByName_ && !line_.problem) line_.asksForHelp = true;
        line_.words = std::move(names_);
        line_.words.insert(line_.words.end(), options_.begin(), options_.end());
        if (!positionals_.empty()) line_.words.emplace_back("--");
        line_.words.insert(line_.words.end(), positionals_.begin(), positionals_.end());
        return std::move(line_);
    }

  private:
    /// `say` makes the sentence; only the first problem is worth it.
    template <typename Say>
    void complain(const Say& say) {
        if (!line_.problem) line_.problem = say();
    }

    /// What follows the word that is being read.
    std::span<const std::string> rest() const { return std::span(arguments_).subspan(next_ + 1); }

    void readWord(const std::string& word) {
        if (!hasSubcommands(*line_.command) && !asksByName_) return addPositional(word);
        if (word == "help" && hasSubcommands(*line_.command)) {
            asksByName_ = true;
            return;
        }
        CLI::App* const subcommand = subcommandNamed(*line_.command, word);
        if (subcommand == nullptr) {
            complain([&] { return LineAdvice::unknownCommand(*line_.command, word); });
        } else if (!options_.empty()) {
            complain([&] {
                return "The options of '" + commandPath(*line_.command) +
                       "' cannot stand before its subcommand '" + word + "'";
            });
        } else {
            line_.command = subcommand;
            names_.push_back(word);
        }
    }

    void readOption(const std::string& word) {
        const auto equals = word.find('=');
        const std::string name = word.substr(0, equals);
        const CLI::Option* const option = line_.command->get_option_no_throw(name);
        if (option == nullptr) {
            return complain(
                [&] { return LineAdvice::unknownOption(*line_.command, word, rest()); });
        }
        const bool isFlag = option->get_items_expected_max() == 0;
        if (isFlag && equals != std::string::npos)
            return complain([&] { return "The option '" + name + "' takes no value"; });
        options_.push_back(name);
        if (isFlag) return;
        if (equals != std::string::npos)
            options_.push_back(word.substr(equals + 1));
        else if (next_ + 1 < arguments_.size() && !isOptionWord(arguments_[next_ + 1]))
            options_.push_back(arguments_[++next_]);
        else
            complain([&] { return "Missing value for '" + name + "'"; });
    }

    void addPositional(const std::string& word) {
        const auto room =
            line_.command
                ->get_options([](const CLI::Option* option) { return option->get_positional(); })
                .size();
        if (positionals_.size() == room) {
            return complain([&] {
                return LineAdvice::unexpectedArgument(*line_.command, positionals_, word, rest());
            });
        }
        positionals_.push_back(word);
    }

    const std::vector<std::string>& arguments_;
    std::size_t next_ = 0;
    bool optionsEnded_ = false;
    bool asksByName_ = false;  ///< the word "help" was read: what follows names a command
    std::vector<std::string> names_;
    std::vector<std::string> options_;
    std::vector<std::string> positionals_;
    ReadLine line_;
};
}  // namespace

ReadLine readLine(CLI::App& root, const std::vector<std::string>& arguments) {
    return Reader(root, arguments).read();
}
}  // namespace ombrix
