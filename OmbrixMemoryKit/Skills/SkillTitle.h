// What people see of a skill: the command they type, its title, what it does; and the name that a
// title becomes.
#pragma once

#include <functional>
#include <set>
#include <string>
#include <string_view>

#include "OmbrixMemoryKit/Skills/Skill.h"

namespace ombrix::SkillFile {

/// "/weekly-recap".
std::string command(std::string_view name);

/// The name as a title: "Weekly recap".
std::string displayName(std::string_view name);

/// The name of a new skill with that title: "Ann’s weekly recap!" is "anns-weekly-recap". Letters
/// lose case and diacritics, what is not "a" to "z" or a digit parts words, and at most
/// `longestName` characters stay. "skill" when nothing does. A name has no problem.
std::string name(std::string_view title);

/// `base`, or the first of "base-2", "base-3" and so on that is not taken. Of a base so long that
/// the number would make it too long, the end is cut off.
std::string uniqueName(std::string_view base, const std::set<std::string, std::less<>>& taken);

/// The first sentence of a text, on one line, of at most 1024 UTF-16 units.
std::string whatItDoes(std::string_view text);

/// The skill's description on one line; for a skill without one, what its prompt says first, or its
/// title. Never empty for a skill with a name.
std::string description(const Skill& skill);
}  // namespace ombrix::SkillFile
