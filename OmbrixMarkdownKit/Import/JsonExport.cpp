#include "OmbrixMarkdownKit/Import/JsonExport.h"

#include <algorithm>

#include "OmbrixMarkdownKit/Import/JsonDates.h"
#include "OmbrixMarkdownKit/Import/JsonFields.h"
#include "OmbrixMarkdownKit/Import/LifelogReader.h"
#include "OmbrixMarkdownKit/Import/SegmentSpeaker.h"
#include "OmbrixPlatform/Text.h"

namespace ombrix::TranscriptImport {
namespace {

using Json::Node;

constexpr auto segmentKeys = std::to_array<std::string_view>(
    {"transcript", "sentences", "segments", "utterances", "turns", "messages"});
constexpr auto containerKeys =
    std::to_array<std::string_view>({"data", "transcript", "result", "meeting", "recording"});
/// How far below an object its segments are looked for.
constexpr int deepestContainer = 3;

struct Segments {
    Node list;       ///< what is in it but is no object is no segment
    Node container;  ///< holds the list, and the title and the date
};

bool holdsObject(const Node& list) {
    for (const Node item : list.items())
        if (item.isObject()) return true;
    return false;
}

bool isListOfObjects(const Node& node) {
    if (!node.isList()) return false;
    for (const Node item : node.items())
        if (!item.isObject()) return false;
    return true;
}

std::optional<Segments> segmentsIn(const Node& object, int depth = 0) {
    for (const auto& list : fields(object, segmentKeys))
        if (list && holdsObject(*list)) return Segments{*list, object};
    if (depth == deepestContainer) return std::nullopt;
    for (const auto& container : fields(object, containerKeys)) {
        if (!container) continue;
        if (const auto found = segmentsIn(*container, depth + 1)) return found;
    }
    return std::nullopt;
}

/// Nothing when no segment has text.
std::optional<ParsedMeeting> meetingOf(const Node& segments) {
    static constexpr std::size_t textKeys = 3;
    static constexpr auto keys = std::to_array<std::string_view>(
        {"text", "content", "raw_text", "speaker_name", "speaker", "source", "timestamp"});
    ParsedMeeting meeting;
    for (const Node segment : segments.items()) {
        const auto found = fields(segment, keys);
        const auto text =
            Text::trimmed(firstString(std::span(found).first<textKeys>()).value_or(""));
        if (text.empty()) continue;
        const auto speaker = speakerOf({found[3], found[4], found[5], found[6]});
        if (!meeting.format) meeting.format = speaker.format;
        append(meeting.turns, speaker.name.value_or(unknownSpeaker), text);
    }
    if (meeting.turns.empty()) return std::nullopt;
    if (!meeting.format) meeting.format = Format::genericJSON;
    return meeting;
}

/// The meeting whose segments are somewhere in `object`.
std::optional<ParsedMeeting> meetingIn(const Node& object) {
    static constexpr auto titleKeys =
        std::to_array<std::string_view>({"title", "name", "meeting_title"});
    const auto segments = segmentsIn(object);
    if (!segments) return std::nullopt;
    auto meeting = meetingOf(segments->list);
    if (!meeting) return std::nullopt;
    if (const auto title = firstString(fields(segments->container, titleKeys)))
        meeting->title = *title;
    meeting->date = dateOf(segments->container);
    return meeting;
}

void addIfSpoken(std::vector<ParsedMeeting>& meetings, std::optional<ParsedMeeting> meeting) {
    if (meeting && !meeting->turns.empty()) meetings.push_back(std::move(*meeting));
}

std::vector<ParsedMeeting> lifelogsIn(const Node& list) {
    std::vector<ParsedMeeting> meetings;
    for (const Node lifelog : list.items()) addIfSpoken(meetings, readLifelog(lifelog));
    return meetings;
}

/// The list "lifelogs" of a page, alone or under "data".
std::optional<Node> lifelogPage(const Node& object) {
    if (const auto data = object.member("data")) {
        if (const auto list = data->member("lifelogs"); list && isListOfObjects(*list)) return list;
    }
    const auto list = object.member("lifelogs");
    return list && isListOfObjects(*list) ? list : std::nullopt;
}

/// Lifelogs, meetings or the segments of one meeting; the first element tells lifelogs, since only
/// they have all three keys.
std::vector<ParsedMeeting> meetingsOfList(const Node& list) {
    if (!isListOfObjects(list)) return {};
    std::vector<ParsedMeeting> meetings;
    for (const Node first : list.items()) {
        if (first.member("contents") && first.member("markdown") && first.member("startTime"))
            return lifelogsIn(list);
        break;
    }
    for (const Node element : list.items()) addIfSpoken(meetings, meetingIn(element));
    if (meetings.empty()) addIfSpoken(meetings, meetingOf(list));
    if (!meetings.empty()) return meetings;
    for (const Node element : list.items())
        if (isLifelog(element)) addIfSpoken(meetings, readLifelog(element));
    return meetings;
}
}  // namespace

std::vector<ParsedMeeting> meetingsOfObject(const Node& object) {
    if (const auto page = lifelogPage(object)) return lifelogsIn(*page);
    std::vector<ParsedMeeting> meetings;
    addIfSpoken(meetings, isLifelog(object) ? readLifelog(object) : meetingIn(object));
    return meetings;
}

std::vector<ParsedMeeting> parseJSONExport(std::string_view text) {
    try {
        const Json::Document document(text);
        const Node root = document.root();
        return root.isObject() ? meetingsOfObject(root) : meetingsOfList(root);
    } catch (const Json::SyntaxError&) {
        return {};
    }
}

bool beginsLikeJSON(std::string_view text) {
    text = Text::trimmed(text);
    return text.starts_with('{') || text.starts_with('[');
}

bool looksLikeTranscriptJSON(std::string_view text) {
    return beginsLikeJSON(text) && !parseJSONExport(text).empty();
}
}  // namespace ombrix::TranscriptImport
