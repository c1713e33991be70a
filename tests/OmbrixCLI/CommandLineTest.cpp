#include "OmbrixCLI/CommandLine.h"

#include <gtest/gtest.h>

#include <memory>
#include <random>
#include <string>
#include <vector>

#include "OmbrixPlatform/Numbers.h"
#include "OmbrixPlatform/Text.h"

namespace ombrix {
namespace {

using Words = std::vector<std::string>;

/// A small tool: a group, a command that works and has a subcommand, a command of texts.
class SmallTool {
  public:
    explicit SmallTool(
        std::unique_ptr<CommandLine> line = std::make_unique<CommandLine>("tool", "A small tool."))
        : line_(std::move(line)) {
        const Command group = line_->root().subcommand("folders", "Folders.");
        declareList(group.subcommand("list", "List folders."));
        declareAsk(line_->root().subcommand("ask", "Ask."));
        const Command moves = line_->root().subcommand("moves", "List moves.");
        moves.flag("--json", json_, "As JSON.");
        moves.run([this] { report_ = json_ ? "moves as JSON" : "moves"; });
        const Command render = moves.subcommand("render", "Render one move.");
        render.positional("id", id_, "Move ID");
        render.validate([this] {
            if (id_ == "bad") throw UsageError("No such form of an id.");
        });
        render.run([this] { report_ = "render " + id_; });
    }

    /// The result of a line: the first line of a help text, "wrong: " and the problem, or what ran.
    std::string tell(const Words& words) {
        try {
            const auto choice = line_->parse(words);
            EXPECT_NE(choice.help.has_value(), static_cast<bool>(choice.work));
            if (choice.help) return "help: " + choice.help->substr(0, choice.help->find('\n'));
            EXPECT_EQ(report_, "") << "parsing alone ran a command";
            choice.work();
            return report_;
        } catch (const UsageError& error) {
            EXPECT_TRUE(error.usage().starts_with("Usage: tool")) << error.usage();
            EXPECT_EQ(report_, "");
            return std::string("wrong: ") + error.what();
        }
    }

    /// What ran of the work that is known without the whole tree; empty for none.
    std::string tellNamed(const Words& words) {
        if (const auto work = line_->workOf(words)) work();
        return report_;
    }

  private:
    struct ListOptions {
        std::int64_t limit = 10;
        double ratio = 1;
        std::optional<std::string> name;
        bool all = false;
        GlobalOptions global;
    };

    /// Reports the full name of the command and what the line changed.
    void declareList(const Command& list) {
        const auto options = list.options<ListOptions>();
        list.option("--limit", options->limit, "How many.");
        list.option("--ratio", options->ratio, "How much.");
        list.option("--name", options->name, "Which.");
        list.flag("--all", options->all, "All of them.");
        list.run(options, [this](const CLIContext& context, const ListOptions& given) {
            report_ = context.command;
            if (given.limit != 10) report_ += " limit " + std::to_string(given.limit);
            if (given.ratio != 1) report_ += " ratio " + Numbers::described(given.ratio);
            if (given.name) report_ += " name '" + *given.name + "'";
            if (given.all) report_ += " all";
            if (given.global.dbPath) report_ += " db '" + *given.global.dbPath + "'";
        });
    }

    void declareAsk(const Command& ask) {
        ask.positional("question", question_, "The question.");
        ask.positional("tone", tone_, "How it is put.", Presence::optional);
        ask.run([this] { report_ = "ask '" + question_ + "' " + tone_; });
    }

    std::unique_ptr<CommandLine> line_;
    std::string report_;
    std::string question_;
    std::string tone_ = "plainly";
    bool json_ = false;
    std::string id_;
};

struct Row {
    Words words;
    std::string expected;
};

void expectRow(const Words& words, const std::string& expected) {
    EXPECT_EQ(SmallTool().tell(words), expected) << Text::joined(words, " ");
    SmallTool named(std::make_unique<CommandLine>("tool", "A small tool.", words));
    const bool works = !expected.starts_with("wrong: ") && !expected.starts_with("help: ");
    const bool mayLack = !words.empty() && words.front() == "moves";  // its subcommand
    const auto told = named.tellNamed(words);
    EXPECT_TRUE(told == (works ? expected : "") || (mayLack && told.empty())) << told;
}

void expectAll(const std::vector<Row>& rows) {
    for (const auto& [words, expected] : rows) expectRow(words, expected);
}

/// The same for lines that begin with "folders list".
void expectAllOfList(const std::vector<Row>& rows) {
    for (auto [words, expected] : rows) {
        words.insert(words.begin(), {"folders", "list"});
        if (!expected.starts_with("wrong")) expected.insert(0, "tool folders list");
        expectRow(words, expected);
    }
}

TEST(CommandLine, ValuesComeThroughAsTheyWereTyped) {
    expectAllOfList({
        {{"--limit", "-3", "--ratio=-.5"}, " limit -3 ratio -0.5"},
        {{"--ratio", "-inf"}, " ratio -inf"},
        {{"--ratio", "+0x10"}, " ratio 16.0"},
        {{"--ratio=\n2"}, "wrong: The value '\n2' is invalid for '--ratio'"},
        {{"--ratio", "2 "}, "wrong: The value '2 ' is invalid for '--ratio'"},
        // Texts stay as they are: lists, equals signs, quotes, an empty one.
        {{"--name", "[a,b]"}, " name '[a,b]'"},
        {{"--name=a=b"}, " name 'a=b'"},
        {{"--name=\"x\""}, " name '\"x\"'"},
        {{"--name", "%%", "--all", "--all"}, " name '%%' all"},
        {{"--name=", "--all"}, " name '' all"},
        {{"--name", "x", "--name", "", "--db-path", ""}, " name '' db ''"},
        // Begins with a hyphen, but is no option.
        {{"--name", "-"}, " name '-'"},
        {{"--name", "-3"}, " name '-3'"},
        {{"--name", "- call Tomas"}, " name '- call Tomas'"},
        {{"--name=-x"}, " name '-x'"},
        {{"--name=--help"}, " name '--help'"},
    });
}

TEST(CommandLine, PositionalsAreTakenInOrderAndNeverForCommands) {
    expectAll({
        {{"ask", "why"}, "ask 'why' plainly"},
        {{"ask", "", "sharply"}, "ask '' sharply"},
        {{"ask", "help"}, "ask 'help' plainly"},
        {{"ask", "folders", "list"}, "ask 'folders' list"},
        {{"ask", "-5"}, "ask '-5' plainly"},
        {{"ask", "--", "--help", "--"}, "ask '--help' --"},
        {{"ask", "why", "--", "-h"}, "ask 'why' -h"},
        {{"ask", "- what did we say?"}, "ask '- what did we say?' plainly"},
        {{"ask", "a", "b", "folders"}, "wrong: Unexpected argument 'folders'"},
        {{"ask", "--"}, "wrong: question is required"},
    });
}

TEST(CommandLine, ACommandMayWorkAndHaveSubcommands) {
    expectAll({
        {{"moves", "--json"}, "moves as JSON"},
        {{"moves", "render", "mv-1"}, "render mv-1"},
        {{"moves", "help", "render"}, "help: Render one move."},
        {{"moves", "--json", "render", "mv-1"},
         "wrong: The options of 'tool moves' cannot stand before its subcommand 'render'"},
        {{"moves", "render", "mv-1", "--json"},
         "wrong: Unknown option '--json'. It is an option of 'tool moves'."},
        {{"moves", "nosuch"}, "wrong: Unknown command 'nosuch'"},
        {{"moves", "render", "bad"}, "wrong: No such form of an id."},
    });
}

TEST(CommandLine, HelpIsFoundAnywhereButNotWhereItIsAValue) {
    expectAll({
        {{"folders"}, "help: Folders."},
        {{"folders", "list", "--limit", "x", "-h"}, "help: List folders."},
        {{"--nosuch", "folders", "--help", "list"}, "help: List folders."},
        {{"ask", "a", "b", "c", "--help"}, "help: Ask."},
        {{"moves", "render", "bad", "--help"}, "help: Render one move."},
        {{"help", "help"}, "help: A small tool."},
        {{"help", "ask", "why"}, "wrong: Unknown command 'why'"},
        {{"folders", "list", "--name", "-h", "--all"}, "help: List folders."},
        {{"folders", "list", "--limit", "--"}, "wrong: Missing value for '--limit'"},
        {{"--help=yes"}, "wrong: The option '--help' takes no value"},
    });
}

// Awkward words in random order: each line results in help, work or one usage error, and parsing
// runs nothing.
TEST(CommandLine, NoExampleShowsAnOptionThatIsNotThere) {
    CommandLine line("tool", "A tool.");
    line.root().examples([](auto) { return Words{"tool ask --json", "tool ask --fast x"}; });
    const Command ask = line.root().subcommand("ask", "Ask.");
    bool json = false;
    ask.flag("--json", json, "As JSON.");
    EXPECT_EQ(line.description().subcommands.front().examples, Words{"tool ask --json"});
}

TEST(CommandLine, NoLineIsBeyondReading) {
    const Words alphabet = {"folders", "list",    "moves",    "render",   "ask",        "help",
                            "--help",  "-h",      "--",       "-",        "-3",         "",
                            "--all",   "--all=1", "--limit",  "--limit=", "--limit=4",  "--name",
                            "--json",  "-x",      "--=",      "=",        "++",         "[a,b]",
                            "/h",      "%",       "\xFF\xFE", "-\n",      "--no such=1"};
    std::mt19937 random(20260302);
    for (int i = 0; i < 3000; ++i) {
        Words words(random() % 7);
        for (auto& word : words) word = alphabet[random() % alphabet.size()];
        EXPECT_NE(SmallTool().tell(words), "") << Text::joined(words, " ");
    }
}

TEST(CommandLine, ALongLineIsReadInLinearTime) {
    Words words{"folders", "list"};
    for (int i = 0; i < 100'000; ++i) words.insert(words.end(), {"--limit", std::to_string(i)});
    EXPECT_EQ(SmallTool().tell(words), "tool folders list limit 99999");
}
}  // namespace
}  // namespace ombrix
