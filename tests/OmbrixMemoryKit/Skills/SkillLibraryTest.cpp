#include "OmbrixMemoryKit/Skills/SkillLibrary.h"

#include <gtest/gtest.h>

#include "OmbrixMemoryKit/Skills/BuiltinSkills.h"
#include "OmbrixMemoryKit/Skills/SkillFile.h"
#include "OmbrixMemoryKit/Skills/SkillPaths.h"
#include "OmbrixMemoryKit/Skills/SkillTitle.h"
#include "OmbrixPlatform/RandomText.h"

namespace ombrix {
namespace {

using Names = std::vector<std::string>;

Names namesOf(const std::vector<Skill>& skills) {
    Names names;
    for (const Skill& skill : skills) names.push_back(skill.name);
    return names;
}

const Instant monday = *parseIsoInstant("2026-08-17T09:00:00Z");
const SkillDraft recap{.title = "Weekly Recap", .description = "d", .prompt = "Recap."};

TEST(SkillLibrary, TheBuiltInFilesAreSkills) {
    std::string output;
    for (std::size_t i = 0; i < BuiltinSkills::files().size(); ++i) {
        const auto& [name, text] = BuiltinSkills::files()[i];
        const Skill& skill = BuiltinSkills::skills().at(i);
        EXPECT_EQ(skill.name, name);
        EXPECT_EQ(SkillFile::rewrite(skill, *skill.source), text);
        EXPECT_TRUE(skill.runnable && skill.origin == SkillOrigin::builtin);
        output += std::string(rawValue(skill.output)) + " ";
    }
    EXPECT_EQ(output, "post email invite prompt doc doc ");
}

TEST(SkillLibrary, EveryChangeIsANewLibrary) {
    const SkillLibrary empty;
    EXPECT_EQ(namesOf(empty.yours()), Names());
    const SkillLibrary one = empty.addingBuiltIn("weekly-update", true)
                                 .addingBuiltIn("slack-recap", true)
                                 .addingBuiltIn("weekly-update", false)
                                 .creating(recap, monday, {"weekly-recap", "weekly-recap-2"});
    EXPECT_EQ(namesOf(one.yours()), Names({"slack-recap", "weekly-recap-3"}));
    EXPECT_EQ(namesOf(one.offered()),
              Names({"slack-recap", "follow-up-email", "next-meeting", "write-prompt",
                     "weekly-update", "prep-for-a-1-on-1", "weekly-recap-3"}));
    EXPECT_EQ(one.own, (std::vector<Skill>{{.name = "weekly-recap-3",
                                            .description = "d",
                                            .prompt = "Recap.",
                                            .editedAt = monday}}));
    EXPECT_EQ(one.deleting("slack-recap"), one);
    EXPECT_EQ(one.adding(one.own[0]).deleting("weekly-recap-3").own, std::vector<Skill>());
    EXPECT_EQ(one.creating({.title = "Slack recap"}, monday).own[1].name, "slack-recap-2");
    EXPECT_EQ(one.creating({.title = "!", .prompt = "Do it. Now."}, monday).own[1],
              (Skill{.name = "skill",
                     .description = "Do it.",
                     .prompt = "Do it. Now.",
                     .editedAt = monday}));
}

TEST(SkillLibrary, AnEditKeepsTheFileOfASkill) {
    const std::string text = "---\nname: 'recap' # mine\ndescription: d\n---\n\nRecap.\n";
    const auto skill =
        std::get<Skill>(SkillFile::parse(text, SkillOrigin::yours, Instant(), {"a.txt"}));
    const SkillLibrary library = SkillLibrary().adding(skill);
    EXPECT_EQ(library.editing("other", {.title = "x"}, monday), library);
    EXPECT_EQ(library.editing("recap", {.title = "RECAP!"}, monday).own[0].name, "recap");
    EXPECT_EQ(library.editing("recap", {.title = "Slack recap"}, monday).own[0].name,
              "slack-recap-2");
    const Skill edited =
        library
            .editing("recap", {.title = "Weekly", .prompt = "", .output = SkillOutput::post},
                     monday, {"weekly"})
            .own[0];
    Skill expected = skill;
    expected.name = "weekly-2";
    expected.prompt = "";
    expected.output = SkillOutput::post;
    expected.runnable = false;
    expected.editedAt = monday;
    EXPECT_EQ(edited, expected);
    EXPECT_EQ(SkillFile::rewrite(edited, *edited.source),
              "---\nname: weekly-2 # mine\ndescription: d\nmetadata:\n  ombrix-output: post\n"
              "---\n\n\n");
}

TEST(SkillLibrary, AskedReadsWhatAskWrites) {
    const SkillLibrary library = SkillLibrary().creating(recap, monday);
    const struct {
        const char *text, *name, *request;
    } cases[] = {
        {" /Weekly-Recap \n my calls\n", "weekly-recap", "my calls"},
        {"/slack-recap", "slack-recap", ""},
        {"/slack", nullptr, nullptr},
        {"/slack-recap!", nullptr, nullptr},
        {"slack-recap x", nullptr, nullptr},
        {"/slack-récap", nullptr, nullptr},
        {"/", nullptr, nullptr},
    };
    for (const auto& [text, name, request] : cases) {
        const auto asked = library.asked(text);
        ASSERT_EQ(asked.has_value(), name != nullptr) << text;
        if (!asked) continue;
        EXPECT_EQ(asked->skill, library.skill(name));
        EXPECT_EQ(asked->request, request);
        EXPECT_EQ(library.asked(SkillLibrary::ask(name, request)), asked);
    }
    EXPECT_EQ(SkillLibrary::ask("weekly-update", "  "), "/weekly-update");
}

TEST(SkillLibrary, TitlesAndNames) {
    EXPECT_EQ(SkillFile::displayName("prep-for-a-1-on-1"), "Prep for a 1 on 1");
    EXPECT_EQ(SkillFile::name("  Ann’s 1:1 — Résumé! "), "anns-1-1-resume");
    EXPECT_EQ(SkillFile::whatItDoes("Sends\nit, e.g. now. Use it."), "Sends it, e.g. now.");
    EXPECT_EQ(SkillPaths::relativeFile("Memory", "a"), "Memory/Skills/a/SKILL.md");
    test::RandomText random(7);
    SkillLibrary::Names taken;
    for (int i = 0; i < 2000; ++i) {
        const std::string title = random.any();
        const std::string name = SkillFile::uniqueName(SkillFile::name(title), taken);
        EXPECT_EQ(SkillFile::nameProblem(name), std::nullopt) << test::visible(title);
        EXPECT_TRUE(taken.insert(name).second);
        const Skill skill{.name = name, .prompt = title};
        EXPECT_EQ(SkillFile::descriptionProblem(SkillFile::description(skill)), std::nullopt);
    }
}
}  // namespace
}  // namespace ombrix
