// The folder of the skills, in the Memory folder. Their Markdown files are no transcripts.
#pragma once

#include <string>
#include <string_view>

namespace ombrix {

namespace SkillPaths {

/// The skills' folder inside the Memory folder.
constexpr std::string_view folderName = "Skills";

/// The file of the skill of that name, below the transcripts folder:
/// "Memory/Skills/weekly-recap/SKILL.md".
std::string relativeFile(std::string_view memoryFolderName, std::string_view name);
}  // namespace SkillPaths

namespace SkillsFolder {

/// True when the path has the Memory folder's name as a component, directly followed by "Skills".
bool holds(std::string_view path, std::string_view memoryFolderName);
}  // namespace SkillsFolder
}  // namespace ombrix
