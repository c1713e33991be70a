// Where skills lie: in a folder of the Memory folder. Their Markdown files are no transcripts.
#pragma once

#include <string_view>

namespace ombrix {

namespace SkillPaths {

/// The skills' folder inside the Memory folder.
constexpr std::string_view folderName = "Skills";
}  // namespace SkillPaths

namespace SkillsFolder {

/// True when the path's components hold the Memory folder's name directly followed by "Skills".
bool holds(std::string_view path, std::string_view memoryFolderName);
}  // namespace SkillsFolder
}  // namespace ombrix
