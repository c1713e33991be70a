#include "OmbrixMemoryKit/Notes/NotesBlockEdit.h"

#include <algorithm>
#include <vector>

#include "OmbrixMarkdownKit/Transcript/TranscriptEditor.h"
#include "OmbrixPlatform/LineCursor.h"
#include "OmbrixPlatform/Text.h"

namespace ombrix {
namespace {

constexpr std::string_view humanPrefix = "_Written by ";

bool isProvenance(std::string_view line) {
    line = Text::trimmed(line);
    return line.starts_with(humanPrefix) || line.starts_with(EngineProvenance::machinePrefix);
}

/// The part between the transcript heading and the marker in which provenance lines are looked for:
/// from the first generated heading on, so that nothing said is taken for one; all of it when the
/// block has no heading left.
std::optional<ByteRange> tailRange(std::string_view text) {
    auto range = TranscriptEditor::machineStretch(text);
    if (!range) return std::nullopt;
    const auto inside = text.substr(0, range->end);
    std::size_t first = std::string_view::npos;
    for (const auto heading : TranscriptEditor::aiHeaders)
        first = std::min(first, inside.find("\n" + std::string(heading), range->begin));
    if (first != std::string_view::npos) range->begin = first;
    return range;
}

struct Lines {
    std::vector<std::string_view> provenance;
    std::vector<std::string_view> others;  ///< no doubled empty line where provenance was
    bool isTailLast = true;                ///< only empty lines follow provenance

    explicit Lines(std::string_view text) {
        LineCursor lines(text);
        bool afterProvenance = false;
        while (const auto line = lines.next()) {
            const bool isEmpty = Text::trimmed(*line).empty();
            if (isProvenance(*line)) {
                provenance.push_back(*line);
            } else if (!afterProvenance || !isEmpty || others.empty() ||
                       !Text::trimmed(others.back()).empty()) {
                others.push_back(*line);
                if (!isEmpty && !provenance.empty()) isTailLast = false;
            }
            afterProvenance = isProvenance(*line);
        }
    }
};

/// The provenance lines of `before` as the last of the block in `edited`. The edit of the last
/// section has removed them, that of a new one has left them ahead of it.
std::string withTailLast(std::string_view before, std::string_view edited) {
    const auto old = tailRange(before);
    const auto range = tailRange(edited);
    if (!old || !range) return std::string(edited);
    const Lines tail(old->of(before));
    const Lines now(range->of(edited));
    if (tail.provenance == now.provenance && now.isTailLast) return std::string(edited);
    std::string block = Text::joined(now.others, "\n");
    block.resize(block.find_last_not_of("\r\n") + 1);
    block += "\n\n";
    for (const auto line : tail.provenance) block.append(line) += '\n';
    block += '\n';
    return std::string(edited.substr(0, range->begin)) + block +
           std::string(edited.substr(range->end));
}

std::string stamped(const std::string& text, Instant now) {
    const auto range = tailRange(text);
    if (!range) return text;
    LineCursor lines(range->of(text));
    while (const auto line = lines.next()) {
        if (!TranscriptEditor::isMachineProvenance(*line)) continue;
        auto provenance = EngineProvenance::parse(*line);
        if (!provenance) return text;
        provenance->edited = now;
        const auto content = Text::trimmed(*line);
        std::string result = text;
        return result.replace(static_cast<std::size_t>(content.data() - text.data()),
                              content.size(), provenance->machineLine());
    }
    return text;
}
}  // namespace

std::string NotesBlockRenderer::payload(const LandOutput& output,
                                        const EngineProvenance& provenance,
                                        const Calendar& calendar) {
    std::string text("## Summary\n");
    text.append(Text::trimmed(output.summary)) += '\n';
    if (!output.notes.empty()) text += "\n## Meeting Notes\n";
    for (const LandNoteTopic& topic : output.notes) {
        text.append("\n### ").append(Text::trimmed(topic.topic)) += '\n';
        for (const auto& bullet : topic.bullets)
            text.append("- ").append(Text::trimmed(bullet)) += '\n';
    }
    return text + "\n" + provenance.humanLine(calendar) + "\n" + provenance.machineLine();
}

std::string_view NotesBlockEdit::header(Section section) {
    return section == Section::summary ? "## Summary" : "## Action Items";
}

std::optional<std::string> NotesBlockEdit::replace(Section section, std::string_view body,
                                                   std::string_view markdown, Instant now) {
    if (!TranscriptEditor::enhancedSections(markdown)) return std::nullopt;
    const std::string edited =
        withTailLast(markdown, TranscriptEditor::setAISection(markdown, header(section), body));
    if (edited == markdown) return edited;
    return stamped(edited, now);
}
}  // namespace ombrix
