#include "OmbrixMemoryKit/Region/EngineText.h"

#include "OmbrixPlatform/Text.h"

namespace ombrix::EngineText {

std::string onOneLine(std::string_view text) {
    std::string line = Text::withLineFeeds(text);
    for (char& c : line)
        if (c == '\n' || c == '\r') c = ' ';
    return line;
}

std::string paragraph(std::string_view text) {
    const std::string line = onOneLine(Text::trimmed(text));
    return line.starts_with("## ") ? "\\" + line : line;
}

std::string_view withoutFrontmatter(std::string_view before) {
    constexpr std::string_view fence = "---\n", closingFence = "\n---\n";
    if (!before.starts_with(fence)) return before;
    const auto end = before.find(closingFence, fence.size());
    return end == before.npos ? before : before.substr(end + closingFence.size());
}
}  // namespace ombrix::EngineText
