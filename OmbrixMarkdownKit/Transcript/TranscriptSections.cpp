#include "OmbrixMarkdownKit/Transcript/TranscriptSections.h"

#include <algorithm>
#include <cstring>
#include <vector>

#include "OmbrixPlatform/Text.h"

namespace ombrix::TranscriptSections {
namespace {

constexpr std::string_view commentOpen = "<!--";
constexpr std::string_view commentClose = "-->";

/// A place in the body where a section can begin or end.
struct Mark {
    std::size_t at = 0;
    std::optional<Section> heading;  ///< nothing for the end of the machine block
    bool endsLine = false;           ///< a line feed follows the heading
};

std::optional<Section> headingAt(std::string_view body, std::size_t at) {
    const auto rest = body.substr(at);
    for (std::size_t i = 0; i < sectionHeaders.size(); ++i)
        if (rest.starts_with(sectionHeaders[i])) return static_cast<Section>(i);
    return std::nullopt;
}

void addHeadings(std::string_view body, std::vector<Mark>& marks) {
    // "#" is rare in speech, so the library's byte search runs through the body almost unhindered.
    for (std::size_t at = body.find('#'); at != std::string_view::npos;
         at = body.find('#', at + 1)) {
        if (const auto heading = headingAt(body, at)) {
            const std::size_t end = at + sectionHeaders[static_cast<std::size_t>(*heading)].size();
            marks.push_back({at, heading, end < body.size() && body[end] == '\n'});
        }
    }
}

void addBlockEnds(std::string_view body, std::vector<Mark>& marks) {
    for (std::size_t at = body.find('<'); at != std::string_view::npos;
         at = body.find('<', at + 1)) {
        if (body.substr(at).starts_with(machineBlockEnd))
            marks.push_back({at, std::nullopt, false});
    }
}

/// The section of `heading`: from the line after the first one that ends in it to the next mark at
/// the start of a later line.
std::string_view sectionOf(Section heading, std::string_view body, const std::vector<Mark>& marks) {
    auto mark = std::ranges::find_if(
        marks, [&](const Mark& m) { return m.heading == heading && m.endsLine; });
    if (mark == marks.end()) return {};
    const std::size_t begin =
        mark->at + sectionHeaders[static_cast<std::size_t>(heading)].size() + 1;
    mark = std::find_if(mark, marks.end(), [&](const Mark& m) {
        return m.at > begin && body[m.at - 1] == '\n' && m.heading != heading;
    });
    const std::size_t end = mark == marks.end() ? body.size() : mark->at - 1;
    return body.substr(begin, end - begin);
}

bool isCommentLine(std::string_view line) {
    line = Text::trimmedSpacesAndTabs(line);
    return line.starts_with(commentOpen) && line.ends_with(commentClose);
}

constexpr std::string_view paragraphEnd = "\n\n";

/// Reads a paragraph with the white space around it; false when it is empty or its speaker is.
bool read(std::string_view block, Paragraph& paragraph) {
    constexpr std::string_view speakerOpen = "**";
    constexpr std::string_view speakerClose = ":**";
    block = Text::trimmed(block);
    if (block.empty()) return false;
    const std::size_t close =
        block.starts_with(speakerOpen) ? block.find(speakerClose) : std::string_view::npos;
    if (close == std::string_view::npos) {
        paragraph = {false, {}, block};
        return true;
    }
    const auto speaker = block.substr(speakerOpen.size(), close - speakerOpen.size());
    if (speaker.empty()) return false;
    auto text = block.substr(close + speakerClose.size());
    if (text.starts_with(' ')) text.remove_prefix(1);
    paragraph = {true, speaker, text};
    return true;
}

/// Where the paragraph with the byte `at` begins. Not string_view's rfind, which compares at every
/// byte.
std::size_t afterParagraphEnd(std::string_view text, std::size_t at) {
    while (const void* hit = ::memrchr(text.data(), '\n', at)) {
        at = static_cast<std::size_t>(static_cast<const char*>(hit) - text.data());
        if (at > 0 && text[at - 1] == '\n') return at + 1;
    }
    return 0;
}

std::string withoutCommentLines(std::string_view text) {
    auto lines = Text::split(text, "\n");
    std::erase_if(lines, isCommentLine);
    return Text::joined(lines, "\n");
}
}  // namespace

std::optional<Frame> frame(std::string_view text) {
    constexpr std::string_view opening = "---\n";
    constexpr std::string_view closing = "\n---\n";
    if (!text.starts_with(opening)) return std::nullopt;
    const auto rest = text.substr(opening.size());
    std::size_t end = rest.find(closing);
    if (end != std::string_view::npos)
        return Frame{rest.substr(0, end), rest.substr(end + closing.size())};
    // A file can end right after the dashes; a line that merely starts with them closes as well.
    const auto looseClosing = closing.substr(0, closing.size() - 1);
    end = rest.find(looseClosing);
    if (end == std::string_view::npos) return std::nullopt;
    return Frame{rest.substr(0, end), rest.substr(end + looseClosing.size())};
}

Sections::Sections(std::string_view body) {
    std::vector<Mark> marks;
    addHeadings(body, marks);
    const auto headings = static_cast<std::ptrdiff_t>(marks.size());
    addBlockEnds(body, marks);
    std::ranges::inplace_merge(marks, marks.begin() + headings, {}, &Mark::at);
    for (std::size_t i = 0; i < sections_.size(); ++i)
        sections_[i] = sectionOf(static_cast<Section>(i), body, marks);
}

std::string_view Sections::text(Section section, std::string& storage) const {
    const auto found = raw(section);
    if (section == Section::notes || !Text::contains(found, commentOpen))
        return Text::trimmed(found);
    storage = withoutCommentLines(found);
    return Text::trimmed(storage);
}

bool Paragraphs::next(Paragraph& paragraph) {
    while (!rest_.empty()) {
        const std::size_t end = rest_.find(paragraphEnd);
        const auto block = rest_.substr(0, end);
        rest_ = end == std::string_view::npos ? std::string_view()
                                              : rest_.substr(end + paragraphEnd.size());
        if (!read(block, paragraph)) continue;
        hasTurn_ = hasTurn_ || paragraph.opensTurn;
        if (hasTurn_) return true;
    }
    return false;
}

ParagraphFinder::Block ParagraphFinder::around(std::size_t at) {
    if (!firstTurn_) {
        Paragraph first;
        firstTurn_ = Paragraphs(section_).next(first)
                         ? static_cast<std::size_t>(first.text.data() - section_.data())
                         : std::string_view::npos;
    }
    // Of more than two line feeds in a row, which ones end the block does not matter: it is
    // trimmed.
    const std::size_t begin = afterParagraphEnd(section_, at);
    const std::size_t end = std::min(section_.find(paragraphEnd, at), section_.size());
    Paragraph paragraph;
    if (end < *firstTurn_ || !read(section_.substr(begin, end - begin), paragraph))
        return {{}, end};
    return {paragraph.text, end};
}
}  // namespace ombrix::TranscriptSections
