#include "OmbrixMemoryKit/Notes/NotesActionItems.h"

#include <algorithm>

#include "OmbrixMarkdownKit/Transcript/TranscriptEditor.h"
#include "OmbrixPlatform/LineCursor.h"
#include "OmbrixPlatform/Text.h"

namespace ombrix {
namespace {

using Group = NotesActionItems::Group;
using Item = NotesActionItems::Item;

constexpr std::string_view arrowTo = " → ";
constexpr std::string_view arrowFrom = " ← ";
constexpr std::string_view dot = " · ";
constexpr std::string_view readsAsMark = "Reads as:";
constexpr std::string_view dash = "- ";
constexpr std::size_t npos = std::string_view::npos;

std::optional<Group> groupOf(std::string_view trimmedLine) {
    for (const Group group : {Group::youOwe, Group::owedToYou, Group::unsure})
        if (trimmedLine == shown(group)) return group;
    return std::nullopt;
}

/// Where the words of an item end.
std::size_t wordsEnd(std::string_view text) {
    for (const auto separator : {arrowTo, arrowFrom, dot})
        if (const std::size_t at = text.find(separator); at != npos) return at;
    if (text.ends_with(')'))
        if (const std::size_t at = text.rfind(" ("); at != npos) return at;
    return text.size();
}

std::optional<Item> itemOf(std::string_view line, Group group) {
    const auto words = Text::trimmed(line);
    const auto content = line.substr(static_cast<std::size_t>(words.data() - line.data()));
    if (!content.starts_with(dash) || content.starts_with("- [")) return std::nullopt;
    Item item{.group = group, .indent = std::string(line.substr(0, line.size() - content.size()))};
    auto text = content.substr(dash.size());
    if (text.starts_with(readsAsMark)) {
        item.readsAs = true;
        text.remove_prefix(readsAsMark.size());
        item.readsAsGap = text.starts_with(' ') ? " " : "";
        text.remove_prefix(item.readsAsGap.size());
    }
    const std::size_t end = wordsEnd(text);
    item.what = text.substr(0, end);
    item.rest = text.substr(end);
    return item;
}

NotesActionItems::Line lineOf(std::string_view line, std::optional<Group>& group) {
    const auto content = Text::trimmed(line);
    if (const auto opened = groupOf(content)) {
        group = opened;
        const auto before = static_cast<std::size_t>(content.data() - line.data());
        return NotesActionItems::GroupLine{
            .group = *opened,
            .before = std::string(line.substr(0, before)),
            .after = std::string(line.substr(before + content.size()))};
    }
    if (group)
        if (auto item = itemOf(line, *group)) return std::move(*item);
    return NotesActionItems::Legacy{std::string(line)};
}

struct LineText {
    std::string operator()(const NotesActionItems::GroupLine& line) const {
        return line.before + std::string(shown(line.group)) + line.after;
    }
    std::string operator()(const Item& item) const {
        const std::string mark =
            item.readsAs ? std::string(readsAsMark) + item.readsAsGap : std::string();
        return item.indent + std::string(dash) + mark + item.what + item.rest;
    }
    std::string operator()(const NotesActionItems::Legacy& line) const { return line.text; }
};
}  // namespace

std::string_view shown(Group group) {
    switch (group) {
        case Group::youOwe:
            return "**You owe**";
        case Group::owedToYou:
            return "**Owed to you**";
        case Group::unsure:
            return "**Unsure**";
    }
    return {};
}

std::optional<std::string> Item::who() const {
    std::size_t at = npos;
    std::size_t size = 0;
    for (const std::string_view arrow : {"→ ", "← "}) {
        const std::size_t found = rest.find(arrow);
        if (found < at) at = found, size = arrow.size();
    }
    if (at == npos) return std::nullopt;
    const auto words = std::string_view(rest).substr(at + size);
    return std::string(Text::trimmed(words.substr(0, words.find(dot))));
}

std::optional<std::string> Item::due() const {
    constexpr std::string_view prefix = "due ";
    for (const auto piece : Text::split(rest, dot))
        if (const auto words = Text::trimmed(piece); words.starts_with(prefix))
            return std::string(words.substr(prefix.size()));
    return std::nullopt;
}

NotesActionItems NotesActionItems::parse(std::string_view text) {
    NotesActionItems result;
    const std::string normalised = Text::withLineFeeds(text);
    std::optional<Group> group;
    LineCursor lines(normalised);
    while (const auto line = lines.next()) result.lines.push_back(lineOf(*line, group));
    return result;
}

std::string NotesActionItems::render() const {
    std::vector<std::string> texts;
    texts.reserve(lines.size());
    for (const Line& line : lines) texts.push_back(std::visit(LineText(), line));
    return Text::joined(texts, "\n");
}

std::vector<std::pair<std::size_t, Item>> NotesActionItems::items() const {
    std::vector<std::pair<std::size_t, Item>> result;
    for (std::size_t i = 0; i < lines.size(); ++i)
        if (const auto* item = std::get_if<Item>(&lines[i])) result.emplace_back(i, *item);
    return result;
}

std::optional<std::size_t> NotesActionItems::index(std::string_view what, std::size_t hint) const {
    const auto reads = [what](const Line& line) {
        const auto* item = std::get_if<Item>(&line);
        return item != nullptr && item->what == what;
    };
    if (hint < lines.size() && reads(lines[hint])) return hint;
    const auto found = std::ranges::find_if(lines, reads);
    if (found == lines.end()) return std::nullopt;
    return static_cast<std::size_t>(found - lines.begin());
}

NotesActionItems NotesActionItems::updatingWhat(std::size_t index, std::string_view words) const {
    NotesActionItems result = *this;
    const std::string what = TranscriptEditor::onOneLine(Text::trimmed(words));
    auto* item = index < lines.size() ? std::get_if<Item>(&result.lines[index]) : nullptr;
    if (item != nullptr && !what.empty()) item->what = what;
    return result;
}

bool NotesActionItems::hasLegacy() const {
    return std::ranges::any_of(lines, [](const Line& line) {
        const auto* legacy = std::get_if<Legacy>(&line);
        return legacy != nullptr && !Text::trimmed(legacy->text).empty();
    });
}
}  // namespace ombrix
