#include "OmbrixMemoryKit/Memory/MemoryRegionParser.h"

#include "OmbrixPlatform/LineCursor.h"
#include "OmbrixPlatform/Regex.h"
#include "OmbrixPlatform/Text.h"

namespace ombrix::MemoryRegionParser {
namespace {

constexpr std::string_view headingPrefix = "## ", bullet = "- ", hedge = "Reads as:";

void append(Section& section, std::string_view line) {
    if (line.empty() || line == nothing || line == closingLine) return;
    if (line.starts_with(bullet))
        section.lines.push_back(parseLine(line));
    else
        section.prose.append(line) += '\n';
}
}  // namespace

std::vector<Section> sections(std::string_view text) {
    std::vector<Section> found;
    LineCursor lines(text);
    while (const auto given = lines.next()) {
        const auto line = Text::trimmed(*given);
        if (line.starts_with(headingPrefix))
            found.push_back({.title = std::string(line.substr(headingPrefix.size()))});
        else if (!found.empty())
            append(found.back(), line);
    }
    for (auto& section : found) section.prose = Text::trimmed(section.prose);
    return found;
}

Line parseLine(std::string_view line) {
    static const Regex source(R"(\[([^\[\]]+?), (\d{4}-\d{2}-\d{2})\])");
    static const Regex id(R"( · id (c-[0-9a-f]{8})\s*$)");
    if (line.starts_with(bullet)) line.remove_prefix(bullet.size());

    Line result;
    std::string text = source.replacingAll(line, [&](const Regex::Match& match) {
        result.sources.push_back({.title = std::string(match.group(1, line)),
                                  .date = std::string(match.group(2, line))});
        return std::string();
    });
    if (const auto match = id.firstMatch(text)) {
        result.followUpID = match->group(1, text);
        text.erase(match->range().begin);
    }
    std::string_view rest = text;
    if (rest.starts_with(hedge)) {
        result.readsAs = true;
        rest.remove_prefix(hedge.size());
    }
    result.text = Text::trimmed(rest);
    return result;
}
}  // namespace ombrix::MemoryRegionParser
