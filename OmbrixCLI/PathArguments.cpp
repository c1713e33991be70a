#include "OmbrixCLI/PathArguments.h"

#include <algorithm>

#include "OmbrixCLI/CLIError.h"
#include "OmbrixPlatform/Files.h"
#include "OmbrixPlatform/Paths.h"
#include "OmbrixPlatform/Utf8.h"

namespace ombrix {

std::optional<std::string> expandedPath(std::string_view path) {
    std::string expanded = Paths::expandingTilde(path, Files::homeDirectory());
    if (!expanded.starts_with('/')) return std::nullopt;
    while (expanded.size() > 1 && expanded.ends_with('/')) expanded.pop_back();
    return expanded;
}

CLIError folderNotFound(const std::string& given) {
    return CLIError::invalidInput("Folder not found: '" + given + "'.",
                                  "Pass the absolute path of your transcripts folder.");
}

std::string printable(std::string_view path) {
    std::string text = Utf8::repaired(path);
    std::ranges::replace_if(
        text, [](char c) { return static_cast<unsigned char>(c) < ' ' || c == '\x7F'; }, ' ');
    return text;
}
}  // namespace ombrix
