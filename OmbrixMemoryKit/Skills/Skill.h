// A skill: a reusable instruction that a person runs by typing its command. It lives in a folder of
// its own as the file SKILL.md, which `SkillFile` reads and writes:
//
//   ---
//   name: weekly-recap
//   description: Turns a week of meetings into a short recap.
//   metadata:
//     ombrix-output: doc
//   ---
//   Write the recap.
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "OmbrixPlatform/Calendar.h"
#include "OmbrixPlatform/EnumNames.h"

namespace ombrix {

/// What a skill makes.
enum class SkillOutput { email, post, invite, prompt, doc };

/// As files have them under "ombrix-output".
constexpr auto rawValues(SkillOutput) {
    return EnumNames::table<SkillOutput>({{SkillOutput::email, "email"},
                                          {SkillOutput::post, "post"},
                                          {SkillOutput::invite, "invite"},
                                          {SkillOutput::prompt, "prompt"},
                                          {SkillOutput::doc, "doc"}});
}

enum class SkillOrigin { builtin, yours };

/// One top-level item of the frontmatter with its continuation lines, or without a key a run of
/// comment and blank lines.
struct FrontmatterEntry {
    std::optional<std::string> key{};
    std::vector<std::string> lines{};  ///< as they stand, without line ends
    bool operator==(const FrontmatterEntry&) const = default;
};

/// What is needed to write a file again as it was.
struct SkillSource {
    /// The fields as they were read, so that a change can be told.
    struct Read {
        std::string name, description, prompt;
        std::optional<SkillOutput> output{};  ///< nothing without "ombrix-output"
        bool operator==(const Read&) const = default;
    };

    std::string eol;  ///< of all lines; where ends are mixed, LF, and lines keep their CR
    std::vector<FrontmatterEntry> entries{};
    Read read{};
    std::string open,
        close;             ///< the lines "---", the first one with a byte order mark if it has one
    bool closeEol = true;  ///< the closing line has a line end
    std::string lead, tail;  ///< the blank text before and after the prompt
    bool operator==(const SkillSource&) const = default;
};

struct Skill {
    std::string name;         ///< the command's name
    std::string description;  ///< what it does
    std::string prompt;       ///< lines end in LF; those of a file with mixed ends keep their CR
    SkillOutput output = SkillOutput::doc;
    SkillOrigin origin = SkillOrigin::yours;
    Instant editedAt{};
    bool runnable = true;              ///< false for a skill without a prompt
    std::vector<std::string> files{};  ///< the other files of the skill's folder
    std::optional<SkillSource> source{};
    bool operator==(const Skill&) const = default;
};

/// Why a folder or a file is no skill.
struct SkillProblem {
    std::string_view reason;  ///< for the user; a constant

    static const SkillProblem noFrontmatter, frontmatterNotClosed, frontmatterUnreadable;
    static const SkillProblem noName, nameUnreadable, noDescription, descriptionUnreadable;
    static const SkillProblem noFile, moreThanOne, skillFileUnreadable, notASkill;
    bool operator==(const SkillProblem&) const = default;
};

inline constexpr SkillProblem SkillProblem::noFrontmatter{"SKILL.md has no frontmatter"};
inline constexpr SkillProblem SkillProblem::frontmatterNotClosed{
    "SKILL.md's frontmatter isn't closed"};
inline constexpr SkillProblem SkillProblem::frontmatterUnreadable{
    "Can't read SKILL.md's frontmatter"};
inline constexpr SkillProblem SkillProblem::noName{"SKILL.md has no name"};
inline constexpr SkillProblem SkillProblem::nameUnreadable{"Can't read SKILL.md's name"};
inline constexpr SkillProblem SkillProblem::noDescription{"SKILL.md has no description"};
inline constexpr SkillProblem SkillProblem::descriptionUnreadable{
    "Can't read SKILL.md's description"};
inline constexpr SkillProblem SkillProblem::noFile{"No SKILL.md in this folder"};
inline constexpr SkillProblem SkillProblem::moreThanOne{"More than one skill in this folder"};
inline constexpr SkillProblem SkillProblem::skillFileUnreadable{"SKILL.md could not be read"};
inline constexpr SkillProblem SkillProblem::notASkill{"This isn't a skill"};
}  // namespace ombrix
