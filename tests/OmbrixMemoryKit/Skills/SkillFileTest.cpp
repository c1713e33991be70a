#include "OmbrixMemoryKit/Skills/SkillFile.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <random>
#include <span>

#include "OmbrixMemoryKit/Skills/SkillFrontmatter.h"
#include "OmbrixPlatform/RandomText.h"
#include "OmbrixPlatform/Text.h"

namespace ombrix {
namespace {

using test::visible;

std::variant<Skill, SkillProblem> parse(std::string_view text) {
    return SkillFile::parse(text, SkillOrigin::yours, Instant(), {"notes.md"});
}

/// The skill of a text that has one; else an empty skill, and a failure.
Skill skillOf(std::string_view text) {
    auto result = parse(text);
    if (auto* skill = std::get_if<Skill>(&result)) return std::move(*skill);
    ADD_FAILURE() << std::get<SkillProblem>(result).reason << ": " << visible(text);
    return {};
}

TEST(SkillFile, EveryDamageHasItsReason) {
    const std::string name64(64, 'a'), text1024(1024, 'x');
    const struct {
        std::string text;
        const char* reason;  ///< none for a skill
    } cases[] = {
        {"", "SKILL.md has no frontmatter"},
        {"\n---\nname: a\ndescription: b\n---\n", "SKILL.md has no frontmatter"},
        {"name: a", "SKILL.md has no frontmatter"},
        {" ---\nname: a\n---", "SKILL.md has no frontmatter"},
        {"---", "SKILL.md's frontmatter isn't closed"},
        {"---\nname: a\n ---\n----", "SKILL.md's frontmatter isn't closed"},
        {"---\n---\nbody", "Can't read SKILL.md's frontmatter"},
        {"---\nname\n---", "Can't read SKILL.md's frontmatter"},
        {"---\n- a\nname: b\n---", "Can't read SKILL.md's frontmatter"},
        {"---\n  name: a\ndescription: b\n---", "Can't read SKILL.md's frontmatter"},
        {"---\n# only a comment\n\n---", "SKILL.md has no name"},
        {"---\nname: [a]\n---", "Can't read SKILL.md's name"},
        {"---\nname:\n  a: b\n---", "Can't read SKILL.md's name"},
        {"---\nname: \"a\n---", "Can't read SKILL.md's name"},
        {"---\nname: 'a' b\n---", "Can't read SKILL.md's name"},
        {"---\nname: &x a\n---", "Can't read SKILL.md's name"},
        {"---\nname:\n---", "The name is empty"},
        {"---\nname: My Skill\n---", "The name has spaces"},
        {"---\nname: my\u200Bskill\n---", "The name has spaces"},
        {"---\nname: MySkill\n---", "The name has capital letters"},
        {"---\nname: my_skill\n---", "The name can only have letters, numbers and hyphens"},
        {"---\nname: été\n---", "The name can only have letters, numbers and hyphens"},
        {"---\nname: -a\n---", "The name starts or ends with a hyphen"},
        {"---\nname: a--b\n---", "The name has two hyphens in a row"},
        {"---\nname: a" + name64 + "\n---", "The name is longer than 64 characters"},
        {"---\nname: " + name64 + "\n---", "SKILL.md has no description"},
        {"---\nname: a\ndescription: {b: c}\n---", "Can't read SKILL.md's description"},
        {"---\nname: a\ndescription: \"\\q\"\n---", "Can't read SKILL.md's description"},
        {"---\nname: a\ndescription: \"\\u12\"\n---", "Can't read SKILL.md's description"},
        {"---\nname: a\ndescription: |x\n  b\n---", "Can't read SKILL.md's description"},
        {"---\nname: a\ndescription: ''\n---", "The description is empty"},
        {"---\nname: a\ndescription: y" + text1024 + "\n---",
         "The description is longer than 1024 characters"},
        {"---\nname: a\ndescription: " + text1024 + "\n---", nullptr},
        {"---\nname: a\ndescription: \xFF\n---", "SKILL.md could not be read"},
        {"\uFEFF--- \nname: a\ndescription: b\n---\t", nullptr},
    };
    for (const auto& [text, reason] : cases) {
        const auto result = parse(text);
        const auto* problem = std::get_if<SkillProblem>(&result);
        EXPECT_EQ(problem ? problem->reason : "", reason ? reason : "") << visible(text);
    }
}

// ---- files of every form -----------------------------------------------------------------------

/// A piece of a file and what it means.
struct Form {
    std::string text;
    std::string value{};
};

const Form names[] = {
    {"name: weekly-recap\n", "weekly-recap"},
    {"name:   a1   # the command\n", "a1"},
    {"name : 'x'\n", "x"},
    {"\"name\": \"tab\\x2dle\" # c\n", "tab-le"},
    {"name: >-\n    folded\n", "folded"},
    {"name:\n\n  # below\n  below-1\n", "below-1"},
};
const Form descriptions[] = {
    {"description: Plain: with a colon, it's no#1.  # but no comment\n",
     "Plain: with a colon, it's no#1."},
    {"description: over\n  two lines\n\n  and a paragraph\n", "over two lines\nand a paragraph"},
    {"description: 'It''s  # quoted'\n", "It's  # quoted"},
    {"description: 'a \n\n   b'\n", "a\nb"},
    {"description: \"q\\\"\\\\ \\t\\u00e9\\uD83D\\uDE00\\/ \\\n   joined\" #c\n",
     "q\"\\ \té😀/ joined"},
    {"description: |2+\n   deep\n\n  # text\n  end\n\n", " deep\n\n# text\nend"},
    {"description: > # c\n  one\n  two\n\n  three\n    deeper\n  four\n",
     "one two\nthree\n  deeper\nfour"},
    {"description: |\n  last\n# a comment\n", "last"},
};
const Form metadata[] = {
    {"", "doc"},
    {"metadata:\n", "doc"},
    {"metadata: # nothing\n\n", "doc"},
    {"metadata:\n  ombrix-output: post\n", "post"},
    {"metadata:\n    author: me\n    # c\n    ombrix-output: \"email\"  # c\n    tags:\n    - a\n",
     "email"},
    {"metadata:\n  ombrix-output: novel\n  x: |\n    ombrix-output: post\n", "doc"},
    {"metadata:\n  ombrix-output:\n  b: c\n", "doc"},
    {"metadata:\n  ombrix-output:\n    - post\n  b: c\n", "doc"},
    {"metadata: {a: 'it''s, }', ombrix-output: invite, b: [c, {d: e}]} # c\n", "invite"},
    {"metadata: {a: it's}\n", "doc"},
    {"metadata: {\n  }\n", "doc"},
    {"metadata: text\n", "doc"},
};
const Form others[] = {
    {"\n"},
    {"# a comment: here\n"},
    {"allowed-tools: Bash(git:*), [x\n"},
    {"tags:\n- name: other\n- b\n"},
    {"'quoted: key': {name: x}\n"},
    {"text: |\n  name: not this\n\n  # nor this\n"},
    {"map:\n  description: no\n# between\n  metadata:\n    ombrix-output: post\n"},
    {"name2:\tx\n   \n"},
};
const Form prompts[] = {
    {"", ""},
    {"Write the recap.", "Write the recap."},
    {"\n \t\n  Indented.\n\n---\nname: no\n\t \n\n", "  Indented.\n\n---\nname: no"},
    {"\n", ""},
    {"   ", ""},
    {"Ünïcode\u00A0\u2028", "Ünïcode"},
};

struct File {
    std::string text;
    Skill meant;
};

class Files {
  public:
    File next() {
        std::string text = drawn({"---", "--- \t"}) + "\n";
        File file;
        std::vector<std::string> parts;
        take(parts, names, file.meant.name);
        take(parts, descriptions, file.meant.description);
        std::string output;
        take(parts, metadata, output);
        file.meant.output = SkillFile::output(output);
        for (std::string unused; below(3) > 0;) take(parts, others, unused);
        std::shuffle(parts.begin(), parts.end(), random_);
        const std::string blanks = drawn({"", "", "  "});
        for (const std::string& part : parts) text += indented(part, blanks);
        text += drawn({"---", "---  "});
        const Form& prompt = prompts[below(std::size(prompts))];
        if (prompt.text.empty() ? below(2) == 0 : true) text += "\n" + prompt.text;
        file.meant.prompt = prompt.value;
        const std::string eol = drawn({"\n", "\r\n", "\r"});
        file.text = drawn({"", "\uFEFF"}) + Text::replacingAll(text, "\n", eol);
        // Mixed ends: the lines of the prompt then keep a CR.
        if (eol == "\n" && below(4) == 0) {
            const std::size_t at = file.text.find('\n');
            file.text.insert(at, "\r");
        }
        return file;
    }

  private:
    std::size_t below(std::size_t bound) { return random_() % bound; }
    std::string drawn(std::vector<std::string> choices) { return choices[below(choices.size())]; }
    void take(std::vector<std::string>& parts, std::span<const Form> forms, std::string& value) {
        const Form& form = forms[below(forms.size())];
        parts.push_back(form.text);
        value = form.value;
    }
    /// The whole frontmatter may be indented.
    static std::string indented(const std::string& part, const std::string& blanks) {
        std::string text;
        for (const char c : part) {
            if (c != '\n' && (text.empty() || text.back() == '\n')) text += blanks;
            text += c;
        }
        return text;
    }

    std::mt19937 random_{20260821};
};

TEST(SkillFile, AFileIsReadAndComesBackAsItWas) {
    Files files;
    for (int i = 0; i < 600; ++i) {
        const auto [text, meant] = files.next();
        const Skill skill = skillOf(text);
        EXPECT_EQ(skill.name, meant.name) << visible(text);
        EXPECT_EQ(skill.description, meant.description) << visible(text);
        EXPECT_EQ(skill.output, meant.output) << visible(text);
        EXPECT_EQ(skill.prompt, meant.prompt) << visible(text);
        EXPECT_EQ(skill.runnable, !meant.prompt.empty());
        EXPECT_EQ(skill.files, std::vector<std::string>{"notes.md"});
        ASSERT_EQ(SkillFile::rewrite(skill, *skill.source), text) << visible(text);
    }
}

/// What must be as it was when `key` alone changed.
SkillSource without(SkillSource source, std::string_view key) {
    std::erase_if(source.entries, [&](const auto& entry) { return entry.key == key; });
    source.read = {};
    return source;
}

TEST(SkillFile, OneChangeLeavesTheRestAsItWas) {
    const char* const newDescriptions[] = {"new",   "- a: b #c", "null",      "\"q\"\\",
                                           "12",    "a\nb\x01",  " x ",       "\uFEFF\u2028é",
                                           "ends:", "{}",        "2026-01-02"};
    Files files;
    for (std::size_t i = 0; i < 300; ++i) {
        const std::string text = files.next().text;
        const Skill before = skillOf(text);
        const auto check = [&](const Skill& changed, std::string_view key) {
            const std::string rewritten = SkillFile::rewrite(changed, *changed.source);
            const Skill after = skillOf(rewritten);
            EXPECT_EQ(after.name, changed.name) << visible(text);
            EXPECT_EQ(after.description, changed.description) << visible(rewritten);
            EXPECT_EQ(after.output, changed.output) << visible(text) << visible(rewritten);
            EXPECT_EQ(after.prompt, changed.prompt) << visible(text) << visible(rewritten);
            EXPECT_EQ(after.source->eol, before.source->eol);
            EXPECT_EQ(after.source->open, before.source->open);
            if (key.empty()) {
                EXPECT_EQ(after.source->entries, before.source->entries);
            } else {
                EXPECT_EQ(without(*after.source, key), without(*before.source, key));
            }
        };
        Skill changed = before;
        changed.name = "new-name-" + std::to_string(i);
        check(changed, "name");
        changed = before;
        changed.description = newDescriptions[i % std::size(newDescriptions)];
        check(changed, "description");
        changed = before;
        changed.output = changed.output == SkillOutput::post ? SkillOutput::doc : SkillOutput::post;
        check(changed, "metadata");
        changed = before;
        changed.prompt = i % 3 == 0 ? "" : "New\n\n  prompt.";
        check(changed, "");

        changed = before;
        changed.description = newDescriptions[i % std::size(newDescriptions)];
        Skill written = skillOf(SkillFile::serialize(changed));
        EXPECT_EQ(written.description, changed.description);
        written.source = changed.source;
        EXPECT_EQ(written, changed);
    }
}

TEST(SkillFile, ANewOutputKeepsTheRestOfItsMap) {
    const struct {
        std::string before, after;
    } cases[] = {
        {"{a: b, ombrix-output: [x, y]} # c", "{a: b, ombrix-output: post} # c"},
        {"{ombrix-output, a: b}", "{ombrix-output: post, a: b}"},
        {"{a: b # }, it's\n  , c: d}", "{ombrix-output: post, a: b # }, it's\n  , c: d}"},
        {"\n  ombrix-output:\n  - x\n  # c\n  a: b", "\n  ombrix-output: post\n  # c\n  a: b"},
    };
    const auto file = [](const std::string& map) {
        return "---\nname: a\ndescription: b\nmetadata: " + map + "\n---\n";
    };
    for (const auto& [before, after] : cases) {
        Skill skill = skillOf(file(before));
        skill.output = SkillOutput::post;
        EXPECT_EQ(SkillFile::rewrite(skill, *skill.source), file(after));
    }
}

TEST(SkillFile, ANewFileHasTheUsualForm) {
    EXPECT_EQ(SkillFile::serialize({.name = "a-1",
                                    .description = "Yes: it is",
                                    .prompt = "Do.",
                                    .output = SkillOutput::email}),
              "---\nname: a-1\ndescription: \"Yes: it is\"\nmetadata:\n  ombrix-output: email\n"
              "---\nDo.\n");
}
}  // namespace
}  // namespace ombrix
