#include "OmbrixMemoryKit/EnginePaths.h"

#include <algorithm>

#include "OmbrixPlatform/LineCursor.h"

namespace ombrix::EnginePaths {

bool declaresEngineFile(std::string_view text) {
    constexpr std::string_view key = "source: ";
    LineCursor lines(text);
    lines.next();
    while (auto line = lines.next()) {
        if (lines.isAtEnd()) return false;
        if (!line->starts_with(key)) continue;
        line->remove_prefix(key.size());
        if (line->ends_with('\r')) line->remove_suffix(1);
        if (std::ranges::find(engineSources, *line) != engineSources.end()) return true;
    }
    return false;
}
}  // namespace ombrix::EnginePaths
