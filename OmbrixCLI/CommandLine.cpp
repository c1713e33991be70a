#include "OmbrixCLI/CommandLine.h"

#include <CLI/CLI.hpp>
#include <algorithm>
#include <unordered_map>
#include <unordered_set>
#include <utility>

#include "OmbrixCLI/CommandPath.h"
#include "OmbrixCLI/HelpText.h"
#include "OmbrixCLI/LineReader.h"
#include "OmbrixPlatform/Numbers.h"
#include "OmbrixPlatform/Text.h"

namespace ombrix {

struct Command::Registry {
    struct Actions {
        std::function<void()> check;
        std::function<void()> work;
    };
    std::unordered_map<const CLI::App*, Actions> actions;
    /// For each command that has some, the groups of options of which exactly one must be given.
    std::unordered_map<const CLI::App*, std::vector<std::vector<std::string>>> alternatives;
    std::function<std::vector<std::string>(std::string_view path)> examples;

    bool everyCommandTakesNow = false;

    const std::vector<std::string>* words = nullptr;   ///< of these, commands are declared
    std::unordered_set<const CLI::App*> incomplete{};  ///< commands that lack subcommands

    bool isNamed(const std::string& command) const {
        return words == nullptr || std::ranges::find(*words, command) != words->end();
    }
    CommandDescription described(const CLI::App& command) const;
};

namespace {

/// The C library skips white space before a number; on a command line it is a mistake.
std::optional<double> parseNumber(std::string_view text) {
    constexpr std::string_view whiteSpace = " \t\n\v\f\r";
    if (text.find_first_of(whiteSpace) != std::string_view::npos) return std::nullopt;
    return Numbers::parseDouble(text);
}

template <typename Number, typename Target>
std::function<bool(const std::string&)> storing(std::optional<Number> (*parse)(std::string_view),
                                                Target& target) {
    return [parse, &target](const std::string& text) {
        const auto number = parse(text);
        if (number) target = *number;
        return number.has_value();
    };
}

template <typename Target>
std::function<bool(const std::string&)> storingText(Target& target) {
    return [&target](const std::string& text) {
        target = text;
        return true;
    };
}

OptionDescription described(const CLI::Option& option) {
    const bool isFlag = option.get_items_expected_max() == 0;
    return {.name = option.get_name(),
            .value = isFlag ? "" : option.get_type_name(),
            .initial = option.get_default_str(),
            .help = option.get_description(),
            .isRequired = option.get_required()};
}

/// The tables of `spec` are fixed text; a line of theirs may name an option that is not there.
bool namesUnknownOption(const CLI::App& command, std::string_view line) {
    return std::ranges::any_of(Text::split(line, " "), [&command](std::string_view word) {
        return word.starts_with("--") && command.get_option_no_throw(std::string(word)) == nullptr;
    });
}

/// Throws `UsageError` when not exactly one option of a group is on the line.
void checkAlternatives(const CLI::App& command,
                       const std::vector<std::vector<std::string>>& groups) {
    for (const auto& group : groups) {
        const auto given = std::count_if(
            group.begin(), group.end(),
            [&command](const std::string& name) { return command.get_option(name)->count() > 0; });
        if (given != 1) throw UsageError("Use exactly one of " + Text::joined(group, " or ") + ".");
    }
}
}  // namespace

CommandDescription Command::Registry::described(const CLI::App& command) const {
    CommandDescription out;
    out.path = commandPath(command);
    out.abstract = command.get_description();
    for (const CLI::Option* const option : command.get_options()) {
        if (option == command.get_help_ptr()) continue;
        (option->get_positional() ? out.positionals : out.options)
            .push_back(ombrix::described(*option));
    }
    const auto groups = alternatives.find(&command);
    if (groups != alternatives.end()) out.alternatives = groups->second;
    const auto firstBlank = out.path.find(' ');
    if (examples && firstBlank != std::string::npos) {
        out.examples = examples(std::string_view(out.path).substr(firstBlank + 1));
        std::erase_if(out.examples,
                      [&](const auto& line) { return namesUnknownOption(command, line); });
    }
    for (const CLI::App* const one : command.get_subcommands([](const CLI::App*) { return true; }))
        out.subcommands.push_back(described(*one));
    const auto found = actions.find(&command);
    out.works = found != actions.end() && found->second.work;
    return out;
}

// ---- declaring --------------------------------------------------------------------------------

Command Command::subcommand(const std::string& name, const std::string& abstract) const {
    if (app_ == nullptr) return *this;
    if (registry_->isNamed(name)) return {app_->add_subcommand(name, abstract), *registry_};
    registry_->incomplete.insert(app_);
    return {nullptr, *registry_};
}

void Command::addOption(const std::string& nameAndValue, const std::string& help, const char* kind,
                        std::function<bool(const std::string&)> store, Presence presence,
                        const std::optional<std::string>& initial) const {
    if (app_ == nullptr) return;
    const auto blank = std::min(nameAndValue.find(' '), nameAndValue.size());
    const std::string name = nameAndValue.substr(0, blank);
    const std::string value = blank == nameAndValue.size() ? kind : nameAndValue.substr(blank + 1);
    // CLI11 passes the text of the last occurrence; its own conversions are not used.
    const auto take = [name, store = std::move(store)](const CLI::results_t& texts) {
        if (store(texts.back())) return true;
        throw UsageError("The value '" + texts.back() + "' is invalid for '" + name + "'");
    };
    CLI::Option* const option = app_->add_option(name, take, help)
                                    ->type_name(value)
                                    ->multi_option_policy(CLI::MultiOptionPolicy::TakeLast)
                                    ->required(presence == Presence::required);
    if (initial) option->default_str(*initial);
}

void Command::flag(const std::string& name, bool& target, const std::string& help) const {
    if (app_ == nullptr) return;
    app_->add_flag_callback(
            name, [&target] { target = true; }, help)
        ->multi_option_policy(CLI::MultiOptionPolicy::TakeLast);
}

void Command::option(const std::string& name, std::int64_t& target, const std::string& help) const {
    addOption(name, help, "N", storing(&Numbers::parseInteger<std::int64_t>, target),
              Presence::optional, std::to_string(target));
}

void Command::option(const std::string& name, std::optional<std::int64_t>& target,
                     const std::string& help) const {
    addOption(name, help, "N", storing(&Numbers::parseInteger<std::int64_t>, target),
              Presence::optional);
}

void Command::option(const std::string& name, double& target, const std::string& help) const {
    addOption(name, help, "N", storing(&parseNumber, target), Presence::optional,
              Numbers::shortest(target));
}

void Command::option(const std::string& name, std::string& target, const std::string& help,
                     Presence presence) const {
    storeText(name, target, help, presence);
}

void Command::option(const std::string& name, std::optional<std::string>& target,
                     const std::string& help) const {
    addOption(name, help, "TEXT", storingText(target), Presence::optional);
}

void Command::positional(const std::string& name, std::int64_t& target,
                         const std::string& help) const {
    addOption(name, help, "N", storing(&Numbers::parseInteger<std::int64_t>, target),
              Presence::required);
}

void Command::positional(const std::string& name, std::string& target, const std::string& help,
                         Presence presence) const {
    storeText(name, target, help, presence);
}

void Command::storeText(const std::string& name, std::string& target, const std::string& help,
                        Presence presence) const {
    std::optional<std::string> initial;
    if (presence == Presence::optional) initial = target;
    addOption(name, help, "TEXT", storingText(target), presence, initial);
}

void Command::everyCommandTakesNow() const { registry_->everyCommandTakesNow = true; }

void Command::globalOptions(GlobalOptions& target) const {
    if (registry_->everyCommandTakesNow) {
        option("--now DATE", target.now,
               "Evaluate as if today were this date (YYYY-MM-DD). Testing aid.");
    }
    option("--db-path PATH", target.dbPath, "Override the absolute path to ombrix.db.");
    option("--support-dir DIR", target.supportDir,
           "Override the Ombrix support directory. The CLI will look for ombrix.db inside it.");
}

void Command::exactlyOne(std::vector<std::string> names) const {
    if (app_ != nullptr) registry_->alternatives[app_].push_back(std::move(names));
}

void Command::examples(
    std::function<std::vector<std::string>(std::string_view path)> linesOf) const {
    registry_->examples = std::move(linesOf);
}

std::string Command::path() const { return app_ == nullptr ? std::string() : commandPath(*app_); }

void Command::validate(std::function<void()> check) const {
    if (app_ != nullptr) registry_->actions[app_].check = std::move(check);
}

void Command::run(std::function<void()> work) const {
    if (app_ != nullptr) registry_->actions[app_].work = std::move(work);
}

// ---- parsing ----------------------------------------------------------------------------------

CommandLine::CommandLine(const std::string& name, const std::string& abstract)
    : app_(std::make_unique<CLI::App>(abstract, name)),
      registry_(std::make_unique<Command::Registry>()) {
    // `readLine` handles these; CLI11 only lists them in the help.
    app_->set_help_flag("-h,--help", "Show this help.");
}

CommandLine::CommandLine(const std::string& name, const std::string& abstract,
                         const std::vector<std::string>& words)
    : CommandLine(name, abstract) {
    registry_->words = &words;
}

CommandLine::~CommandLine() = default;

Command CommandLine::root() const { return {app_.get(), *registry_}; }

CommandDescription CommandLine::description() const { return registry_->described(*app_); }

void CommandLine::accept(const ReadLine& line) {
    // CLI11 expects the words in reverse order.
    app_->parse(std::vector<std::string>(line.words.rbegin(), line.words.rend()));
    checkAlternatives(*line.command, registry_->alternatives[line.command]);
    if (const auto& check = registry_->actions[line.command].check) check();
}

CommandLine::Choice CommandLine::parse(const std::vector<std::string>& arguments) {
    const ReadLine line = readLine(*app_, arguments);
    const Command::Registry::Actions& actions = registry_->actions[line.command];
    const auto help = [&] {
        return Choice{.help = HelpText::help(registry_->described(*line.command)), .work = {}};
    };
    const auto usage = [&] {
        return HelpText::usage(registry_->described(*line.command)) + "See '" +
               commandPath(*line.command) + " --help' for more information.\n";
    };
    if (line.asksForHelp) return help();
    try {
        if (line.problem) throw UsageError(*line.problem);
        if (!actions.work) return help();
        accept(line);
    } catch (const CLI::ParseError& error) {
        throw UsageError(error.what(), usage());
    } catch (const UsageError& error) {
        throw UsageError(error.what(), usage());
    }
    return {.help = std::nullopt, .work = actions.work};
}

// A word that names no declared command names none at all, so what is read of the line is the same.
// Only a command that lacks subcommands could take a wrong one for a positional.
std::function<void()> CommandLine::workOf(const std::vector<std::string>& arguments) {
    const ReadLine line = readLine(*app_, arguments);
    const auto& actions = registry_->actions[line.command];
    const bool isPlain = !line.asksForHelp && !line.problem && actions.work;
    if (!isPlain || registry_->incomplete.contains(line.command)) return {};
    try {
        accept(line);
    } catch (const UsageError&) {
        return {};
    } catch (const CLI::ParseError&) {
        return {};
    }
    return actions.work;
}
}  // namespace ombrix
