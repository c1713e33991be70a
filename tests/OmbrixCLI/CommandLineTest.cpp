#include "OmbrixCLI/CommandLine.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <random>
#include <string>
#include <vector>

#include "OmbrixPlatform/Numbers.h"
#include "OmbrixPlatform/Text.h"

namespace ombrix {
namespace {

using Words = std::vector<std::string>;

std::string shown(const std::optional<std::string>& text) {
    return text ? "'" + *text + "'" : "none";
}

/// A small tool: a group, a command that works and has a subcommand, a command of texts.
class SmallTool {
  public:
    SmallTool() : line_("tool", "A small tool.") {
        const Command group = line_.root().subcommand("folders", "Folders.");
        declareList(group.subcommand("list", "List folders."));
        declareAsk(line_.root().subcommand("ask", "Ask."));
        const Command moves = line_.root().subcommand("moves", "List moves.");
        moves.flag("--json", json_, "As JSON.");
        moves.run([this] { report_ = json_ ? "moves as JSON" : "moves"; });
        const Command render = moves.subcommand("render", "Render one move.");
        render.positional("id", id_, "Move ID");
        render.validate([this] {
            if (id_ == "bad") throw UsageError("No such form of an id.");
        });
        render.run([this] { report_ = "render " + id_; });
    }

    /// What a line comes to: the first line of a help text, "wrong: " and the problem, or what ran.
    std::string tell(const Words& words) {
        try {
            const auto choice = line_.parse(words);
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

  private:
    void declareList(const Command& list) {
        list.option("--limit", limit_, "How many.");
        list.option("--ratio", ratio_, "How much.");
        list.option("--name", name_, "Which.");
        list.flag("--all", all_, "All of them.");
        list.globalOptions(global_);
        list.run([this] {
            report_ = "list limit " + std::to_string(limit_) + " ratio " +
                      Numbers::described(ratio_) + " name " + shown(name_) + (all_ ? " all" : "") +
                      " db " + shown(global_.dbPath);
        });
    }

    void declareAsk(const Command& ask) {
        ask.positional("question", question_, "The question.");
        ask.positional("tone", tone_, "How it is put.", Presence::optional);
        ask.run([this] { report_ = "ask '" + question_ + "' " + tone_; });
    }

    CommandLine line_;
    std::string report_;
    std::int64_t limit_ = 10;
    double ratio_ = 1;
    std::optional<std::string> name_;
    bool all_ = false;
    GlobalOptions global_;
    std::string question_;
    std::string tone_ = "plainly";
    bool json_ = false;
    std::string id_;
};

struct Row {
    Words words;
    std::string expected;
};

void expectAll(const std::vector<Row>& rows) {
    for (const auto& [words, expected] : rows)
        EXPECT_EQ(SmallTool().tell(words), expected) << Text::joined(words, " ");
}

TEST(CommandLine, ValuesComeThroughAsTheyWereTyped) {
    const std::string rest = " db none";
    expectAll({
        {{"folders", "list"}, "list limit 10 ratio 1.0 name none" + rest},
        {{"folders", "list", "--limit", "-3", "--ratio=-.5"},
         "list limit -3 ratio -0.5 name none" + rest},
        {{"folders", "list", "--limit=010"}, "list limit 10 ratio 1.0 name none" + rest},
        {{"folders", "list", "--limit", "1", "--limit", "2"},
         "list limit 2 ratio 1.0 name none" + rest},
        {{"folders", "list", "--ratio", "-inf"}, "list limit 10 ratio -inf name none" + rest},
        // Texts are nobody's business: lists, equals signs, quotes, an empty one.
        {{"folders", "list", "--name", "[a,b]"}, "list limit 10 ratio 1.0 name '[a,b]'" + rest},
        {{"folders", "list", "--name=a=b"}, "list limit 10 ratio 1.0 name 'a=b'" + rest},
        {{"folders", "list", "--name=\"x\""}, "list limit 10 ratio 1.0 name '\"x\"'" + rest},
        {{"folders", "list", "--name", "%%", "--all"},
         "list limit 10 ratio 1.0 name '%%' all" + rest},
        {{"folders", "list", "--name=", "--all"}, "list limit 10 ratio 1.0 name '' all" + rest},
        {{"folders", "list", "--name", "", "--db-path", ""},
         "list limit 10 ratio 1.0 name '' db ''"},
        {{"folders", "list", "--name", "x", "--name="}, "list limit 10 ratio 1.0 name ''" + rest},
        // What begins with a hyphen and is yet no option.
        {{"folders", "list", "--name", "-"}, "list limit 10 ratio 1.0 name '-'" + rest},
        {{"folders", "list", "--name", "-3"}, "list limit 10 ratio 1.0 name '-3'" + rest},
        {{"folders", "list", "--name", "- call Tomas"},
         "list limit 10 ratio 1.0 name '- call Tomas'" + rest},
        {{"folders", "list", "--name=-x"}, "list limit 10 ratio 1.0 name '-x'" + rest},
        {{"folders", "list", "--name=--help"}, "list limit 10 ratio 1.0 name '--help'" + rest},
        {{"folders", "list", "--all", "--all"}, "list limit 10 ratio 1.0 name none all" + rest},
        // Nothing may stand around a number, whatever the C library would pass over.
        {{"folders", "list", "--ratio", "+0x10"}, "list limit 10 ratio 16.0 name none" + rest},
        {{"folders", "list", "--ratio", " 1"}, "wrong: The value ' 1' is invalid for '--ratio'"},
        {{"folders", "list", "--ratio=\n1"}, "wrong: The value '\n1' is invalid for '--ratio'"},
        {{"folders", "list", "--ratio", "1 "}, "wrong: The value '1 ' is invalid for '--ratio'"},
        {{"folders", "list", "--limit", " 1"}, "wrong: The value ' 1' is invalid for '--limit'"},
    });
}

TEST(CommandLine, PositionalsAreTakenInOrderAndNeverForCommands) {
    expectAll({
        {{"ask", "why"}, "ask 'why' plainly"},
        {{"ask", "why", "sharply"}, "ask 'why' sharply"},
        {{"ask", ""}, "ask '' plainly"},
        {{"ask", "help"}, "ask 'help' plainly"},
        {{"ask", "folders", "list"}, "ask 'folders' list"},
        {{"ask", "-5"}, "ask '-5' plainly"},
        {{"ask", "--", "--help", "--"}, "ask '--help' --"},
        {{"ask", "why", "--", "-h"}, "ask 'why' -h"},
        {{"ask", "- what did we say?"}, "ask '- what did we say?' plainly"},
        {{"ask", "a", "b", "folders"}, "wrong: Unexpected argument 'folders'"},
        {{"ask"}, "wrong: question is required"},
        {{"ask", "--"}, "wrong: question is required"},
        {{"ask", "-what"}, "wrong: Unknown option '-what'"},
    });
}

TEST(CommandLine, ACommandMayWorkAndHaveSubcommands) {
    expectAll({
        {{"moves"}, "moves"},
        {{"moves", "--json"}, "moves as JSON"},
        {{"moves", "render", "mv-1"}, "render mv-1"},
        {{"moves", "help", "render"}, "help: Render one move."},
        {{"moves", "--json", "render", "mv-1"},
         "wrong: The options of 'tool moves' cannot stand before its subcommand 'render'"},
        {{"moves", "render", "mv-1", "--json"}, "wrong: Unknown option '--json'"},
        {{"moves", "nosuch"}, "wrong: Unknown command 'nosuch'"},
        {{"moves", "render", "bad"}, "wrong: No such form of an id."},
    });
}

TEST(CommandLine, HelpIsFoundAnywhereButNotWhereItIsAValue) {
    expectAll({
        {{}, "help: A small tool."},
        {{"folders"}, "help: Folders."},
        {{"folders", "list", "--limit", "x", "-h"}, "help: List folders."},
        {{"--nosuch", "folders", "--help", "list"}, "help: List folders."},
        {{"ask", "a", "b", "c", "--help"}, "help: Ask."},
        {{"moves", "render", "bad", "--help"}, "help: Render one move."},
        {{"help", "folders", "list"}, "help: List folders."},
        {{"help", "help"}, "help: A small tool."},
        {{"help", "ask", "why"}, "wrong: Unknown command 'why'"},
        {{"folders", "list", "--limit", "--help"}, "help: List folders."},
        {{"folders", "list", "--name", "-h", "--all"}, "help: List folders."},
        {{"folders", "list", "--limit", "--"}, "wrong: Missing value for '--limit'"},
        {{"--help=yes"}, "wrong: Unknown option '--help=yes'"},
    });
}

// Words that a reader could trip over, in every order: each line comes to help, to work or to one
// usage error, and nothing runs by itself.
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
    EXPECT_EQ(SmallTool().tell(words), "list limit 99999 ratio 1.0 name none db none");
}
}  // namespace
}  // namespace ombrix
