// The command line as a tree of commands; CLI11 parses it, which only the sources know. A command
// is a record of options, a function that does the work, and a function that declares it:
//
//   void declareFoldersGet(Command parent) {
//       Command command = parent.subcommand("get", "Return one folder.");
//       const auto options = command.options<FolderOptions>();
//       command.positional("id", options->id, "Folder ID");
//       command.run(options, getFolder);
//   }
//   void getFolder(const CLIContext& context, const FolderOptions& options);
//
// Declaring runs nothing. The words of a line are read as follows.
//   - `--name value` and `--name=value` are the same; `--name=` is an empty value. The last of a
//     repeated option counts. A flag takes no value. Names are never shortened or bundled.
//   - A word that begins with "-" is an option, unless it is "-" alone, a number ("-3", "-0.5") or
//     holds white space before any "="; these are values and positionals. After `--name` an option
//     word is not taken as its value ("missing value"); `--name=-x` gives it. "--" ends the
//     options.
//   - "--help" or "-h" anywhere before a "--" asks for help, whatever else is wrong with the line,
//     a missing value ("--limit --help") included; `--name=--help` is a value. The word "help" in
//     the place of a subcommand ("help", "help meetings list", "meetings help list") does the
//     same, if only names of commands follow it.
//   - A command with subcommands and no work of its own prints its help. Options belong to the
//     command named last before them; one that has subcommands takes options only when no
//     subcommand follows.
//   - A number has no white space around it. Integers are decimal ("010" is 10), and one that does
//     not fit is an error. Other numbers may be written as C writes them: "1e-3", "0x10", "inf";
//     what is too large is infinite.
#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <stdexcept>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "OmbrixCLI/CLIContext.h"
#include "OmbrixCLI/CommandDescription.h"

namespace CLI {
class App;
class Option;
}  // namespace CLI

namespace ombrix {

struct ReadLine;

/// The line is not one of ours: an unknown option, a missing value, a validate step that failed.
class UsageError : public std::runtime_error {
  public:
    using std::runtime_error::runtime_error;
    UsageError(const std::string& problem, std::string usage)
        : std::runtime_error(problem), usage_(std::move(usage)) {}
    /// How to call the command, ending in a line feed; empty when the command is not known.
    const std::string& usage() const { return usage_; }

  private:
    std::string usage_;
};

enum class Presence { required, optional };

/// One command while it is being declared: a handle, cheap to copy, valid as long as its
/// `CommandLine`. Declaring one that the line leaves out does nothing. Names of options carry their
/// hyphens and, after a blank, what stands for the value in the help ("--limit N"); names of
/// positionals do not. A target keeps the value it has now when the line does not name it; it must
/// live as long as the `CommandLine`.
class Command {
  public:
    /// Commands are listed in the order in which they are declared.
    Command subcommand(const std::string& name, const std::string& abstract) const;

    /// A record of options that lives as long as the handle that is returned or any copy of it.
    template <typename Options>
    std::shared_ptr<Options> options() const {
        return std::make_shared<Options>();
    }

    void flag(const std::string& name, bool& target, const std::string& help) const;

    void option(const std::string& name, std::int64_t& target, const std::string& help) const;
    void option(const std::string& name, std::optional<std::int64_t>& target,
                const std::string& help) const;
    void option(const std::string& name, double& target, const std::string& help) const;
    void option(const std::string& name, std::string& target, const std::string& help,
                Presence presence = Presence::optional) const;
    void option(const std::string& name, std::optional<std::string>& target,
                const std::string& help) const;

    void positional(const std::string& name, std::int64_t& target, const std::string& help) const;
    void positional(const std::string& name, std::string& target, const std::string& help,
                    Presence presence = Presence::required) const;

    /// Refuses a line that does not give exactly one of these options, which are declared.
    void exactlyOne(std::vector<std::string> names) const;

    /// Lines for a shell that show how the commands are called: `linesOf` a path without the name
    /// of the tool ("meetings list"). Asked only for a help text, a manual page or a completion,
    /// which leave out a line with an option that the command does not have.
    void examples(std::function<std::vector<std::string>(std::string_view path)> linesOf) const;

    /// Gives the commands that are declared from now on the option `--now` besides `--db-path` and
    /// `--support-dir`.
    void everyCommandTakesNow() const;

    /// "ombrix-cli meetings list".
    std::string path() const;

    /// Runs when the line has been read and before the work; throws `UsageError` to refuse it.
    void validate(std::function<void()> check) const;
    void run(std::function<void()> work) const;
    /// The work of a command that takes the options of all commands: declares `--db-path` and
    /// `--support-dir`, so it comes after all other options, and calls `work` with the context they
    /// lead to and with the record.
    template <typename Options, typename Work>
    void run(const std::shared_ptr<Options>& options, Work work) const {
        if (app_ == nullptr) return;
        globalOptions(options->global);
        run([name = path(), options, work = std::move(work)] {
            work(CLIContext(name, options->global), *options);
        });
    }

  private:
    friend class CommandLine;
    struct Registry;
    Command(CLI::App* app, Registry& registry) : app_(app), registry_(&registry) {}
    void globalOptions(GlobalOptions& target) const;
    void storeText(const std::string& name, std::string& target, const std::string& help,
                   Presence presence) const;
    /// With `initial`, the help shows that value.
    void addOption(const std::string& name, const std::string& help, const char* kind,
                   std::function<bool(const std::string&)> store, Presence presence,
                   const std::optional<std::string>& initial = std::nullopt) const;

    CLI::App* app_;  // null for a command that is left out
    Registry* registry_;
};

class CommandLine {
  public:
    CommandLine(const std::string& name, const std::string& abstract);
    /// Leaves out the commands whose names are not among `words`, which must outlive it: most of a
    /// tree takes longer to declare than its commands work. Only for `workOf` these words.
    CommandLine(const std::string& name, const std::string& abstract,
                const std::vector<std::string>& words);
    ~CommandLine();
    CommandLine(const CommandLine&) = delete;
    CommandLine& operator=(const CommandLine&) = delete;

    Command root() const;
    /// The whole tree as it was declared.
    CommandDescription description() const;

    /// What a line asks for: help to print, or work to do.
    struct Choice {
        std::optional<std::string> help;  ///< ends in a line feed
        std::function<void()> work;       ///< empty when there is a help text
    };
    /// Reads a line, without argument 0, and runs the validate step of the command it names. Call
    /// it once. Throws `UsageError`.
    Choice parse(const std::vector<std::string>& arguments);
    /// The work that `parse` of a whole tree gives; empty when only that can tell, as for a line
    /// that is wrong or asks for help. Call it once.
    std::function<void()> workOf(const std::vector<std::string>& arguments);

  private:
    /// Throws `UsageError` or CLI11's error when the words are not those of the command.
    void accept(const ReadLine& line);

    std::unique_ptr<CLI::App> app_;
    std::unique_ptr<Command::Registry> registry_;
};
}  // namespace ombrix
