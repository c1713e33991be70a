#include "OmbrixCLI/CommandLine.h"

#include <CLI/CLI.hpp>
#include <unordered_map>
#include <utility>

#include "OmbrixCLI/LineReader.h"
#include "OmbrixPlatform/Numbers.h"

namespace ombrix {

struct Command::Registry {
    struct Actions {
        std::function<void()> check;
        std::function<void()> work;
    };
    std::unordered_map<const CLI::App*, Actions> actions;
};

namespace {

// What the help prints for the value of an option.
constexpr const char* integerKind = "INT";
constexpr const char* numberKind = "NUMBER";
constexpr const char* textKind = "TEXT";

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

std::string usageOf(const CLI::App& command) {
    const std::string path = commandPath(command);
    const auto* formatter = dynamic_cast<const CLI::Formatter*>(command.get_formatter().get());
    return formatter->make_usage(&command, path) + "See '" + path +
           " --help' for more information.\n";
}

std::string helpOf(const CLI::App& command) {
    std::string text = command.get_formatter()->make_help(&command, commandPath(command),
                                                          CLI::AppFormatMode::Normal);
    while (text.ends_with("\n\n")) text.pop_back();
    return text;
}
}  // namespace

// ---- declaring --------------------------------------------------------------------------------

Command Command::subcommand(const std::string& name, const std::string& abstract) const {
    return {*app_->add_subcommand(name, abstract), *registry_};
}

CLI::Option& Command::addOption(const std::string& name, const std::string& help, const char* kind,
                                std::function<bool(const std::string&)> store) const {
    // CLI11 passes the text of the last occurrence; its own conversions are not used.
    const auto take = [name, store = std::move(store)](const CLI::results_t& texts) {
        if (store(texts.back())) return true;
        throw UsageError("The value '" + texts.back() + "' is invalid for '" + name + "'");
    };
    return *app_->add_option(name, take, help)
                ->type_name(kind)
                ->multi_option_policy(CLI::MultiOptionPolicy::TakeLast);
}

void Command::flag(const std::string& name, bool& target, const std::string& help) const {
    app_->add_flag_callback(
            name, [&target] { target = true; }, help)
        ->multi_option_policy(CLI::MultiOptionPolicy::TakeLast);
}

void Command::option(const std::string& name, std::int64_t& target, const std::string& help) const {
    addOption(name, help, integerKind, storing(&Numbers::parseInteger<std::int64_t>, target))
        .default_str(std::to_string(target));
}

void Command::option(const std::string& name, std::optional<std::int64_t>& target,
                     const std::string& help) const {
    addOption(name, help, integerKind, storing(&Numbers::parseInteger<std::int64_t>, target));
}

void Command::option(const std::string& name, double& target, const std::string& help) const {
    addOption(name, help, numberKind, storing(&parseNumber, target))
        .default_str(Numbers::shortest(target));
}

void Command::option(const std::string& name, std::string& target, const std::string& help,
                     Presence presence) const {
    storeText(name, target, help, presence);
}

void Command::option(const std::string& name, std::optional<std::string>& target,
                     const std::string& help) const {
    addOption(name, help, textKind, storingText(target));
}

void Command::positional(const std::string& name, std::int64_t& target,
                         const std::string& help) const {
    addOption(name, help, integerKind, storing(&Numbers::parseInteger<std::int64_t>, target))
        .required();
}

void Command::positional(const std::string& name, std::string& target, const std::string& help,
                         Presence presence) const {
    storeText(name, target, help, presence);
}

void Command::storeText(const std::string& name, std::string& target, const std::string& help,
                        Presence presence) const {
    CLI::Option& option = addOption(name, help, textKind, storingText(target));
    if (presence == Presence::required)
        option.required();
    else
        option.default_str(target);
}

void Command::globalOptions(GlobalOptions& target) const {
    option("--db-path", target.dbPath, "Override the absolute path to ombrix.db.");
    option("--support-dir", target.supportDir,
           "Override the Ombrix support directory. The CLI will look for ombrix.db inside it.");
}

std::string Command::path() const { return commandPath(*app_); }

void Command::validate(std::function<void()> check) const {
    registry_->actions[app_].check = std::move(check);
}

void Command::run(std::function<void()> work) const {
    registry_->actions[app_].work = std::move(work);
}

// ---- parsing ----------------------------------------------------------------------------------

CommandLine::CommandLine(const std::string& name, const std::string& abstract)
    : app_(std::make_unique<CLI::App>(abstract, name)),
      registry_(std::make_unique<Command::Registry>()) {
    // `readLine` handles these; CLI11 only lists them in the help.
    app_->set_help_flag("-h,--help", "Show this help.");
}

CommandLine::~CommandLine() = default;

Command CommandLine::root() const { return {*app_, *registry_}; }

CommandLine::Choice CommandLine::parse(const std::vector<std::string>& arguments) {
    ReadLine line = readLine(*app_, arguments);
    const Command::Registry::Actions& actions = registry_->actions[line.command];
    if (line.asksForHelp) return {.help = helpOf(*line.command), .work = {}};
    try {
        if (line.problem) throw UsageError(*line.problem);
        if (!actions.work) return {.help = helpOf(*line.command), .work = {}};
        // CLI11 expects the words in reverse order.
        app_->parse(std::vector<std::string>(line.words.rbegin(), line.words.rend()));
        if (actions.check) actions.check();
    } catch (const CLI::ParseError& error) {
        throw UsageError(error.what(), usageOf(*line.command));
    } catch (const UsageError& error) {
        throw UsageError(error.what(), usageOf(*line.command));
    }
    return {.help = std::nullopt, .work = actions.work};
}
}  // namespace ombrix
