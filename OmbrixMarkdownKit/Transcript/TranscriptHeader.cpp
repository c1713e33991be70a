#include "OmbrixMarkdownKit/Transcript/TranscriptHeader.h"

#include <array>

#include "OmbrixPlatform/LineCursor.h"
#include "OmbrixPlatform/Numbers.h"
#include "OmbrixPlatform/Text.h"

namespace ombrix::TranscriptHeader {
namespace {

/// A value in double quotes loses them, and each \" in it becomes a plain quote; there is no other
/// escape. Any other value stays as it is.
std::string unquoted(std::string_view value) {
    if (value.size() < 2 || !value.starts_with('"') || !value.ends_with('"'))
        return std::string(value);
    return Text::replacingAll(value.substr(1, value.size() - 2), "\\\"", "\"");
}

using Document = TranscriptDocument;
using Read = void (*)(Document&, std::string_view);

template <std::string Document::*field>
void plain(Document& document, std::string_view value) {
    document.*field = value;
}
template <std::string Document::*field>
void quoted(Document& document, std::string_view value) {
    document.*field = unquoted(value);
}

void readDuration(Document& document, std::string_view value) {
    document.durationMin =
        Numbers::parseInteger<std::int64_t>(value).value_or(document.durationMin);
}

void readPrivate(Document& document, std::string_view value) {
    const std::string flag = Text::lowercased(unquoted(value));
    document.isPrivate = flag == "true" || flag == "yes" || flag == "1";
}

void readPendingOffset(Document& document, std::string_view value) {
    document.hasPendingOffset = true;
    document.pendingOffsetSeconds =
        Numbers::parseDouble(value).value_or(document.pendingOffsetSeconds);
}

struct ScalarKey {
    std::string_view name;
    Read read;
};

constexpr std::array<ScalarKey, 15> scalarKeys = {{
    {"title", quoted<&Document::title>},
    {"started_at", plain<&Document::startedAt>},
    {"date", plain<&Document::date>},
    {"duration_min", readDuration},
    {"source_app", quoted<&Document::sourceApp>},
    {"source", plain<&Document::source>},
    {"asr_summary", quoted<&Document::asrSummary>},
    {"asr", plain<&Document::asr>},
    {"status", plain<&Document::status>},
    {"private", readPrivate},
    {"calendar_event_id", quoted<&Document::calendarEventID>},
    {"spend_id", quoted<&Document::spendID>},
    {"pending_offset", readPendingOffset},
    {"pending_reason", quoted<&Document::pendingReason>},
    {"topic_hint", quoted<&Document::topicHint>},
}};

/// False when `name` is none of the keys.
bool readScalar(std::string_view name, std::string_view value, Document& document) {
    const auto key = std::ranges::find(scalarKeys, name, &ScalarKey::name);
    if (key == scalarKeys.end()) return false;
    key->read(document, value);
    return true;
}

/// tags: [a, "b c"] or tags: solo
void readInlineTags(std::string_view value, std::vector<std::string>& tags) {
    const auto add = [&](std::string_view piece) {
        if (auto tag = unquoted(piece); !tag.empty()) tags.push_back(std::move(tag));
    };
    if (!value.starts_with('[') || !value.ends_with(']') || value.size() < 2) return add(value);
    for (const auto piece : Text::split(value.substr(1, value.size() - 2), ","))
        add(Text::trimmedSpacesAndTabs(piece));
}

enum class List { none, participants, pendingAudio, tags };

void readItem(List list, std::string_view item, Document& document) {
    item = Text::trimmedSpacesAndTabs(item);
    if (list == List::participants) document.participants.emplace_back(item);
    if (list == List::pendingAudio) document.pendingAudioPaths.push_back(unquoted(item));
    if (list == List::tags) {
        if (auto tag = unquoted(item); !tag.empty()) document.tags.push_back(std::move(tag));
    }
}

/// Reads a line that is no item of the list before it; returns the list that it opens.
List readKey(std::string_view line, Document& document) {
    const std::size_t colon = line.find(':');
    if (colon == std::string_view::npos) return List::none;
    const auto name = line.substr(0, colon);
    const auto value = Text::trimmedSpacesAndTabs(line.substr(colon + 1));
    if (readScalar(name, value, document)) return List::none;
    if (name == "participants") {
        constexpr std::size_t few = 4;
        document.participants.reserve(few);
        return List::participants;
    }
    if (name == "pending_audio") return List::pendingAudio;
    if (name != "tags") return List::none;
    if (value.empty()) return List::tags;
    readInlineTags(value, document.tags);
    return List::none;
}
}  // namespace

void read(std::string_view header, TranscriptDocument& document) {
    constexpr std::string_view itemStart = "  - ";
    List list = List::none;
    LineCursor lines(header);
    while (const auto line = lines.next()) {
        if (list != List::none && line->starts_with(itemStart))
            readItem(list, line->substr(itemStart.size()), document);
        else
            list = readKey(*line, document);
    }
}
}  // namespace ombrix::TranscriptHeader
