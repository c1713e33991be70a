// The skills that come with the system.
#pragma once

#include <span>
#include <string_view>
#include <vector>

#include "OmbrixMemoryKit/Skills/Skill.h"

namespace ombrix::BuiltinSkills {

struct File {
    std::string_view name;
    std::string_view text;  ///< a SKILL.md
};

/// In the order in which they are offered.
std::span<const File> files();

/// The skills of these files, in their order. Read once.
const std::vector<Skill>& skills();
}  // namespace ombrix::BuiltinSkills
