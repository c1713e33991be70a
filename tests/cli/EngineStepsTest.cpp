// The steps after landing, as an agent drives them: memory files, cards, moves, the ledger,
// aliases.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>

#include "EngineLibrary.h"
#include "JsonPage.h"
#include "OmbrixPlatform/Regex.h"
#include "OmbrixPlatform/Text.h"

namespace ombrix::ToolTests {
namespace {

namespace fs = std::filesystem;
using testing::AllOf;
using testing::HasSubstr;
using testing::Not;

const Words person = {"consolidate", "ana"};
const Words thread = {"consolidate", "thread:price-list"};
const Words card = {"before",      "--people", "Ana Ruiz, Nobody", "--title",
                    "Launch call", "--for",    "2099-09-01T10:00"};
const Words moves = {"prepare", "Launch"};

const std::string topic =
    R"({"entity_key":"thread:price-list","kind":"thread","fact":"The list goes out on Friday.",)"
    R"("quote":"I'll send you the price list","certainty":"recorded"})";
const std::string source = R"("sources":["[Launch, 2026-08-18]"])";

/// A library with one landed meeting, in which Ana Ruiz was promised a price list.
class LandedLibrary : public Library {
  public:
    LandedLibrary() {
        write("one.md", transcript("Launch", "2026-08-18", talk));
        const Outcome landed = give("Launch", answer(promise, role + "," + topic));
        EXPECT_EQ(landed.status, 0) << landed.output;
    }

    /// The memory file of the thread or the person; `more` are members.
    std::string memory(const std::string& kind, const std::string& notSure = "[]") const {
        return R"({"version":1,"kind":")" + kind + R"(","who":[{"text":"Runs the launch.",)" +
               source + R"(}],"what_this_is":[{"text":"The list.",)" + source +
               R"(}],"through_line":"One launch.","decisions":[],"open":[{"text":"The price list",)"
               R"("direction":"user_owes","due":"2099-09-04","follow_up_id":")" +
               followUpID() + R"(",)" + source + R"(}],"not_sure":)" + notSure + "}";
    }
    std::string followUpID() const {
        return *data({"follow-ups", "--by", "time"})
                    .member("rows")
                    ->array()
                    ->at(0)
                    .member("id")
                    ->string();
    }
    /// The `nth` turn's id, as the input has it.
    std::string turnID(std::size_t nth) const {
        const auto input = Json::parse(asked(moves, "input"));
        return *input.member("meeting")->member("turns")->array()->at(nth).member("id")->string();
    }
    std::string preparedMoves() const {
        return R"({"version":1,"not_sure":[],"moves":[{"key":"price-list","commitment_ids":[")" +
               followUpID() +
               R"("],"kind":"message","stance":"stated","title":"Send Ana the list",)"
               R"("recipients":["Ana Ruiz"],"due":null,"hedge":null,"idea":null,"blocks":[{"id":)"
               R"("b","label":"Body","lines":[{"id":"l","text":"Here is the list.","claim_ids":)"
               R"(["c1"]}]}],"unresolved":[],"claims":[{"id":"c1","gist":"The list by Friday",)"
               R"("role":"decided","turn_ids":[")" +
               turnID(1) + R"("]}],"invite":null,"email":{"to":[],"subject":"Price list"}}]})";
    }
};

const std::string cardAnswer =
    R"({"version":1,"who_and_when":"Ana Ruiz · first conversation · last one Aug 18.",)"
    R"("not_sure":[],"you_owe":[{"text":"The price list",)" +
    source +
    R"(}],"they_owe":[],"unanswered":[],"changed_since":[],"openers":[{"text":"a","sources":[]},)"
    R"({"text":"b","sources":[]},{"text":"c","sources":[]}]})";

TEST(EngineSteps, EachAnswerBecomesItsFileAndTheSameAnswerChangesNothing) {
    const LandedLibrary library;
    const std::tuple<Words, std::string, const char*, const char*> steps[] = {
        {person, library.memory("person", R"(["Two Anas? [Launch, 2026-08-18]"])"),
         "Memory/Ana Ruiz.md", "- You owe: The price list, due Sep 4 · id c-"},
        {thread, library.memory("thread"), "Memory/Price List.md", "- The list. [Launch, 2026"},
        {card, cardAnswer, "Memory/Before/2099-09-01-launch-call.md", "- The price list [Launch"},
        {moves, library.preparedMoves(), ".ombrix/prepare/", "Here is the list."}};
    for (const auto& [step, given, file, words] : steps) {
        const auto before = library.tree();
        const std::string hash = library.asked(step);
        const Outcome dry = ToolTests::run(library.giving(step, hash, given, {"--dry-run"}));
        EXPECT_THAT(dry.output, AllOf(HasSubstr("\"dryRun\" : true"), HasSubstr("+++")))
            << dry.errors;
        EXPECT_EQ(library.tree(), before) << file;
        ASSERT_EQ(ToolTests::run(library.giving(step, hash, given)).status, 0) << file;
        const auto after = library.tree();
        const auto found = after.lower_bound(file);
        ASSERT_TRUE(found != after.end() && found->first.starts_with(file)) << file;
        EXPECT_THAT(found->second, HasSubstr(words));
        EXPECT_EQ(after.size(), before.size() + 1);
        EXPECT_THAT(ToolTests::run(library.giving(step, hash, given)).output,
                    HasSubstr("\"changed\" : []"));
        EXPECT_THAT(library.run({"refresh"}).output, HasSubstr("\"changed\" : []"));
        EXPECT_EQ(library.tree(), after) << file;
    }
    // What was unsure goes into the next input, and both memory files into the card's.
    EXPECT_THAT(library.asked(person, "input"), HasSubstr("Two Anas? [Launch, 2026-08-18]"));
    EXPECT_THAT(library.asked(card, "input"),
                AllOf(HasSubstr("Runs the launch."), HasSubstr("\"thread\":{")));
    const auto cardFor = [&](const char* time) {
        return library.run({"ask", "before", "--people", "Ana", "--title", "x", "--for", time})
            .output;
    };
    EXPECT_THAT(cardFor("2099-09-01"), HasSubstr("is no time"));
    EXPECT_THAT(cardFor("2099-09-01T20:00-08:00"), HasSubstr("2099-09-02-x.md"));
    const auto memory = library.data({"memory", "Ana Ruiz"});
    EXPECT_EQ(*memory.member("standfirst")->string(), "1 call · Aug 18");
    EXPECT_EQ(memory.member("sections")->array()->size(), 4U);
    const Outcome listed = ToolTests::run(callIn(
        library.disk().path(), {OMBRIX_TOOL, "moves", "--json", "--folder", library.root()}));
    EXPECT_THAT(listed.output, HasSubstr("Send Ana the list"));
}

TEST(EngineSteps, WhatAPrivateMeetingSaidOfAFollowUpIsNotAsked) {
    const LandedLibrary library;
    library.write("two.md", transcript("Two", "2026-08-20", talk));
    const auto moved = Text::replacingAll(answer("", role), R"("resolutions":[])",
                                          R"("resolutions":[{"id":")" + library.followUpID() +
                                              R"(","status":"renegotiated","quote":"Good.",)" +
                                              R"("new_due":"2099-12-24"}])");
    ASSERT_EQ(library.give("two.md", moved).status, 0);
    library.write("three.md", transcript("Three", "2026-08-25", talk));
    const Words land = {"land", "three.md"};
    for (const auto& step : {land, person, card})
        EXPECT_THAT(library.asked(step, "input"), HasSubstr("2099-12-24")) << step.front();
    // Told in a memory file, then marked private, then taken away: its record stays.
    const std::string told = Text::replacingAll(
        library.memory("person", R"(["Late? [Two, 2026-08-20]"])"), "Runs the launch.", "Is late.");
    ASSERT_EQ(
        library.give(person, Text::replacingAll(told, "[Launch, 2026-08-18]", "[Two, 2026-08-20]"))
            .status,
        0);
    EXPECT_THAT(library.asked(card, "input"), HasSubstr("Is late."));
    library.write("two.md", transcript("Two", "2026-08-20", talk, "private: true\n"));
    for (int round = 0; round < 2; ++round) {
        for (const auto& step : {land, person, card})
            EXPECT_THAT(library.asked(step, "input"),
                        AllOf(HasSubstr("2099-09-04"), Not(HasSubstr("2099-12-24")),
                              Not(HasSubstr("Is late")), Not(HasSubstr("Late?"))))
                << step.front();
        EXPECT_THAT(library.status(), HasSubstr("ask consolidate 'name:ana ruiz'"));
        fs::remove(library.root() + "/two.md");
    }
    EXPECT_THAT(library.run({"follow-ups"}).output, HasSubstr("2099-12-24"));
}

TEST(EngineSteps, WithDamagedAliasesNothingIsAskedOrWrittenAndTheRestIsShown) {
    const LandedLibrary library;
    ASSERT_EQ(library.give(person, library.memory("person")).status, 0);
    const auto given = library.giving(moves, library.asked(moves), library.preparedMoves());
    library.write(".ombrix/engine/aliases.json", R"({"identities": [{"canonical": "name:an)");
    const Library empty;
    empty.write(".ombrix/engine/aliases.json", "");
    const auto before = library.tree();
    for (const auto& line : {Words{"status"}, {"follow-ups"}, {"memory", "Ana Ruiz"}}) {
        const Outcome shown = library.run(line);
        EXPECT_EQ(shown.status, 0) << shown.output;
        EXPECT_THAT(shown.output, HasSubstr("aliases.json cannot be read: ")) << line.front();
    }
    EXPECT_THAT(library.status(),
                AllOf(HasSubstr("\"next\" : []"), HasSubstr("\"entities\" : []")));
    for (const auto& call : {given, library.call({"refresh"}), empty.call({"refresh"}),
                             library.call({"ask", "land", "Launch"}),
                             library.call({"alias", "add", "Anita", "Ana Ruiz"})}) {
        const Outcome refused = ToolTests::run(call);
        EXPECT_EQ(refused.status, 4) << refused.output;
        EXPECT_THAT(refused.output, HasSubstr("aliases.json cannot be read: "));
    }
    EXPECT_EQ(library.tree(), before);
}

TEST(EngineSteps, AHostileAnswerTouchesNothing) {
    const LandedLibrary library;
    const auto before = library.tree();
    const std::pair<Words, std::string> steps[] = {
        {person, library.memory("person")}, {card, cardAnswer}, {moves, library.preparedMoves()}};
    for (const auto& [step, good] : steps) {
        const std::string hash = library.asked(step);
        for (const auto& [text, told] : hostileShapes(good)) {
            const Outcome outcome = ToolTests::run(library.giving(step, hash, text));
            EXPECT_EQ(outcome.status, 4) << step.front() << told << outcome.errors;
            EXPECT_THAT(outcome.output, HasSubstr(told)) << step.front();
        }
        EXPECT_EQ(library.tree(), before) << step.front();
    }
}

TEST(EngineSteps, ARefusalNamesThePlaceAndAStaleAnswerIsRefused) {
    const LandedLibrary library;
    const std::string known = "[Launch, 2026-08-18]";
    const std::tuple<Words, std::string, std::string, std::string, const char*> cases[] = {
        {person, library.memory("thread"), "", "", "kind: the entity of the input is a person"},
        {person, library.memory("person"), known, "[Fair, 2026-08-18]",
         "who[0].sources[0]: no source"},
        {person, library.memory("person"), library.followUpID(), "c-00000000",
         "open[0].follow_up_id: no follow-up"},
        {person, library.memory("person"), "2099-09-04", "2099-02-31", "2099-02-31"},
        {card, cardAnswer, known, "[Fair]", "you_owe[0].sources[0]: no source"},
        {card, cardAnswer, R"({"text":"b","sources":[]},)", "", "openers: before output needs"},
        {moves, library.preparedMoves(), R"(["c1"])", R"(["c9"])",
         R"(moves[0].blocks[0].lines[0].claim_ids[0]: no claim \"c9\" in this move)"},
        {moves, library.preparedMoves(), library.turnID(1), "t002-000000",
         "moves[0].claims[0].turn_ids[0]: no turn"},
        {moves, library.preparedMoves(), library.followUpID(), "c-00000000",
         "moves[0].commitment_ids[0]: no commitment"},
    };
    const auto before = library.tree();
    for (const auto& [step, given, from, to, told] : cases) {
        const auto wrong = from.empty() ? given : Text::replacingAll(given, from, to);
        const Outcome outcome = ToolTests::run(library.giving(step, library.asked(step), wrong));
        EXPECT_EQ(outcome.status, 4) << told;
        EXPECT_THAT(outcome.output, AllOf(HasSubstr(told), HasSubstr("ask " + step.front())));
        EXPECT_EQ(library.tree(), before) << told;
    }
    std::vector<std::string> hashes;
    for (const auto& step : {person, card, moves}) hashes.push_back(library.asked(step));
    library.write("Memory/Follow Ups.md", library.read("Memory/Follow Ups.md") + "- reword: " +
                                              library.followUpID() + ": Send all lists\n");
    const std::string answers[] = {library.memory("person"), cardAnswer, library.preparedMoves()};
    std::size_t i = 0;
    for (const auto& step : {person, card, moves}) {
        const Outcome stale = ToolTests::run(library.giving(step, hashes[i], answers[i]));
        EXPECT_THAT(stale.output, HasSubstr("The answer is stale")) << step.front();
        EXPECT_EQ(library.give(step, answers[i]).status, 0) << step.front();
        ++i;
    }
    library.write("one.md", transcript("Launch", "2026-08-18", talk + "**Me:** And more.\n"));
    EXPECT_THAT(library.run({"ask", "prepare", "Launch"}).output,
                AllOf(HasSubstr("edited after it was landed"), HasSubstr("ask land m-")));
}

TEST(EngineSteps, WhatIsPrivateIsNeverAskedAndWhatIsTheUsersIsKept) {
    const LandedLibrary library;
    ASSERT_EQ(library.give(person, library.memory("person")).status, 0);
    const std::string file = "Memory/Ana Ruiz.md";
    const std::string mine = library.read(file) + "- not: Ana of sales\n\n## Mine\n\nText.\n";
    library.write(file, mine);
    const std::string kept = library.tree().at(file);
    EXPECT_THAT(library.asked(person, "input"), HasSubstr("not: Ana of sales"));
    ASSERT_EQ(library.give(person, library.memory("person", R"(["New."])")).status, 0);
    EXPECT_EQ(Text::replacingAll(library.tree().at(file), "- New.\n", "(none)\n"), kept);

    library.write(file, Text::replacingAll(mine, "- not: Ana of sales", "- private"));
    for (const auto& step : {Words{"consolidate", "ana ruiz"}, card}) {
        Words line = step;
        line.insert(line.begin(), "ask");
        const Outcome refused = library.run(line);
        EXPECT_NE(refused.status, 0);
        EXPECT_THAT(refused.output, HasSubstr("is private"));
    }
    EXPECT_THAT(library.run({"ask", "consolidate", "rui"}).output,
                AllOf(HasSubstr("is called 'rui'"), Not(HasSubstr("Ruiz"))));
    for (const auto& step : {thread, moves})
        EXPECT_THAT(library.asked(step, "input"),
                    AllOf(Not(HasSubstr("Ana")), Not(HasSubstr("ana ruiz")), Not(HasSubstr("@"))));

    library.write(file, Text::replacingAll(mine, "<!-- /ombrix:engine -->", ""));
    EXPECT_THAT(library.run({"ask", "consolidate", "ana"}).output, HasSubstr("is damaged"));
    EXPECT_THAT(library.run({"memory", "ana"}).output, HasSubstr("is damaged"));
    library.write("Memory/Price List.md", "My own page.\n");
    ASSERT_EQ(library.give(thread, library.memory("thread")).status, 0);
    EXPECT_EQ(library.read("Memory/Price List.md"), "My own page.\n");
    EXPECT_TRUE(library.tree().contains("Memory/Price List 2.md"));
}

TEST(EngineSteps, ALongTranscriptIsPreparedFromAWindow) {
    const Library library;
    std::string turns = talk;
    for (int i = 0; i < 400; ++i) turns += "**Ana Ruiz:** " + std::string(1000, 'x') + "\n\n";
    library.write("one.md", transcript("Launch", "2026-08-18", turns));
    for (int pass = 0; pass < 4; ++pass)
        ASSERT_EQ(library.give("Launch", answer(promise)).status, 0);
    EXPECT_THAT(library.run({"ask", "prepare", "Launch"}).output, HasSubstr("\"chunked\" : true"));
    EXPECT_THAT(library.asked(moves, "input"), HasSubstr("I'll send you the price list"));
}

TEST(EngineSteps, NamesOfOnePersonBecomeOneAndRingsAreRefused) {
    const LandedLibrary library;
    const auto labels = [&](const char* words) {
        const auto people = library.data({"follow-ups", "--all", "--person", words});
        return Json::write(*people.member("people"), Json::Style::canonical);
    };
    EXPECT_THAT(labels("Ana Ruiz"), AllOf(HasSubstr("\"counterpart\":\"to Ana Ruiz\""),
                                          HasSubstr("\"status\":\"Due Fri Sep 4, 2099\""),
                                          HasSubstr("\"source\":\"Launch · Aug 18")));
    const std::string aliases = ".ombrix/engine/aliases.json";
    library.write(aliases, R"({"identities": [], "later": [1]})");
    EXPECT_EQ(library.run({"alias", "add", "Anita", "Ana Ruiz"}).status, 0);
    EXPECT_THAT(library.run({"alias", "add", "Ana Ruiz", "Anita"}).output,
                HasSubstr("name:ana ruiz is an alias of name:anita is an alias of name:ana ruiz"));
    const Words line = {"alias", "add", "ana@example.com", "Ana Ruiz", "--display", "Ana R."};
    Words dry = line;
    dry.push_back("--dry-run");
    EXPECT_THAT(library.run(dry).output, HasSubstr("+      \\\"canonical\\\" : \\\"email:ana@ex"));
    EXPECT_THAT(library.run(line).output, HasSubstr("Memory\\/Follow Ups.md"));
    EXPECT_THAT(library.run(line).output, HasSubstr("\"changed\" : []"));
    EXPECT_THAT(library.read(aliases), AllOf(HasSubstr("\"later\" : ["), HasSubstr("Ana R.")));
    EXPECT_THAT(labels("ana r."), HasSubstr("email:ana@example.com"));
    EXPECT_THAT(library.asked(person, "input"), Not(HasSubstr("@")));

    const auto before = library.tree();
    EXPECT_THAT(library.run({"alias", "add", "Ana", " ANA "}).output, HasSubstr("form a ring"));
    EXPECT_EQ(library.run({"alias", "add", "Speaker 2", "Ana Ruiz"}).status, 4);
    EXPECT_EQ(library.tree(), before);
    library.write(aliases, R"({"identities": [{"canonical": "name:a", "aliases": ["name:b"],
        "display": ""}, {"canonical": "name:b", "aliases": ["name:a"], "display": ""}]})");
    EXPECT_THAT(library.run({"alias", "list"}).output,
                HasSubstr("name:a is an alias of name:b is an alias of name:a"));
}

// `run` holds every output to the page. This holds the page to the outputs of all commands.
TEST(EngineSteps, EveryFieldOnThePageOccursAndTheOptionalOnesAreAbsentSomewhere) {
    const LandedLibrary library;
    JsonPage page(OMBRIX_JSON_PAGE);
    const auto see = [&](const Call& call) {
        const Outcome outcome = ToolTests::run(call);
        ASSERT_EQ(outcome.status, 0) << outcome.output << outcome.errors;
        EXPECT_THAT(page.problems(*JsonPage::envelopeIn(outcome.output)), testing::IsEmpty());
    };
    const auto ask = [&](Words step) {
        step.insert(step.begin(), "ask");
        see(library.call(step));
    };
    const auto give = [&](const Words& step, const std::string& text) {
        const std::string hash = library.asked(step);
        see(library.giving(step, hash, text, {"--dry-run"}));
        see(library.giving(step, hash, text));
    };
    see(library.call({"status"}));
    ask({"land", "Launch"});
    give({"land", "Launch"}, answer(promise, role + "," + topic, "Again."));
    for (const auto& [step, text] :
         {std::pair(person, library.memory("person")), std::pair(thread, library.memory("thread")),
          std::pair(card, cardAnswer), std::pair(moves, library.preparedMoves())}) {
        ask(step);
        give(step, text);
    }
    std::string turns;
    for (int i = 0; i < 200; ++i) turns += "**Ana Ruiz:** " + std::string(1000, 'x') + "\n\n";
    library.write("long.md", transcript("Long", "2026-08-20", turns));
    library.write("two.md", transcript("Two", "2026-08-21", talk));
    library.write("hidden.md", transcript("Hidden", "2026-08-21", talk, "private: true\n"));
    library.write("Memory/Before/broken.md", "---\nsource: Ombrix Before\n---\n");
    ask({"land", "Long"});
    give({"land", "Long"}, answer());
    // Promised again, and something else, as it seems, by nobody known and for no day.
    std::string perhaps = Text::replacingAll(promise, "Send the price", "Find the old");
    perhaps = Text::replacingAll(perhaps, R"("due":"2099-09-04")", R"("due":null)");
    perhaps = Text::replacingAll(perhaps, R"("speaker":"Me")", R"("speaker":"")");
    perhaps = Text::replacingAll(perhaps, R"("recorded")", R"("read")");
    give({"land", "two.md"}, answer(promise + "," + perhaps, role));
    const std::string followUps = "Memory/Follow Ups.md", list = "Memory/Price List.md";
    library.write(followUps,
                  library.read(followUps) + "- reword: " + library.followUpID() + ": A\n");
    // Of a series, and older than what is said of it.
    const std::string old = Text::replacingAll(library.read(list), " at=\"2", " at=\"1");
    library.write(list, Text::replacingAll(old, "\nmembers:", "\nseries: Weekly\nmembers:"));
    for (const auto& line :
         {Words{"status"}, Words{"follow-ups", "--all"},
          Words{"follow-ups", "--all", "--by", "time"}, Words{"memory", "ana"},
          Words{"memory", "price list"}, Words{"refresh", "--dry-run"}, Words{"refresh"},
          Words{"alias", "add", "Anita", "Ana Ruiz", "--dry-run"},
          Words{"alias", "add", "Anita", "Ana Ruiz"}, Words{"alias", "list"}})
        see(library.call(line));
    library.write(list,
                  Regex("engine v1[^>]*-->").replacingAll(library.read(list), [](const auto&) {
                      return std::string("engine v1 -->");
                  }));
    see(library.call({"memory", "price list"}));
    auto unseen = page.unseen();
    std::erase_if(unseen, [](const auto& each) { return !each.starts_with("ombrix-engine"); });
    EXPECT_THAT(unseen, testing::IsEmpty());
}
}  // namespace
}  // namespace ombrix::ToolTests
