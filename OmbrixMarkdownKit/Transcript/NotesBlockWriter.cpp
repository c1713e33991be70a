#include "OmbrixMarkdownKit/Transcript/NotesBlockWriter.h"

#include <algorithm>

#include "OmbrixMarkdownKit/Transcript/MarkdownTranscript.h"
#include "OmbrixPlatform/Digest.h"
#include "OmbrixPlatform/Files.h"
#include "OmbrixPlatform/LineCursor.h"
#include "OmbrixPlatform/Paths.h"
#include "OmbrixPlatform/Text.h"

namespace ombrix::NotesBlockWriter {
namespace {

constexpr std::string_view writerOfPayloads = "Ombrix";

bool isSectionHeading(std::string_view line) {
    return std::ranges::find(aiHeaders, line) != aiHeaders.end();
}

/// A heading that would end the block's section or begin one that is not ours.
bool isForeignHeading(std::string_view line) {
    const bool isHeading = line == "#" || line == "##" || line.starts_with("# ") ||
                           line.starts_with("## ") || line.starts_with("#\t") ||
                           line.starts_with("##\t");
    return isHeading && !isSectionHeading(line);
}

/// A block that begins with "## Meeting Notes" or without a heading is not found again.
std::string withOpeningHeading(std::string sections) {
    const std::string_view firstLine = std::string_view(sections).substr(0, sections.find('\n'));
    if (isSectionHeading(firstLine) && firstLine != "## Meeting Notes") return sections;
    return "## Summary\n\n" + sections;
}

bool hasTranscriptSection(std::string_view text) {
    return MarkdownTranscriptParser::parse(text).has_value() &&
           Text::contains(text, "\n## Transcript");
}

/// False when the file cannot be written. A file that holds the text already is not touched.
bool writeFile(const std::string& path, std::string_view text) {
    if (Files::text(path) == text) return true;
    try {
        Files::writeAtomically(path, text);
        return true;
    } catch (const Files::Error&) {
        return false;
    }
}

bool writeMirror(const std::string& path, std::string_view transcript) {
    const std::string mirror = mirrorURL(path);
    const auto block = TranscriptEditor::enhancedSections(transcript);
    if (block && !block->empty()) return writeFile(mirror, std::string(*block) + "\n");
    return !Files::exists(mirror) || Files::remove(mirror);
}
}  // namespace

std::string sanitizedSections(std::string_view notes) {
    std::string result;
    const std::string text = TranscriptEditor::withoutEndMarkers(Text::withLineFeeds(notes));
    LineCursor lines(text);
    while (auto line = lines.next()) {
        while (line->ends_with('\r')) line->remove_suffix(1);  // of damaged line ends
        const std::string_view content = Text::trimmed(*line);
        if (isForeignHeading(content) || TranscriptEditor::isMachineProvenance(content)) continue;
        result.append(isSectionHeading(content) ? content : *line) += '\n';
    }
    return std::string(Text::trimmed(result));
}

std::string sectionsPayload(std::string_view notes, Instant date, const Calendar& calendar) {
    std::string sections = sanitizedSections(notes);
    if (sections.empty()) return sections;
    return withOpeningHeading(std::move(sections)) + "\n\n" +
           provenanceLine(writerOfPayloads, std::nullopt, date, calendar);
}

std::string provenanceLine(std::string_view writer, std::optional<std::string_view> routePhrase,
                           Instant date, const Calendar& calendar) {
    std::string line = "_Written by " + std::string(writer);
    if (routePhrase) line.append(" ").append(*routePhrase);
    return line + " on " + calendar.formatted(date, "MMM d, yyyy") +
           ". Regenerate or delete any time._";
}

bool write(std::string_view payload, const std::string& path) {
    const auto text = Files::text(path);
    if (!text || !hasTranscriptSection(*text)) return false;
    const std::string edited = TranscriptEditor::setEnhancedSections(*text, payload);
    if (edited != *text && TranscriptEditor::hasUnmarkedSections(*text)) return false;
    return writeFile(path, edited) && writeMirror(path, edited);
}

bool write(std::string_view notes, const std::string& path, Instant now, const Calendar& calendar) {
    return write(sectionsPayload(notes, now, calendar), path);
}

bool clear(const std::string& path) { return write("", path); }

std::string mirrorURL(std::string_view path) {
    constexpr std::size_t longestName = 255;  // of common file systems, in bytes
    std::string name = "." + std::string(Paths::lastComponent(path)) + ".notes";
    if (name.size() > longestName)
        name = "." + Digest::sha256Hex(Paths::lastComponent(path)) + ".notes";
    return Paths::joined(Paths::parent(path), name);
}
}  // namespace ombrix::NotesBlockWriter
