// The engine's part of a Markdown file that it shares with a person:
//
//   <!-- ombrix:engine v1 by="Claude Sonnet 4.5" at="2026-09-01T14:03:22Z" sources="4" -->
//   what the engine wrote
//   <!-- /ombrix:engine -->
//
// The engine owns the text between the two markers. The rest is the person's and comes back as it
// was, save that CR LF becomes LF. A file with two open markers, no close marker or a mangled one
// belongs to nobody: nothing here gives a new text for it.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "OmbrixPlatform/Calendar.h"

namespace ombrix::EngineRegion {

/// How an open marker begins, its blank included.
constexpr std::string_view openPrefix = "<!-- ombrix:engine v1 ";
constexpr std::string_view closeMarker = "<!-- /ombrix:engine -->";

/// A marker that somebody quoted would end the region, and the file could not be read any more. So
/// the "<" of each comment whose name begins with "ombrix:" becomes "&lt;", which Markdown shows as
/// "<".
std::string withoutMarkers(std::string text);

/// A text as the value of a marker's attribute: line ends become blanks and double quotes single
/// ones, and it is written without markers.
std::string attributeValue(std::string_view text);

/// The open line, without a line feed, with the `attributeValue` of `by`. `sources` is how many
/// sources the text rests on.
std::string openMarker(std::string_view by, Instant at, std::int64_t sources);

struct OpenLine {
    std::string by;
    std::optional<Instant> at{};  ///< nothing when it is missing or not an instant
    std::int64_t sources = 0;     ///< 0 when it is missing or no integer
    bool operator==(const OpenLine&) const = default;
};
/// The attributes of an open line; nothing without `by`.
std::optional<OpenLine> parseOpenLine(std::string_view line);

/// A file cut at its markers. All pieces have LF line ends.
struct Parsed {
    std::string openLine;       ///< without its line feed
    std::string content;        ///< after that line feed, up to the close marker; may be empty
    std::string before, after;  ///< the person's; `after` starts right after the close marker
    bool operator==(const Parsed&) const = default;
};
/// Nothing unless `text` holds exactly one open marker, on a line that ends in "-->", and exactly
/// one close marker, after that line. Never throws; linear in the bytes of `text`.
std::optional<Parsed> parse(std::string_view text);

/// A new file: the frontmatter, the region and the person's text, each on new lines. Lacking a line
/// feed at its end, `content` gets one.
std::string compose(std::string_view frontmatter, std::string_view openLine,
                    std::string_view content, std::string_view humanTail);
/// The file with another region in place of its own; nothing when `parse` gives nothing.
std::optional<std::string> replace(std::string_view in, std::string_view openLine,
                                   std::string_view content);
}  // namespace ombrix::EngineRegion
