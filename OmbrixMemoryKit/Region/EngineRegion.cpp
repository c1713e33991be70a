#include "OmbrixMemoryKit/Region/EngineRegion.h"

#include <algorithm>
#include <cstddef>
#include <utility>

#include "OmbrixMemoryKit/Region/EngineText.h"
#include "OmbrixMemoryKit/Region/MarkerAttributes.h"
#include "OmbrixPlatform/Numbers.h"
#include "OmbrixPlatform/Text.h"

namespace ombrix::EngineRegion {
namespace {

/// Where `part` is in `text`; nothing unless it is there exactly once.
std::optional<std::size_t> onlyPlace(std::string_view text, std::string_view part) {
    const auto place = text.find(part);
    if (place == text.npos || text.find(part, place + part.size()) != text.npos)
        return std::nullopt;
    return place;
}

void appendRegion(std::string& text, std::string_view openLine, std::string_view content) {
    text += openLine;
    text += '\n';
    text += content;
    if (!content.ends_with('\n')) text += '\n';
    text += closeMarker;
}
}  // namespace

std::string withoutMarkers(std::string text) {
    for (const std::string beginning : {"!-- ombrix:", "!-- /ombrix:"})
        text = Text::replacingAll(text, "<" + beginning, "&lt;" + beginning);
    return text;
}

std::string attributeValue(std::string_view text) {
    std::string value = EngineText::onOneLine(text);
    std::ranges::replace(value, '"', '\'');
    return withoutMarkers(std::move(value));
}

std::string openMarker(std::string_view by, Instant at, std::int64_t sources) {
    std::string line(openPrefix);
    line.append("by=\"").append(attributeValue(by)) += "\" at=\"";
    line.append(isoInstant(at)).append("\" sources=\"").append(std::to_string(sources));
    return line += "\" -->";
}

std::optional<OpenLine> parseOpenLine(std::string_view line) {
    const MarkerAttributes attributes(line);
    const auto by = attributes.text("by");
    if (!by) return std::nullopt;
    const auto sources = attributes.text("sources").value_or("");
    return OpenLine{.by = std::string(*by),
                    .at = attributes.instant("at"),
                    .sources = Numbers::parseInteger<std::int64_t>(sources).value_or(0)};
}

std::optional<Parsed> parse(std::string_view given) {
    const std::string normalised = Text::withLineFeeds(given);
    const std::string_view text = normalised;
    const auto open = onlyPlace(text, openPrefix);
    const auto close = onlyPlace(text, closeMarker);
    if (!open || !close) return std::nullopt;
    const auto openEnd = text.find('\n', *open + openPrefix.size());
    if (openEnd == text.npos || *close <= openEnd) return std::nullopt;
    const auto openLine = text.substr(*open, openEnd - *open);
    if (!openLine.ends_with("-->")) return std::nullopt;
    return Parsed{.openLine = std::string(openLine),
                  .content = std::string(text.substr(openEnd + 1, *close - openEnd - 1)),
                  .before = std::string(text.substr(0, *open)),
                  .after = std::string(text.substr(*close + closeMarker.size()))};
}

std::string compose(std::string_view frontmatter, std::string_view openLine,
                    std::string_view content, std::string_view humanTail) {
    std::string text(frontmatter);
    text += '\n';
    appendRegion(text, openLine, content);
    text += '\n';
    text += humanTail;
    return text;
}

std::optional<std::string> replace(std::string_view in, std::string_view openLine,
                                   std::string_view content) {
    auto parsed = parse(in);
    if (!parsed) return std::nullopt;
    std::string text = std::move(parsed->before);
    appendRegion(text, openLine, content);
    text += parsed->after;
    return text;
}
}  // namespace ombrix::EngineRegion
