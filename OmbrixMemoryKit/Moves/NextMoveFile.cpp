#include "OmbrixMemoryKit/Moves/NextMoveFile.h"

#include <cstdint>
#include <set>
#include <utility>

#include "OmbrixMemoryKit/Region/Corrections.h"
#include "OmbrixMemoryKit/Region/EngineRegion.h"
#include "OmbrixMemoryKit/Region/EngineText.h"
#include "OmbrixMemoryKit/Region/Frontmatter.h"
#include "OmbrixPlatform/Regex.h"
#include "OmbrixPlatform/Text.h"

namespace ombrix::NextMoveFile {
namespace {

// ---- writing ----------------------------------------------------------------------------------

std::string frontmatter(const Meta& meta) {
    Frontmatter::Writer writer;
    writer.quoted("title", meta.title)
        .bare("source", EnginePaths::nextMoveSource)
        .bare("kind", rawValue(meta.kind))
        .bare("stance", rawValue(meta.stance))
        .quoted("meeting", meta.meeting)
        .bare("meeting_date", meta.meetingDate)
        .quoted("meeting_key", meta.meetingKey)
        .bare("move", meta.moveId)
        .list("commitments", meta.commitments);
    if (meta.due) writer.bare("due", *meta.due);
    writer.list("recipients", meta.recipients)
        .bare("state", rawValue(meta.state))
        .bare("updated", isoInstant(meta.updated));
    return writer.text();
}

std::string anchorComment(const ResolvedExchange& exchange) {
    std::vector<std::string> ids;
    for (const auto& turn : exchange.turns)
        if (turn.cited) ids.push_back(turn.id);
    // Keys and ids come from files and may hold anything.
    return "<!-- ombrix:said source=\"" + EngineRegion::attributeValue(exchange.source->id) +
           "\" turns=\"" + EngineRegion::attributeValue(Text::joined(ids, ",")) + "\" -->";
}

std::int64_t citedMeetings(const ResolvedMove& move) {
    std::set<std::string_view> meetings;
    for (const auto& [claim, n] : move.claims)
        for (const auto& ref : claim.refs) meetings.insert(ref.sourceId);
    return static_cast<std::int64_t>(meetings.size());
}

/// What is below the close marker; nothing when the file's markers are damaged.
std::optional<std::string> tailOf(std::string_view existing) {
    if (auto region = EngineRegion::parse(existing)) {
        if (!region->after.ends_with('\n')) region->after += '\n';
        return std::move(region->after);
    }
    if (Text::contains(existing, EngineRegion::openPrefix) ||
        Text::contains(existing, EngineRegion::closeMarker))
        return std::nullopt;
    if (Text::trimmed(existing).empty()) return std::string(EngineText::newTail);
    std::string tail = "\n" + Text::withLineFeeds(existing);
    if (!tail.ends_with('\n')) tail += '\n';
    return tail;
}

// ---- reading ----------------------------------------------------------------------------------

template <typename Enum>
std::optional<Enum> enumerator(const Frontmatter::Reader& fields, std::string_view key) {
    const auto text = fields.scalar(key);
    return text ? fromRawValue<Enum>(*text) : std::nullopt;
}

std::optional<Meta> metaOf(const Frontmatter::Reader& fields) {
    auto title = fields.scalar("title");
    const auto kind = enumerator<MoveKind>(fields, "kind");
    const auto stance = enumerator<Stance>(fields, "stance");
    auto meeting = fields.scalar("meeting");
    auto meetingDate = fields.scalar("meeting_date");
    auto meetingKey = fields.scalar("meeting_key");
    auto moveId = fields.scalar("move");
    auto commitments = fields.list("commitments");
    auto recipients = fields.list("recipients");
    const auto state = enumerator<State>(fields, "state");
    const auto updated = parseIsoInstant(fields.scalar("updated").value_or(""));
    if (!title || !kind || !stance || !meeting || !meetingDate || !meetingKey || !moveId ||
        !commitments || !recipients || !state || !updated)
        return std::nullopt;
    return Meta{.title = std::move(*title),
                .kind = *kind,
                .stance = *stance,
                .meeting = std::move(*meeting),
                .meetingDate = std::move(*meetingDate),
                .meetingKey = std::move(*meetingKey),
                .moveId = std::move(*moveId),
                .commitments = std::move(*commitments),
                .due = fields.scalar("due"),
                .recipients = std::move(*recipients),
                .state = *state,
                .updated = *updated};
}

std::vector<Cited> citedIn(std::string_view content) {
    static const Regex anchor(R"re(<!-- ombrix:said source="([^"]*)" turns="([^"]*)" -->)re");
    std::vector<Cited> cited;
    for (const auto& match : anchor.matches(content)) {
        Cited each{.sourceId = std::string(match.group(1, content))};
        for (const auto id : Text::split(match.group(2, content), ","))
            each.turnIds.emplace_back(id);
        cited.push_back(std::move(each));
    }
    return cited;
}
}  // namespace

std::optional<std::string> render(const ResolvedMove& move, const Meta& meta,
                                  const MoveMarkdown::Context& context, std::string_view writer,
                                  Instant at, std::optional<std::string_view> existing) {
    const auto tail = tailOf(existing.value_or(""));
    if (!tail) return std::nullopt;
    return EngineRegion::withoutMarkers(frontmatter(meta)) + "\n" +
           EngineRegion::openMarker(writer, at, citedMeetings(move)) + "\n" +
           regionContent(move, context) + std::string(EngineRegion::closeMarker) + *tail;
}

std::string regionContent(const ResolvedMove& move, const MoveMarkdown::Context& context) {
    std::vector<std::string> pieces{
        EngineRegion::withoutMarkers(MoveMarkdown::work(move, context))};
    if (!move.exchanges.empty()) {
        pieces.emplace_back("---");
        pieces.emplace_back("What was said");
    }
    for (const auto& exchange : move.exchanges) {
        const auto said = MoveMarkdown::exchangeText(exchange, MoveMarkdown::Clip::quotes);
        pieces.push_back(anchorComment(exchange) + "\n" + EngineRegion::withoutMarkers(said));
    }
    return Text::joined(pieces, "\n\n") + "\n";
}

std::optional<Parsed> parse(std::string_view given) {
    const std::string text = Text::withLineFeeds(given);
    const auto fields = Frontmatter::Reader::of(text);
    const std::string source = "source: " + std::string(EnginePaths::nextMoveSource);
    if (!fields || !fields->hasLine(source)) return std::nullopt;
    auto meta = metaOf(*fields);
    auto region = EngineRegion::parse(text);
    if (!meta || !region) return std::nullopt;

    Parsed parsed{.meta = std::move(*meta), .cited = citedIn(region->content)};
    if (auto line = EngineRegion::parseOpenLine(region->openLine)) {
        parsed.writer = std::move(line->by);
        parsed.writtenAt = line->at;
    }
    if (const auto section = Corrections::section(region->after))
        parsed.corrections = MoveCorrections::parse(*section);
    parsed.engineText = std::move(region->content);
    return parsed;
}
}  // namespace ombrix::NextMoveFile
