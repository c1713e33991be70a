#include "OmbrixMarkdownKit/Transcript/TranscriptEditor.h"

#include <algorithm>

#include "OmbrixPlatform/LineCursor.h"
#include "OmbrixPlatform/Text.h"

namespace ombrix::TranscriptEditor {
namespace {

constexpr std::size_t npos = std::string_view::npos;
constexpr std::string_view notesLine = "## Notes\n";
constexpr std::string_view transcriptHeading = "## Transcript";
constexpr std::string_view lineBeforeTranscript = "\n## Transcript";
/// The headings that a block can begin with. "## Meeting Notes" alone does not tell a block, since
/// people write that heading themselves.
constexpr std::array<std::string_view, 3> blockOpenings = {"\n## Summary", "\n## Action Items",
                                                           "\n## Key Moments"};

/// Where the transcript heading starts. Where no line is that heading, the first that resembles it
/// counts; where one is, nothing else does, so that a block never begins in notes that speak of it.
std::size_t transcriptPlace(std::string_view text) {
    const auto isLineBreak = [&](std::size_t at) { return text[at] == '\n' || text[at] == '\r'; };
    const std::size_t first = text.find(transcriptHeading);
    for (std::size_t at = first; at != npos; at = text.find(transcriptHeading, at + 1)) {
        const std::size_t end = at + transcriptHeading.size();
        if ((at == 0 || isLineBreak(at - 1)) && (end == text.size() || isLineBreak(end))) return at;
    }
    return first;
}

/// `text` with the bytes of `range` replaced.
std::string replaced(std::string_view text, const ByteRange& range, std::string_view by) {
    std::string result;
    result.reserve(text.size() - range.size() + by.size());
    result.append(text.substr(0, range.begin)).append(by).append(text.substr(range.end));
    return result;
}

/// Without the line breaks and blanks at its end.
std::string_view withoutEnd(std::string_view text) {
    return text.substr(0, text.find_last_not_of("\r\n ") + 1);
}

std::string_view withoutCarriageReturn(std::string_view line) {
    if (line.ends_with('\r')) line.remove_suffix(1);
    return line;
}

/// `text` without `part`, also where removing one joins another.
std::string without(std::string_view text, std::string_view part) {
    std::string result;
    result.reserve(text.size());
    for (const char c : text) {
        result += c;
        if (c == part.back() && result.ends_with(part)) result.resize(result.size() - part.size());
    }
    return result;
}

/// Fit for a block: a marker inside would end it there.
std::string blockContent(std::string_view text) {
    return std::string(Text::trimmed(withoutEndMarkers(text)));
}

/// The block with its marker. Begins at the line feed ahead of its first heading.
std::optional<ByteRange> machineBlock(std::string_view text) {
    const auto stretch = machineStretch(text);
    if (!stretch) return std::nullopt;
    std::size_t begin = stretch->end;
    for (const auto opening : blockOpenings)
        begin = std::min(begin, text.substr(0, stretch->end).find(opening, stretch->begin));
    return ByteRange{begin, stretch->end + enhancedBlockEndMarker.size()};
}

/// The block without its marker, as a view of the text.
std::optional<std::string_view> blockSections(std::string_view text) {
    const auto block = machineBlock(text);
    if (!block) return std::nullopt;
    return text.substr(block->begin, block->size() - enhancedBlockEndMarker.size());
}

void appendBlock(std::string& text, std::string_view sections) {
    text.append("\n\n").append(sections).append("\n\n").append(enhancedBlockEndMarker) += '\n';
}

/// The place of the section's heading, of the line feed ahead of it, within the stretch.
std::size_t sectionPlace(std::string_view text, const ByteRange& stretch, std::string_view header) {
    const std::string line = "\n" + std::string(header);
    return text.substr(0, stretch.end).find(line, stretch.begin);
}

/// Where the content that begins at `from` ends: ahead of the line feed of the next heading or of
/// the marker.
std::size_t contentEnd(std::string_view text, const ByteRange& stretch, std::size_t from) {
    std::size_t end = stretch.end;
    if (end > from && text[end - 1] == '\n') --end;
    const auto inside = text.substr(0, stretch.end);
    for (std::size_t at = inside.find("\n## ", from); at < end; at = inside.find("\n## ", at + 1)) {
        const auto line = inside.substr(at + 1);
        if (std::ranges::any_of(TranscriptSections::sectionHeaders,
                                [&](auto heading) { return line.starts_with(heading); }))
            return at;
    }
    return end;
}

/// Where the frontmatter's closing line starts; 0 without a closed frontmatter. Without an exact
/// one the first line that begins with dashes closes, as for the parser.
std::size_t headerEnd(std::string_view text) {
    constexpr std::string_view dashes = "\n---";
    const std::size_t opening = text.starts_with("---\n")     ? 4
                                : text.starts_with("---\r\n") ? 5
                                                              : npos;
    if (opening == npos) return 0;
    const std::size_t first = text.find(dashes, opening);
    for (std::size_t at = first; at != npos; at = text.find(dashes, at + 1)) {
        const auto rest = text.substr(at + dashes.size());
        if (rest.starts_with('\n') || rest.starts_with("\r\n")) return at + 1;
    }
    return first == npos ? 0 : first + 1;
}
}  // namespace

std::string setTitle(std::string_view text, std::string_view title) {
    std::size_t start = 0;
    LineCursor lines(text);
    while (const auto line = lines.next()) {
        if (!line->starts_with("title:")) {
            start += line->size() + 1;
            continue;
        }
        std::string value = onOneLine(title);
        if (value.find_first_of(":#'\"") != npos)
            value = "\"" + Text::replacingAll(value, "\"", "\\\"") + "\"";
        const ByteRange range{start, start + withoutCarriageReturn(*line).size()};
        return replaced(text, range, "title: " + value);
    }
    return std::string(text);
}

std::string setNotes(std::string_view text, std::string_view notes) {
    const std::size_t heading = text.find(notesLine);
    if (heading == npos) return std::string(text);
    const std::size_t begin = heading + notesLine.size();
    const std::size_t end = text.find(lineBeforeTranscript, begin);
    if (end == npos) return std::string(text);
    notes = Text::trimmed(notes);
    return replaced(text, {begin, end}, notes.empty() ? "\n" : "\n" + std::string(notes) + "\n");
}

std::string renameSpeaker(std::string_view text, std::string_view from, std::string_view to) {
    const std::string name = without(onOneLine(to), ":**");
    if (from.empty() || name.empty() || from == name) return std::string(text);
    const std::string turn = "**" + std::string(from) + ":**";
    const std::string item = "  - " + std::string(from);
    const std::size_t header = headerEnd(text);
    std::string result;
    result.reserve(text.size());
    std::size_t start = 0;
    LineCursor lines(text);
    while (const auto line = lines.next()) {
        if (line->starts_with(turn))
            result.append("**").append(name).append(line->substr(2 + from.size()));
        else if (start < header && withoutCarriageReturn(*line) == item)
            result.append("  - ").append(name).append(line->substr(item.size()));
        else
            result.append(*line);
        start += line->size() + 1;
        if (!lines.isAtEnd()) result += '\n';
    }
    return result;
}

std::string setEnhancedSections(std::string_view text, std::string_view sections) {
    const std::string content = blockContent(sections);
    const auto block = machineBlock(text);
    if (!block && content.empty()) return std::string(text);
    std::string result(withoutEnd(text.substr(0, block ? block->begin : text.size())));
    if (content.empty())
        result += '\n';
    else
        appendBlock(result, content);
    if (!block) return result;
    auto after = text.substr(block->end);
    if (after.starts_with('\r')) after.remove_prefix(1);
    if (after.starts_with('\n')) after.remove_prefix(1);
    return result.append(after);
}

std::string setAISection(std::string_view text, std::string_view header, std::string_view body) {
    if (std::ranges::find(aiHeaders, header) == aiHeaders.end()) return std::string(text);
    const std::string content = blockContent(body);
    const std::string section = std::string(header) + "\n" + content;
    const auto stretch = machineStretch(text);
    if (!stretch) return content.empty() ? std::string(text) : setEnhancedSections(text, section);

    const std::size_t place = sectionPlace(text, *stretch, header);
    if (place == npos) {
        if (content.empty()) return std::string(text);
        const bool startsLine = text[stretch->end - 1] == '\n';
        return replaced(text, {stretch->end, stretch->end},
                        (startsLine ? "" : "\n\n") + section + "\n\n");
    }
    const std::size_t from = place + 1 + header.size();
    const std::size_t end = contentEnd(text, *stretch, from);
    if (content.empty()) return replaced(text, {place, end}, "");
    const bool endsLine = end < stretch->end;  // else the marker is on the line of the section
    return replaced(text, {from, end}, "\n" + content + (endsLine ? "\n" : "\n\n"));
}

std::optional<std::string_view> enhancedSections(std::string_view text) {
    const auto sections = blockSections(text);
    if (!sections) return std::nullopt;
    return Text::trimmed(*sections);
}

std::optional<std::string_view> machineProvenance(std::string_view text) {
    const auto sections = blockSections(text);
    if (!sections) return std::nullopt;
    LineCursor lines(*sections);
    while (const auto line = lines.next())
        if (isMachineProvenance(*line)) return withoutCarriageReturn(*line);
    return std::nullopt;
}

bool isMachineProvenance(std::string_view line) {
    line = Text::trimmed(line);
    return line.starts_with(provenancePrefix) && line.ends_with("-->");
}

std::optional<ByteRange> machineStretch(std::string_view text) {
    const std::size_t heading = transcriptPlace(text);
    if (heading == npos) return std::nullopt;
    const std::size_t begin = heading + transcriptHeading.size();
    const std::size_t end = text.find(enhancedBlockEndMarker, begin);
    if (end == npos) return std::nullopt;
    return ByteRange{begin, end};
}

bool hasUnmarkedSections(std::string_view text) {
    const std::size_t transcript = transcriptPlace(text);
    if (transcript == npos || machineStretch(text)) return false;
    return std::ranges::any_of(aiHeaders, [&](std::string_view header) {
        return text.find("\n" + std::string(header), transcript) != npos;
    });
}

bool isInsideMachineBlock(std::string_view text, std::size_t position) {
    const auto stretch = machineStretch(text);
    return stretch && position >= stretch->begin && position < stretch->end;
}

std::string withoutEndMarkers(std::string_view text) {
    return without(text, enhancedBlockEndMarker);
}

std::string onOneLine(std::string_view text) {
    std::string result = Text::withLineFeeds(text);
    std::ranges::replace_if(
        result, [](char c) { return c == '\n' || c == '\r'; }, ' ');
    return result;
}
}  // namespace ombrix::TranscriptEditor
