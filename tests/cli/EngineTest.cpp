// ombrix-engine as an agent drives it: asking, answering, and what becomes of the files.
#include <fcntl.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/file.h>
#include <unistd.h>

#include <filesystem>

#include "EngineLibrary.h"
#include "OmbrixPlatform/Files.h"
#include "OmbrixPlatform/Paths.h"
#include "OmbrixPlatform/Regex.h"
#include "OmbrixPlatform/Text.h"
#include "ToolProcess.h"

namespace ombrix::ToolTests {
namespace {

namespace fs = std::filesystem;
using testing::HasSubstr;
using testing::Not;

TEST(Engine, AnAnswerBecomesFilesAndTheSameAnswerChangesNothing) {
    const Library library;
    library.write("Weekly/first.md", transcript("Launch one", "2026-08-18", talk));
    EXPECT_THAT(library.status(), HasSubstr("\"missing\" : 1"));
    const std::string hash = library.asked("launch");
    const std::string given = answer(promise, role);

    const auto untouched = library.tree();
    const Outcome dry = ToolTests::run(library.giving("launch", hash, given, {"--dry-run"}));
    EXPECT_EQ(dry.status, 0) << dry.output;
    EXPECT_THAT(dry.output, HasSubstr("+## Summary"));
    EXPECT_EQ(library.tree(), untouched);
    EXPECT_FALSE(fs::exists(library.root() + "/.ombrix/land"));

    EXPECT_EQ(ToolTests::run(library.giving("launch", hash, given)).status, 0);
    const auto landed = library.tree();
    EXPECT_THAT(library.read("Memory/Follow Ups.md"),
                HasSubstr("- **Send the price list** · to Ana"));
    EXPECT_THAT(
        library.read("Weekly/first.md"),
        testing::AllOf(HasSubstr("## Notes\n\nMine."), HasSubstr("using your Anthropic key")));
    EXPECT_THAT(library.read("Weekly/.first.md.notes"), HasSubstr("The list was promised."));
    for (const auto& again : {library.giving("launch", hash, given), library.call({"refresh"})}) {
        const Outcome outcome = ToolTests::run(again);
        EXPECT_THAT(outcome.output, HasSubstr("\"changed\" : []")) << outcome.errors;
    }
    EXPECT_EQ(library.tree(), landed);
    EXPECT_THAT(library.status(), testing::AllOf(HasSubstr("\"current\" : 1"),
                                                 HasSubstr("ask consolidate 'name:ana ruiz'")));
}

TEST(Engine, StatusSaysWhatChangedAndGiveRefusesWhatIsStale) {
    const Library library;
    library.write("one.md", transcript("Launch one", "2026-08-18", talk));
    library.write("two.md", transcript("Launch two", "2026-08-25", talk));
    library.write("other.md",
                  "---\ntitle: Alone\ndate: 2026-08-20\nsource: Ombrix\n---\n\n"
                  "## Transcript\n\n**Me:** A note.\n");
    ASSERT_EQ(library.give("one.md", answer(promise, role)).status, 0);
    ASSERT_EQ(library.give("Alone", answer()).status, 0);
    const std::string hash = library.asked("two");
    EXPECT_THAT(library.asked("two", "input"), testing::AllOf(HasSubstr("Send the price list"),
                                                              HasSubstr("Ana runs the launch.")));
    ASSERT_EQ(library.give("two", answer()).status, 0);
    EXPECT_THAT(library.status(), HasSubstr("\"current\" : 3"));
    EXPECT_EQ(library.asked("two"), hash) << "landing a meeting does not change its own input";

    const auto id = Regex("id (c-[0-9a-f]{8})").firstMatch(library.read("Memory/Follow Ups.md"));
    ASSERT_TRUE(id);
    const std::string followUps = library.read("Memory/Follow Ups.md");
    library.write(
        "Memory/Follow Ups.md",
        followUps + "- done: " + std::string(id->group(1, followUps)) + " on 2026-08-20\n");
    const Outcome stale = ToolTests::run(library.giving("two", hash, answer()));
    EXPECT_EQ(stale.status, 4);
    EXPECT_THAT(stale.output, testing::AllOf(HasSubstr("stale"), HasSubstr("ask land m-")));
    // Of the people of both launches, not of who speaks alone.
    EXPECT_THAT(library.status(),
                testing::AllOf(HasSubstr("\"stale\" : 2"), HasSubstr("the input changed")));
    EXPECT_THAT(library.read("Memory/Follow Ups.md"), HasSubstr("on 2026-08-20\n"));

    library.write("other.md",
                  Text::replacingAll(library.read("other.md"), "A note", "Another note"));
    EXPECT_THAT(library.status(), HasSubstr("the text was edited"));
}

TEST(Engine, ARefusedAnswerTouchesNothing) {
    const Library library;
    library.write("one.md", transcript("Launch", "2026-08-18", talk));
    const std::string hash = library.asked("one");
    const auto before = library.tree();
    const std::string good = answer(promise, role);
    const std::string done =
        R"({"id":"c-00000000","status":"done","quote":"Good.","new_due":null})";
    const std::pair<std::string, const char*> more[] = {
        {Text::replacingAll(good, "2099-09-04", "2099-02-31"), "2099-02-31"},
        {answer("", "", "The transcript is short."), "transcript is"},
        {Text::replacingAll(good, R"("resolutions":[])", R"("resolutions":[)" + done + "]"),
         R"(resolutions[0].id: no follow-up \"c-00000000\" in the input)"},
    };
    auto cases = hostileShapes(good);
    cases.insert(cases.end(), std::begin(more), std::end(more));
    for (const auto& [text, told] : cases) {
        const Outcome outcome = ToolTests::run(library.giving("one", hash, text));
        EXPECT_EQ(outcome.status, 4) << told << outcome.errors;
        EXPECT_THAT(outcome.output, HasSubstr(told));
        EXPECT_EQ(library.tree(), before) << told;
        EXPECT_FALSE(fs::exists(library.root() + "/.ombrix")) << told;
    }
}

TEST(Engine, WhatIsPrivateIsNeverAsked) {
    const Library library;
    library.write("one.md", transcript("Ana Ruiz on the launch", "2026-08-18", talk));
    ASSERT_EQ(library.give("one.md", answer(promise, role)).status, 0);
    library.write("two.md", transcript("Again", "2026-08-25",
                                       "**Dana Reyes:** So, Ana, and ANA  RUIZ too? I will be an "
                                       "anita.\n\n**anita:** Yes.\n\n" +
                                           talk));
    library.write("hidden.md", transcript("Hidden", "2026-08-26", talk, "private: true\n"));
    EXPECT_THAT(library.asked("Again", "input"), HasSubstr("Send the price list"));
    // By the file's name alone: its frontmatter and its region are gone.
    library.write("Memory/Ana Ruiz.md", "Notes.\n\n## Corrections\n- alias: Anita\n- private\n");
    for (const char* meeting : {"one.md", "two.md"}) {
        const std::string all = library.run({"ask", "land", meeting}).output;
        for (const char* secret :
             {"Ana", "ana ruiz", "ANA", "@", "Send the price list", "Anita", "ANITA"})
            EXPECT_THAT(all.substr(0, all.find("\"meta\"")), Not(HasSubstr(secret))) << meeting;
        EXPECT_THAT(all, HasSubstr("Speaker 901"));
        EXPECT_THAT(all, Not(HasSubstr("\"anita")));
    }
    EXPECT_THAT(library.status(), Not(HasSubstr("consolidate")));
    EXPECT_EQ(library.run({"ask", "land", "hidden.md"}).status, 4);
}

TEST(Engine, NothingOfThePersonIsLost) {
    const Library library;
    const std::string mine = "\n## Summary\n\nMy own summary.\n";
    library.write("mine.md", transcript("Mine", "2026-08-18", talk + mine));
    library.write("crlf.md",
                  Text::replacingAll(transcript("Lines", "2026-08-19", talk), "\n", "\r\n"));
    library.write("Memory/Follow Ups.md", "not the engine's <!-- ombrix:engine v1 by=\"x\" -->\n");
    const auto before = library.tree();
    ASSERT_EQ(library.give("mine.md", answer()).status, 0);
    const Outcome outcome = library.give("crlf.md", answer());
    EXPECT_THAT(outcome.output, HasSubstr("is left alone"));
    EXPECT_EQ(library.tree().at("mine.md"), before.at("mine.md"));
    EXPECT_TRUE(library.tree().at("crlf.md").starts_with(Text::trimmed(before.at("crlf.md"))));
    EXPECT_EQ(library.tree().at("Memory/Follow Ups.md"), before.at("Memory/Follow Ups.md"));
    EXPECT_THAT(library.status(), HasSubstr("region is damaged"));
    // Edited by the person since: no other landing writes it.
    library.write("crlf.md", Text::replacingAll(library.read("crlf.md"), "v=\"1\"",
                                                "v=\"1\" edited=\"2026-09-01T08:00:00Z\""));
    const auto edited = library.read("crlf.md");
    ASSERT_EQ(library.give("crlf.md", answer("", "", "Other words.")).status, 0);
    EXPECT_EQ(library.read("crlf.md"), edited);
}

TEST(Engine, ALongTranscriptIsAskedInChunksWhoseRecordsAreKept) {
    const Library library;
    std::string turns;
    for (int i = 0; i < 400; ++i)
        turns += "**Ana Ruiz:** " + std::to_string(i) + std::string(1000, 'x') + "\n\n";
    library.write("long.md", transcript("Long", "2026-08-18", turns));
    std::vector<std::string> hashes;
    for (const char* pass : {"chunk", "chunk", "chunk", "reduce"}) {
        EXPECT_EQ(library.asked("long", "pass"), pass);
        hashes.push_back(library.asked("long"));
        ASSERT_FALSE(fs::exists(library.root() + "/.ombrix/land"));
        const Outcome outcome = library.give("long", answer(promise, "", pass));
        ASSERT_EQ(outcome.status, 0) << outcome.output;
    }
    EXPECT_THAT(library.asked("long", "input"),
                testing::AllOf(HasSubstr("Part 3 of 3"), HasSubstr("Summary: chunk")));
    const auto landed = library.tree();
    // Each once more, the last of them too.
    for (std::size_t i = 0; i < hashes.size(); ++i) {
        const auto again = answer(promise, "", i < 3 ? "chunk" : "reduce");
        EXPECT_THAT(ToolTests::run(library.giving("long", hashes[i], again)).output,
                    HasSubstr("\"changed\" : []"));
    }
    EXPECT_EQ(library.tree(), landed);
    library.write("long.md", Text::replacingAll(library.read("long.md"), " 399xx", " 399yy"));
    EXPECT_THAT(library.run({"ask", "land", "long"}).output, HasSubstr("\"i\" : 3"));
}

TEST(Engine, FoldersThatCannotServeAreSaidSo) {
    const Library library;
    library.write("one.md", transcript("Launch", "2026-08-18", talk));
    const std::string hash = library.asked("one");
    library.write("Memory", "a file");
    EXPECT_THAT(ToolTests::run(library.giving("one", hash, answer())).output,
                HasSubstr("is no folder but a file"));
    fs::remove(library.root() + "/Memory");
    fs::create_directories(library.disk().at("elsewhere"));
    fs::create_directory_symlink(library.disk().at("elsewhere"), library.root() + "/Memory");
    EXPECT_THAT(ToolTests::run(library.giving("one", hash, answer())).output,
                HasSubstr("leads out"));
    EXPECT_TRUE(fs::is_empty(library.disk().at("elsewhere")));
    fs::remove(library.root() + "/Memory");
    fs::create_symlink(library.disk().at("support/config.json"), library.root() + "/linked.md");
    EXPECT_THAT(library.status(), HasSubstr("\"count\" : 1"));

    // Another program writes.
    fs::create_directories(library.root() + "/.ombrix/engine");
    const int lock =
        ::open((library.root() + "/.ombrix/engine/lock").c_str(), O_CREAT | O_RDWR, 0600);
    ASSERT_EQ(::flock(lock, LOCK_EX), 0);
    const auto before = library.tree();
    const Outcome waited = ToolTests::run(library.giving("one", hash, answer()));
    EXPECT_EQ(waited.status, 4);
    EXPECT_THAT(waited.output, HasSubstr("Another run of ombrix-engine"));
    EXPECT_EQ(library.tree(), before);
    ::close(lock);
    EXPECT_EQ(ToolTests::run(library.giving("one", hash, answer())).status, 0);
}

TEST(Engine, RefreshBringsTheFilesOfNextMovesUpToDateAndKeepsWhatIsBelow) {
    const Library library;
    fs::copy(OMBRIX_EXAMPLES "/library", library.root(), fs::copy_options::recursive);
    const std::string file = "Memory/Next Moves/Send Osterby the offer.md";
    ASSERT_EQ(library.run({"refresh"}).status, 0);
    EXPECT_THAT(library.run({"refresh"}).output, HasSubstr("\"changed\" : []"));
    const std::string mine = library.read(file) + "- done: mv-1a6e0079 on 2026-07-31\n";
    library.write(file, mine);
    EXPECT_THAT(library.run({"refresh"}).output, HasSubstr("Send Osterby the offer.md"));
    const std::string tail = mine.substr(mine.find("<!-- /ombrix:engine -->"));
    EXPECT_THAT(library.read(file), testing::AllOf(HasSubstr("\nstate: done\n"), HasSubstr(tail)));
    EXPECT_THAT(library.run({"refresh"}).output, HasSubstr("\"changed\" : []"));
}

TEST(Engine, WhatMayNotBeWrittenStopsAnAnswerAndIsPassedOverByRefresh) {
    const Library library;
    for (const char* name : {"one", "two", "three"}) {
        library.write(name + std::string(".md"), transcript(name, "2026-08-18", talk));
        ASSERT_EQ(library.give(name, answer()).status, 0);
    }
    fs::permissions(library.root() + "/one.md", fs::perms::owner_write, fs::perm_options::remove);
    const std::string mirror = library.root() + "/.two.md.notes";
    fs::remove(mirror);
    fs::create_symlink(library.disk().write("outside", "theirs"), mirror);
    const auto before = library.tree();
    for (const auto& [meeting, told] : {std::pair("one", "'one.md' is read-only"),
                                        std::pair("two", "'.two.md.notes' leads out")}) {
        const Outcome refused = library.give(meeting, answer(promise, "", "Other words."));
        EXPECT_EQ(refused.status, 4) << refused.output;
        EXPECT_THAT(refused.output, HasSubstr(told));
        EXPECT_EQ(library.tree(), before) << told;
    }

    // The records became newer than the notes that were made of them.
    for (const auto& [name, text] : library.tree())
        if (name.starts_with(".ombrix/land/"))
            library.write(name, Text::replacingAll(text, "NOW", "2098-01-01T08:00:00Z"));
    const auto leftover = [&](const std::string& name) {
        library.write(name, "half");
        fs::last_write_time(library.root() + "/" + name,
                            fs::file_time_type::clock::now() - std::chrono::hours(2));
        return library.root() + "/" + name;
    };
    const auto dead = leftover(".ombrix/land/.ombrix-0F8FAD5B-D9CB-469F-A165-70867728950E.tmp");
    const auto mine = leftover(".ombrix-notes.tmp");
    const Outcome refreshed = library.run({"refresh"});
    EXPECT_EQ(refreshed.status, 2) << refreshed.output;
    EXPECT_THAT(refreshed.output,
                testing::AllOf(HasSubstr("\"ok\" : true"), HasSubstr("over: 'one.md' is read-only"),
                               HasSubstr("over: '.two.md.notes' leads out"),
                               HasSubstr("      \"three.md\"")));
    for (const char* name : {"one.md", ".one.md.notes"})
        EXPECT_EQ(library.tree().at(name), before.at(name));
    EXPECT_EQ(library.disk().read("outside"), "theirs");
    EXPECT_THAT(library.read("three.md"), HasSubstr("2098"));
    EXPECT_FALSE(Files::exists(dead));
    EXPECT_TRUE(Files::exists(mine));
}

#ifdef OMBRIX_FAULTY_FILES
TEST(Engine, KilledAtAnyMomentItLeavesWholeFilesAndRefreshCompletesTheRest) {
    const test::Variable temporary("TMPDIR", Files::isDirectory("/dev/shm") ? "/dev/shm" : "/tmp");
    const Library library;
    library.write("one.md", transcript("Launch", "2026-08-18", talk));
    const auto before = library.tree();
    Call call = library.giving("one", library.asked("one"), answer(promise, role));
    ASSERT_EQ(ToolTests::run(call).status, 0);
    const auto after = library.tree();

    const std::string log = library.disk().at("fault.log");
    call.environment.insert(call.environment.end(),
                            {"LD_PRELOAD=" OMBRIX_FAULTY_FILES, "FAULT_FOLDER=" + library.root(),
                             "FAULT_KIND=kill", "FAULT_LOG=" + log, ""});
    int completed = 0;
    for (int at = 1;; ++at) {
        fs::remove_all(library.root());
        library.write("one.md", before.at("one.md"));
        fs::remove(log);
        call.environment.back() = "FAULT_AT=" + std::to_string(at);
        ToolTests::run(call);
        if (!Files::exists(log)) break;
        for (const auto& [name, bytes] : library.tree()) {
            if (Paths::lastComponent(name).starts_with(".ombrix-")) continue;  // not its file yet
            EXPECT_TRUE(bytes == after.at(name) ||
                        (before.contains(name) && bytes == before.at(name)))
                << at << name;
        }
        ASSERT_EQ(library.run({"refresh"}).status, 0);
        auto left = library.tree();
        std::erase_if(left, [](const auto& file) {
            return Paths::lastComponent(file.first).starts_with(".ombrix-");
        });
        const bool hasLanded = left.contains(".ombrix/land/m-" + after.begin()->first.substr(15));
        EXPECT_EQ(left, hasLanded ? after : before) << at;
        completed += hasLanded ? 1 : 0;
        EXPECT_FALSE(Files::exists(library.root() + "/.ombrix/engine/unfinished.json")) << at;
    }
    EXPECT_GT(completed, 5);
}
#endif
}  // namespace
}  // namespace ombrix::ToolTests
