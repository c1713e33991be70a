// Reads and writes SKILL.md; `Skill` shows one. A file that a person edited keeps its form: what
// did not change is written back byte for byte.
#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

#include "OmbrixMemoryKit/Skills/Skill.h"
#include "OmbrixPlatform/Calendar.h"

namespace ombrix::SkillFile {

constexpr std::string_view fileName = "SKILL.md";
/// The key under "metadata" that tells what the skill makes.
constexpr std::string_view outputKey = "ombrix-output";

/// The skill in the bytes of a file, or what is wrong with it. Bytes that are not UTF-8 are
/// `skillFileUnreadable`. `files` are the other files of its folder. Never throws; linear.
std::variant<Skill, SkillProblem> parse(std::string_view text, SkillOrigin origin, Instant editedAt,
                                        std::vector<std::string> files = {});

/// The output of that raw string; `doc` for any other text.
SkillOutput output(std::string_view text);

constexpr std::size_t longestName = 64;
constexpr std::size_t longestDescription = 1024;  ///< in UTF-16 units

/// What is wrong with a name, for the user; nothing for 1 to `longestName` letters "a" to "z",
/// digits and single hyphens inside.
std::optional<std::string_view> nameProblem(std::string_view name);
/// What is wrong with a description; nothing for 1 to `longestDescription` units.
std::optional<std::string_view> descriptionProblem(std::string_view description);

/// The text of a new file. It reads back as this skill if the name and the description have no
/// problem and the prompt has no blank line first and no white space last.
std::string serialize(const Skill& skill);

/// The text that `source` was read from, with what changed since in place of the old. Of a changed
/// prompt, blank lines before and white space after it are dropped, and lines end as the file's do.
std::string rewrite(const Skill& skill, const SkillSource& source);
}  // namespace ombrix::SkillFile
