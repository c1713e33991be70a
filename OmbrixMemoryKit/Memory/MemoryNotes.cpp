#include "OmbrixMemoryKit/Memory/MemoryNotes.h"

#include <algorithm>
#include <cstddef>
#include <optional>
#include <vector>

#include "OmbrixMemoryKit/Identity/ISODate.h"
#include "OmbrixMemoryKit/Region/EngineText.h"
#include "OmbrixPlatform/ByteRange.h"
#include "OmbrixPlatform/LineCursor.h"
#include "OmbrixPlatform/Text.h"

namespace ombrix::MemoryNotes {
namespace {

constexpr std::string_view headingLine = "## Notes\n", innerHeadingLine = "\n## Notes\n";
static_assert(EngineText::newTail.find(placeholder) != std::string_view::npos);
constexpr std::string_view nextHeading = "\n## ", correctionsHeading = "\n## Corrections\n";

/// Where the notes begin, which is the text's size plus one when the heading has no line feed;
/// nothing without a section.
std::optional<std::size_t> sectionStart(std::string_view text) {
    if (text.starts_with(headingLine)) return headingLine.size();
    if (const auto place = text.find(innerHeadingLine); place != text.npos)
        return place + innerHeadingLine.size();
    if (text == header || text.ends_with(innerHeadingLine.substr(0, header.size() + 1)))
        return text.size() + 1;
    return std::nullopt;
}

/// The notes of a text whose heading ends in a line feed.
ByteRange sectionRange(std::string_view text, std::size_t start) {
    // The next heading may be right here, after the line feed of this one.
    const std::size_t end = std::min(text.find(nextHeading, start - 1), text.size());
    return {start, std::max(start, end)};
}
}  // namespace

std::string body(std::string_view in) {
    const std::string text = Text::withLineFeeds(in);
    const auto start = sectionStart(text);
    if (!start || *start > text.size()) return {};
    std::vector<std::string_view> kept;
    LineCursor lines(sectionRange(text, *start).of(text));
    while (const auto line = lines.next())
        if (Text::trimmed(*line) != placeholder) kept.push_back(*line);
    return std::string(Text::trimmed(Text::joined(kept, "\n")));
}

std::string replacing(std::string_view notes, std::string_view in) {
    std::string text = Text::withLineFeeds(in);
    std::string section(Text::trimmed(Text::withLineFeeds(notes)));
    if (section.empty()) section = placeholder;
    section += '\n';

    if (const auto start = sectionStart(text)) {
        if (*start > text.size()) text += '\n';
        const auto range = sectionRange(text, *start);
        return text.replace(range.begin, range.size(), section);
    }
    section.insert(0, innerHeadingLine);
    if (const auto corrections = text.find(correctionsHeading); corrections != text.npos)
        return text.insert(corrections, section);
    if (!text.ends_with('\n')) text += '\n';
    return text += section;
}

std::string standfirst(std::int64_t meetings, std::string_view firstSeen, std::string_view lastSeen,
                       LandMemoryFact::Kind kind) {
    std::string line = std::to_string(meetings);
    line += kind == LandMemoryFact::Kind::person ? " call" : " meeting";
    if (meetings != 1) line += 's';
    line += " · ";
    if (!firstSeen.empty() && firstSeen != lastSeen) line += ISODate::monthDay(firstSeen) + " to ";
    return line += ISODate::monthDay(lastSeen);
}
}  // namespace ombrix::MemoryNotes
