#include "OmbrixMemoryKit/Memory/MemoryFiles.h"

#include <cstddef>
#include <utility>

#include "OmbrixMemoryKit/EnginePaths.h"
#include "OmbrixMemoryKit/Identity/ISODate.h"
#include "OmbrixMemoryKit/Memory/MemoryRegionParser.h"
#include "OmbrixMemoryKit/Region/EngineRegion.h"
#include "OmbrixMemoryKit/Region/EngineText.h"
#include "OmbrixMemoryKit/Region/Frontmatter.h"
#include "OmbrixPlatform/Characters.h"
#include "OmbrixPlatform/Numbers.h"
#include "OmbrixPlatform/Text.h"

namespace ombrix::MemoryFile {
namespace {

using Kind = LandMemoryFact::Kind;

constexpr std::string_view dot = " · ";
constexpr std::size_t longestName = 80;  // characters

// ---- lines ------------------------------------------------------------------------------------

std::string tags(const std::vector<std::string>& sources) {
    return sources.empty() ? std::string() : " " + Text::joined(sources, " ");
}

std::string line(const SourcedLine& item) { return item.text + tags(item.sources); }

std::string line(const ConsolidateDecision& decision) {
    std::string text = decision.text;
    text.append(dot) += decision.by;
    if (decision.date) text += " (" + ISODate::monthDay(*decision.date) + ")";
    return text += tags(decision.sources);
}

std::string_view prefix(ConsolidateOpen::Direction direction) {
    switch (direction) {
        case ConsolidateOpen::Direction::userOwes:
            return "You owe: ";
        case ConsolidateOpen::Direction::owedToUser:
            return "They owe you: ";
        case ConsolidateOpen::Direction::question:
            return "Unanswered: ";
        case ConsolidateOpen::Direction::other:
            break;
    }
    return {};
}

std::string line(const ConsolidateOpen& open) {
    std::string text(prefix(open.direction));
    text += open.text;
    if (open.due) text += ", due " + ISODate::monthDay(*open.due);
    if (open.followUpID) text.append(dot).append("id ") += *open.followUpID;
    return text += tags(open.sources);
}

std::string line(const std::string& item) { return item; }

// ---- sections ---------------------------------------------------------------------------------

void appendSection(std::string& text, std::string_view title, std::string_view lines) {
    text.append("## ").append(title) += '\n';
    if (lines.empty()) text.append(MemoryRegionParser::nothing) += '\n';
    text.append(lines) += '\n';
}

template <typename Item>
void appendSection(std::string& text, std::string_view title, const std::vector<Item>& items) {
    std::string lines;
    for (const auto& item : items) lines += "- " + EngineText::onOneLine(line(item)) + "\n";
    appendSection(text, title, std::string_view(lines));
}

std::optional<MemoryFileMeta> metaOf(const Frontmatter::Reader& fields) {
    auto title = fields.scalar("title");
    const auto kind = fromRawValue<Kind>(fields.scalar("kind").value_or(""));
    auto key = fields.scalar("key");
    auto firstSeen = fields.scalar("first_seen");
    auto lastSeen = fields.scalar("last_seen");
    const auto meetings =
        Numbers::parseInteger<std::int64_t>(fields.scalar("meetings").value_or(""));
    if (!title || !kind || !key || !firstSeen || !lastSeen || !meetings) return std::nullopt;
    return MemoryFileMeta{.title = std::move(*title),
                          .kind = *kind,
                          .key = std::move(*key),
                          .aliases = fields.list("aliases").value_or(std::vector<std::string>()),
                          .firstSeen = std::move(*firstSeen),
                          .lastSeen = std::move(*lastSeen),
                          .meetings = *meetings,
                          .series = fields.scalar("series"),
                          .members = fields.list("members").value_or(std::vector<std::string>())};
}
}  // namespace

std::optional<std::string> render(const MemoryFileMeta& meta, const ConsolidateOutput& output,
                                  std::string_view writer, Instant at, std::int64_t sources,
                                  std::optional<std::string_view> existing) {
    std::string head = EngineRegion::withoutMarkers(frontmatter(meta));
    const std::string openLine = EngineRegion::openMarker(writer, at, sources);
    const std::string content = regionContent(output);
    if (!existing || Text::trimmed(*existing).empty())
        return EngineRegion::compose(head, openLine, content, EngineText::newTail);

    auto parsed = EngineRegion::parse(*existing);
    if (!parsed) return std::nullopt;
    const auto kept = EngineText::withoutFrontmatter(parsed->before);
    head += '\n';
    if (kept.size() == parsed->before.size()) head += '\n';  // there was no frontmatter
    head.append(kept).append(openLine).append("\n").append(content);
    return head.append(EngineRegion::closeMarker).append(parsed->after);
}

std::string frontmatter(const MemoryFileMeta& meta) {
    Frontmatter::Writer writer;
    writer.quoted("title", meta.title)
        .bare("source", EnginePaths::memorySource)
        .bare("kind", rawValue(meta.kind))
        .quoted("key", meta.key)
        .list("aliases", meta.aliases)
        .bare("first_seen", meta.firstSeen)
        .bare("last_seen", meta.lastSeen)
        .bare("meetings", std::to_string(meta.meetings));
    if (meta.kind == Kind::thread)
        writer.bare("series", meta.series.value_or("recurring")).bareList("members", meta.members);
    return writer.text();
}

std::string regionContent(const ConsolidateOutput& output) {
    const bool isThread = output.kind == Kind::thread;
    std::string text;
    if (isThread)
        appendSection(text, "What this is", output.whatThisIs);
    else
        appendSection(text, "Who they are", output.who);
    std::string story = EngineText::paragraph(output.throughLine);
    if (!story.empty()) story += '\n';
    appendSection(text, "The through-line", std::string_view(story));
    if (isThread) appendSection(text, "Decisions", output.decisions);
    appendSection(text, isThread ? "Open" : "Open between you", output.open);
    appendSection(text, "Not sure", output.notSure);
    text.append(MemoryRegionParser::closingLine) += '\n';
    return EngineRegion::withoutMarkers(std::move(text));
}

std::optional<Parsed> parse(std::string_view given) {
    const std::string text = Text::withLineFeeds(given);
    const auto fields = Frontmatter::Reader::of(text);
    if (!fields || !fields->hasLine("source: " + std::string(EnginePaths::memorySource)))
        return std::nullopt;
    auto meta = metaOf(*fields);
    auto region = EngineRegion::parse(text);
    if (!meta || !region) return std::nullopt;
    return Parsed{
        .meta = std::move(*meta),
        .engineText = std::move(region->content),
        .corrections = Corrections::parse(Corrections::section(text).value_or(std::string()))};
}

std::string fileName(std::string_view display) {
    std::string kept(display);
    std::erase_if(kept, [](char c) { return c == '/' || c == ':' || c == '\\'; });
    const auto name = Characters::prefix(Text::trimmed(kept), longestName);
    return (name.empty() ? "Unnamed" : std::string(name)) + ".md";
}
}  // namespace ombrix::MemoryFile
