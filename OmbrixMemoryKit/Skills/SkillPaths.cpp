#include "OmbrixMemoryKit/Skills/SkillPaths.h"

#include <cstddef>

#include "OmbrixMemoryKit/Skills/SkillFile.h"
#include "OmbrixPlatform/Paths.h"
#include "OmbrixPlatform/Text.h"

namespace ombrix {

std::string SkillPaths::relativeFile(std::string_view memoryFolderName, std::string_view name) {
    std::string path(memoryFolderName);
    for (const std::string_view component : {folderName, name, SkillFile::fileName})
        (path += '/') += component;
    return path;
}

bool SkillsFolder::holds(std::string_view path, std::string_view memoryFolderName) {
    if (!Text::contains(path, SkillPaths::folderName)) return false;
    const auto components = Paths::components(path);
    for (std::size_t i = 1; i < components.size(); ++i) {
        if (components[i] == SkillPaths::folderName && components[i - 1] == memoryFolderName)
            return true;
    }
    return false;
}
}  // namespace ombrix
