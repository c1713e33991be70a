#include "OmbrixMemoryKit/Memory/BeforeFile.h"

#include <cstddef>
#include <utility>
#include <vector>

#include "OmbrixMemoryKit/Region/EngineRegion.h"
#include "OmbrixMemoryKit/Region/EngineText.h"
#include "OmbrixMemoryKit/Region/Frontmatter.h"
#include "OmbrixPlatform/Characters.h"
#include "OmbrixPlatform/LineCursor.h"
#include "OmbrixPlatform/Regex.h"
#include "OmbrixPlatform/Text.h"
#include "OmbrixPlatform/Utf8.h"

namespace ombrix::BeforeFile {
namespace {

using Kind = BeforeCard::Kind;
using Source = MemoryRegionParser::Source;

constexpr std::string_view titlePrefix = "Before: ";
constexpr std::string_view wallClock = "yyyy-MM-dd'T'HH:mm:ss";
constexpr std::string_view headingPrefix = "## ", escapedHeading = "\\## ", bullet = "- ";
constexpr std::string_view whoAndWhen = "Who and when";
constexpr std::string_view none = "- (none)", nothingChanged = "- (nothing from other meetings)";
constexpr std::size_t longestSlug = 60;  // characters

// ---- writing ----------------------------------------------------------------------------------

std::string frontmatter(const BeforeCard& card, const Calendar& calendar) {
    Frontmatter::Writer writer;
    writer.quoted("title", std::string(titlePrefix) + card.title)
        .bare("source", source)
        .bare("for", calendar.formatted(card.forDate, wallClock));
    if (!card.people.empty()) writer.bareList("people", card.people);
    if (card.thread && !card.thread->empty()) writer.bare("thread", *card.thread);
    return writer.text();
}

std::string lineText(const BeforeCard::Line& line) {
    std::string text;
    if (line.certainty == Certainty::read) text += BeforeCard::readsAsPrefix;
    text += line.text;
    for (const auto& [title, date] : line.sources) {
        text.append(" [").append(title);
        if (!date.empty()) text.append(", ").append(date);
        text += ']';
    }
    return EngineText::onOneLine(text);
}

void appendHeading(std::string& text, std::string_view title) {
    if (!text.empty()) text += '\n';
    text.append(headingPrefix).append(title) += '\n';
}

void appendSection(std::string& text, Kind kind, const std::vector<BeforeCard::Line>& lines) {
    appendHeading(text, BeforeCard::heading(kind));
    for (std::size_t i = 0; i < lines.size(); ++i) {
        text += kind == Kind::opener ? std::to_string(i + 1) + ". " : std::string(bullet);
        text.append(lineText(lines[i])) += '\n';
    }
}

std::string regionContent(const BeforeCard& card) {
    std::string text;
    if (const auto lines = card.linesOf(Kind::remember); !lines.empty())
        appendSection(text, Kind::remember, lines);
    appendHeading(text, whoAndWhen);
    text.append(EngineText::paragraph(card.whoAndWhen)) += '\n';
    for (const auto kind : {Kind::youOwe, Kind::theyOwe, Kind::question, Kind::changed}) {
        const auto lines = card.linesOf(kind);
        appendSection(text, kind, lines);
        if (lines.empty()) text.append(kind == Kind::changed ? nothingChanged : none) += '\n';
    }
    appendSection(text, Kind::opener, card.linesOf(Kind::opener));
    text.append("\n").append(closingLine) += '\n';
    return EngineRegion::withoutMarkers(std::move(text));
}

// ---- reading ----------------------------------------------------------------------------------

std::string_view withoutTrailingWhiteSpace(std::string_view text) {
    const auto kept = Text::trimmed(text);
    if (kept.empty()) return {};
    return text.substr(0, static_cast<std::size_t>(kept.data() - text.data()) + kept.size());
}

/// What follows "- " or a number; nothing for another line.
std::optional<std::string_view> itemText(std::string_view line) {
    static const Regex number(R"(^\d+\. )");
    if (line.starts_with(bullet)) return line.substr(bullet.size());
    if (const auto match = number.firstMatch(line)) return line.substr(match->range().end);
    return std::nullopt;
}

/// The white space before a citation is cut out with it.
BeforeCard::Line parseLine(std::string_view item, BeforeCard::Heading heading) {
    static const Regex citation(R"(\[([^\[\]]+?)(?:, (\d{4}-\d{2}-\d{2}))?\])");
    BeforeCard::Line line{.kind = heading.kind, .certainty = heading.certainty};
    if (item.starts_with(BeforeCard::readsAsPrefix)) {
        line.certainty = Certainty::read;
        item.remove_prefix(BeforeCard::readsAsPrefix.size());
    }
    std::string text;
    std::size_t done = 0;
    for (const auto& match : citation.matches(item)) {
        text += withoutTrailingWhiteSpace(item.substr(done, match.range().begin - done));
        line.sources.push_back({.title = std::string(match.group(1, item)),
                                .date = std::string(match.group(2, item))});
        done = match.range().end;
    }
    text += item.substr(done);
    line.text = Text::trimmed(text);
    return line;
}

void readRegion(std::string_view content, BeforeCard& card) {
    std::optional<BeforeCard::Heading> heading;
    bool isWhoAndWhen = false;
    LineCursor lines(content);
    while (const auto given = lines.next()) {
        const auto line = Text::trimmed(*given);
        if (line.starts_with(headingPrefix)) {
            const auto title = Text::trimmed(line.substr(headingPrefix.size()));
            heading = BeforeCard::fromHeading(title);
            isWhoAndWhen = title == whoAndWhen;
        } else if (line.empty() || line == none || line == nothingChanged || line == closingLine) {
            continue;
        } else if (isWhoAndWhen) {
            if (!card.whoAndWhen.empty()) card.whoAndWhen += '\n';
            card.whoAndWhen += line.starts_with(escapedHeading) ? line.substr(1) : line;
        } else if (const auto item = itemText(line); item && heading) {
            auto read = parseLine(*item, *heading);
            if (!read.text.empty()) card.lines.push_back(std::move(read));
        }
    }
}
}  // namespace

std::string fileName(std::string_view date, std::string_view slug) {
    std::string name(date);
    return name.append("-").append(slug).append(".md");
}

std::string slug(std::string_view given) {
    const std::string text = Text::lowercased(given);
    std::string slug;
    Characters::Cursor cursor(text);
    for (std::size_t at = 0; at < text.size();) {
        const std::size_t end = cursor.after(at);
        if (Text::isLetterOrNumber(Utf8::decode(text, at).scalar))
            slug.append(text, at, end - at);
        else if (!slug.ends_with('-'))
            slug += '-';
        at = end;
    }
    slug.resize(Characters::prefix(slug, longestSlug).size());
    if (slug.ends_with('-')) slug.pop_back();
    return slug;
}

std::string render(const BeforeCard& card, std::string_view writer, Instant at,
                   std::int64_t sources, const Calendar& calendar) {
    return EngineRegion::compose(EngineRegion::withoutMarkers(frontmatter(card, calendar)),
                                 EngineRegion::openMarker(writer, at, sources), regionContent(card),
                                 {});
}

std::optional<BeforeCard> parse(std::string_view given, const Calendar& calendar) {
    const std::string text = Text::withLineFeeds(given);
    const auto fields = Frontmatter::Reader::of(text);
    if (!fields || !declares(text)) return std::nullopt;
    auto title = fields->scalar("title");
    const auto forDate = calendar.parseWallClock(fields->scalar("for").value_or(""));
    const auto region = EngineRegion::parse(text);
    if (!title || !forDate || !region) return std::nullopt;

    if (title->starts_with(titlePrefix)) title->erase(0, titlePrefix.size());
    BeforeCard card{.title = std::move(*title),
                    .forDate = *forDate,
                    .people = fields->list("people").value_or(std::vector<std::string>()),
                    .thread = fields->scalar("thread")};
    if (card.thread && card.thread->empty()) card.thread.reset();
    if (auto line = EngineRegion::parseOpenLine(region->openLine)) {
        card.writer = std::move(line->by);
        card.writtenAt = line->at;
    }
    readRegion(region->content, card);
    return card;
}

bool declares(std::string_view text) {
    static const std::string line = "source: " + std::string(source) + "\n";
    return Text::contains(text, line);
}
}  // namespace ombrix::BeforeFile
