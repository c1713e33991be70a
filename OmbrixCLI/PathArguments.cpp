#include "OmbrixCLI/PathArguments.h"

#include "OmbrixCLI/CLIError.h"
#include "OmbrixPlatform/Files.h"
#include "OmbrixPlatform/Paths.h"
#include "OmbrixPlatform/Text.h"
#include "OmbrixPlatform/Utf8.h"

namespace ombrix {

std::optional<std::string> expandedPath(std::string_view path) {
    const std::string expanded = Paths::expandingTilde(path, Files::homeDirectory());
    if (!expanded.starts_with('/')) return std::nullopt;
    return Paths::absolute(expanded, "/");
}

CLIError folderNotFound(const std::string& given) {
    return CLIError::invalidInput("Folder not found: '" + given + "'.",
                                  "Pass the absolute path of your transcripts folder.");
}

std::string printable(std::string_view given) {
    const std::string text = Utf8::repaired(given);
    std::string line;
    line.reserve(text.size());
    for (std::size_t at = 0; at < text.size();) {
        const auto [scalar, length] = Utf8::decode(text, at);
        if (Text::isControl(scalar))
            line += ' ';
        else
            line.append(text, at, length);
        at += length;
    }
    return line;
}
}  // namespace ombrix
