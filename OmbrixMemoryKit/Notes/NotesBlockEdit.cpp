#include "OmbrixMemoryKit/Notes/NotesBlockEdit.h"

#include <algorithm>
#include <cstddef>
#include <unordered_set>
#include <utility>
#include <vector>

#include "OmbrixMarkdownKit/Transcript/TranscriptEditor.h"
#include "OmbrixPlatform/ByteRange.h"
#include "OmbrixPlatform/LineCursor.h"
#include "OmbrixPlatform/Text.h"

namespace ombrix {
namespace {

constexpr std::string_view humanPrefix = "_Written by ";

bool isMachine(std::string_view line) {
    return Text::trimmed(line).starts_with(EngineProvenance::machinePrefix);
}

bool isProvenance(std::string_view line) {
    return isMachine(line) || Text::trimmed(line).starts_with(humanPrefix);
}

/// A line of a model's that is no section's heading. The reader of transcripts also takes the end
/// of a line for one, as in "### Action Items".
std::string withoutHeading(std::string line) {
    const auto& headings = TranscriptSections::sectionHeaders;
    if (std::ranges::any_of(headings, [&](auto each) { return line.starts_with(each); }))
        line.insert(0, " ");
    if (std::ranges::any_of(headings, [&](auto each) { return line.ends_with(each); })) line += ' ';
    return line;
}

/// A model's words as one line after `mark`.
std::string asOneLine(std::string_view mark, std::string_view words) {
    return withoutHeading(std::string(mark) + TranscriptEditor::onOneLine(Text::trimmed(words)));
}

/// A model's paragraphs, none of whose lines reads as a section's heading or as a machine line.
std::string paragraphs(std::string_view words) {
    std::string text;
    const std::string given = Text::withLineFeeds(Text::trimmed(words));
    LineCursor lines(given);
    while (const auto each = lines.next()) {
        const std::string line = withoutHeading(std::string(*each));
        text += isMachine(line) ? Text::replacingAll(line, "<!--", "<! --") : line;
        if (!lines.isAtEnd()) text += '\n';
    }
    return text;
}

/// The part of `stretch` that provenance lines stand in: from the first generated heading or the
/// first machine line on, with the human line right above that, so that nothing said is taken for
/// one; all of it when the block has neither. Begins at the line feed ahead of a line.
ByteRange tailRange(std::string_view text, const ByteRange& stretch) {
    const auto isHeading = [](std::string_view line) {
        return std::ranges::any_of(TranscriptEditor::aiHeaders,
                                   [&](auto heading) { return line.starts_with(heading); });
    };
    std::size_t start = stretch.begin;
    std::size_t startBefore = start;
    std::string_view before;
    LineCursor lines(stretch.of(text));
    lines.next();  // what follows the transcript heading on its line
    while (const auto line = lines.next()) {
        start = static_cast<std::size_t>(line->data() - text.data()) - 1;
        if (isHeading(*line)) return {start, stretch.end};
        if (isMachine(*line)) return {isProvenance(before) ? startBefore : start, stretch.end};
        before = *line;
        startBefore = start;
    }
    return stretch;
}

/// The lines of a block, those of its tail apart.
struct Lines {
    std::vector<std::string_view> tail;
    std::vector<std::string_view> others;  ///< no doubled empty line where the tail was
    bool isTailLast = true;                ///< only empty lines follow the tail

    template <typename IsTail>
    Lines(std::string_view text, const IsTail& isTail) {
        LineCursor lines(text);
        bool afterTail = false;
        while (const auto line = lines.next()) {
            const bool isEmpty = Text::trimmed(*line).empty();
            const bool ofTail = isTail(*line);
            if (ofTail) {
                tail.push_back(*line);
            } else if (!afterTail || !isEmpty || others.empty() ||
                       !Text::trimmed(others.back()).empty()) {
                others.push_back(*line);
                if (!isEmpty && !tail.empty()) isTailLast = false;
            }
            afterTail = ofTail;
        }
    }
};

/// True when the machine block is found by a heading, and not by its marker alone.
bool hasHeading(std::string_view text) {
    const auto sections = TranscriptEditor::enhancedSections(text);
    return sections && !sections->empty();
}

/// `edited` with the heading that the edit has removed, the one that the block in `before` began
/// with.
std::string withHeading(std::string_view heading, std::string_view before,
                        std::string_view edited) {
    const auto sections = *TranscriptEditor::enhancedSections(before);
    const auto at = static_cast<std::size_t>(sections.data() - before.data());
    std::string text(edited.substr(0, at - 1));
    text.append("\n").append(heading) += '\n';
    return text.append(edited.substr(at - 1));
}

/// The provenance lines of `before` as the last of the block in `edited`. The edit of the last
/// section has removed them, that of a new one has left them ahead of it. A person's line that only
/// reads like the one for people stays where it is. `heading` is that of the edited section: it
/// stays above nothing if it was the block's last, because what is under none is part of the talk.
std::string withTailLast(std::string_view heading, std::string_view before, std::string edited) {
    const auto stretch = TranscriptEditor::machineStretch(before);
    if (!stretch) return edited;
    const ByteRange range = tailRange(before, *stretch);
    const auto tail = Lines(range.of(before), isProvenance).tail;
    if (tail.empty()) return edited;
    if (!hasHeading(edited)) edited = withHeading(heading, before, edited);
    const auto end = TranscriptEditor::machineStretch(edited);
    if (!end) return edited;

    const std::unordered_set<std::string_view> known(tail.begin(), tail.end());
    // What is ahead of the tail's part is as it was, so that part begins where it began.
    const std::string_view text = edited;
    const Lines now(text.substr(range.begin, end->end - range.begin),
                    [&](std::string_view line) { return isMachine(line) || known.contains(line); });
    if (now.tail == tail && now.isTailLast) return edited;
    std::string result(text.substr(0, range.begin));
    result += Text::joined(now.others, "\n");
    result.resize(result.find_last_not_of("\r\n") + 1);
    result += "\n\n";
    for (const auto line : tail) result.append(line) += '\n';
    result += '\n';
    return result.append(text.substr(end->end));
}

/// The machine line that tells the block's owner; in a block without headings the first there is.
std::optional<std::string_view> machineLine(std::string_view text) {
    if (const auto line = TranscriptEditor::machineProvenance(text)) return line;
    const auto stretch = TranscriptEditor::machineStretch(text);
    if (!stretch) return std::nullopt;
    LineCursor lines(tailRange(text, *stretch).of(text));
    while (const auto line = lines.next())
        if (TranscriptEditor::isMachineProvenance(*line)) return line;
    return std::nullopt;
}

std::string stamped(std::string text, Instant now) {
    const auto line = machineLine(text);
    auto provenance = line ? EngineProvenance::parse(*line) : std::nullopt;
    if (!provenance) return text;
    provenance->edited = now;
    const auto content = Text::trimmed(*line);
    const auto at = static_cast<std::size_t>(content.data() - text.data());
    return text.replace(at, content.size(), provenance->machineLine());
}
}  // namespace

std::string NotesBlockRenderer::payload(const LandOutput& output,
                                        const EngineProvenance& provenance,
                                        const Calendar& calendar) {
    std::string text = "## Summary\n" + paragraphs(output.summary) + "\n";
    if (!output.notes.empty()) text += "\n## Meeting Notes\n";
    for (const LandNoteTopic& topic : output.notes) {
        text.append("\n").append(asOneLine("### ", topic.topic)) += '\n';
        for (const auto& bullet : topic.bullets) text.append(asOneLine("- ", bullet)) += '\n';
    }
    return text + "\n" + provenance.humanLine(calendar) + "\n" + provenance.machineLine();
}

std::string_view NotesBlockEdit::header(Section section) {
    return section == Section::summary ? "## Summary" : "## Action Items";
}

std::optional<std::string> NotesBlockEdit::replace(Section section, std::string_view body,
                                                   std::string_view markdown, Instant now) {
    if (!TranscriptEditor::enhancedSections(markdown)) return std::nullopt;
    const std::string_view heading = header(section);
    std::string edited = TranscriptEditor::setAISection(markdown, heading, body);
    // The tail of a block that nobody edits stays, wherever it is.
    if (edited != markdown) edited = withTailLast(heading, markdown, std::move(edited));
    if (edited == markdown) return edited;
    return stamped(std::move(edited), now);
}
}  // namespace ombrix
