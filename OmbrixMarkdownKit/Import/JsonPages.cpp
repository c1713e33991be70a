#include "OmbrixMarkdownKit/Import/JsonPages.h"

#include <algorithm>
#include <array>
#include <iterator>
#include <optional>

#include "OmbrixMarkdownKit/Import/JsonDates.h"
#include "OmbrixMarkdownKit/Import/JsonExport.h"
#include "OmbrixMarkdownKit/Import/JsonFields.h"
#include "OmbrixMarkdownKit/Import/JsonSpeech.h"
#include "OmbrixMarkdownKit/Import/LinkedQuotes.h"
#include "OmbrixMarkdownKit/Import/SpeakerLines.h"
#include "OmbrixPlatform/Text.h"

namespace ombrix::TranscriptImport {
namespace {

using Json::Node;
using Meetings = std::vector<ParsedMeeting>;

constexpr std::string_view entriesKey = "transcriptEntries";
constexpr auto listKeys =
    std::to_array<std::string_view>({"notes", "items", "transcripts", "recordings", "lifelogs"});
constexpr auto singleKeys = std::to_array<std::string_view>({"lifelog", "note", "item"});
/// What holds the above; a list as "data" is one of them.
constexpr auto containerKeys = std::to_array<std::string_view>({"data", "result"});
constexpr int deepestContainer = 3;

bool isPageKey(std::string_view key) {
    const auto among = [&](const auto& keys) { return std::ranges::find(keys, key) != keys.end(); };
    return key == entriesKey || key == "markdown" || among(listKeys) || among(singleKeys) ||
           among(containerKeys) || isSpeechKey(key);
}

/// True when a key of a page is in the head. Goes from quote to quote, since parsing a text a
/// second time would take longer than reading it the first time.
bool hasSign(std::string_view head) {
    for (std::size_t open = head.find('"'); open != head.npos;) {
        const std::size_t close = head.find('"', open + 1);
        if (close == head.npos) return false;
        if (isPageKey(head.substr(open + 1, close - open - 1))) return true;
        open = close;
    }
    return false;
}

void addAll(Meetings& meetings, Meetings more) {
    std::ranges::move(more, std::back_inserter(meetings));
}

std::string_view lastPart(std::string_view path) {
    while (path.ends_with('/')) path.remove_suffix(1);
    return path.substr(path.rfind('/') + 1);
}

/// The meeting of the entries of `page`; the day is that of the first entry that tells one.
Meetings meetingOfEntries(const Node& page) {
    static constexpr auto pageKeys = std::to_array<std::string_view>({entriesKey, "title"});
    static constexpr auto keys = std::to_array<std::string_view>({"participant", "text"});
    const auto [entries, title] = fields(page, pageKeys);
    if (!entries) return {};
    ParsedMeeting meeting{.format = Format::genericJSON};
    if (const auto text = stringIn(title)) meeting.title = *text;
    for (const Node entry : entries->items()) {
        const auto [participant, text] = fields(entry, keys);
        const auto said = stringIn(text);
        if (!said) continue;
        append(meeting.turns, normalizeSpeaker(lastPart(stringIn(participant).value_or(""))),
               *said);
        if (!meeting.date) meeting.date = dateOf(entry);
    }
    if (meeting.turns.empty()) return {};
    return {std::move(meeting)};
}

/// A lifelog whose only text is Markdown with linked quotes.
Meetings lifelogOfMarkdown(const Node& object) {
    static constexpr auto keys = std::to_array<std::string_view>({"title", "markdown"});
    const auto [title, markdown] = fields(object, keys);
    auto meetings = readLinkedQuotes(stringIn(markdown).value_or(""));
    for (auto& meeting : meetings) {
        if (const auto text = stringIn(title); text && meetings.size() == 1) meeting.title = *text;
        if (auto day = dateOf(object)) meeting.date = std::move(day);
    }
    return meetings;
}

Meetings meetingsOfMember(const Node& member) {
    auto meetings = meetingsOfObject(member);
    if (meetings.empty()) meetings = meetingOfEntries(member);
    if (meetings.empty()) meetings = lifelogOfMarkdown(member);
    return meetings;
}

bool namesSpeaker(const ParsedMeeting& meeting) {
    return std::ranges::any_of(meeting.turns,
                               [](const Turn& turn) { return turn.speaker != unknownSpeaker; });
}

Meetings meetingsOfMembers(const Node& list) {
    Meetings meetings;
    bool isTalk = false;
    for (const Node member : list.items()) {
        auto found = meetingsOfMember(member);
        isTalk = isTalk || std::ranges::any_of(found, namesSpeaker) ||
                 (!found.empty() && (member.member("transcript") || member.member("sentences")));
        addAll(meetings, std::move(found));
    }
    if (!isTalk) meetings.clear();
    return meetings;
}

Meetings meetingsOfPage(const Node& page, int depth = 0) {
    if (auto meetings = meetingOfEntries(page); !meetings.empty()) return meetings;
    for (const auto& list : fields(page, listKeys)) {
        if (!list) continue;
        if (auto meetings = meetingsOfMembers(*list); !meetings.empty()) return meetings;
    }
    for (const auto& single : fields(page, singleKeys)) {
        if (!single || !single->isObject()) continue;
        auto meetings = meetingsOfMember(*single);
        if (std::ranges::any_of(meetings, namesSpeaker)) return meetings;
    }
    if (auto meetings = lifelogOfMarkdown(page); !meetings.empty() || depth == deepestContainer)
        return meetings;
    for (const auto& container : fields(page, containerKeys)) {
        if (!container) continue;
        auto meetings = container->isList() ? meetingsOfMembers(*container)
                                            : meetingsOfPage(*container, depth + 1);
        if (!meetings.empty()) return meetings;
    }
    return {};
}

/// A page, or a list of the pages that were asked for one after the other.
Meetings meetingsOf(const Node& root) {
    if (root.isObject()) return meetingsOfPage(root);
    Meetings meetings;
    for (const Node page : root.items()) addAll(meetings, meetingsOfPage(page));
    return meetings;
}

Meetings meetingOfSpeech(const Node& root) {
    auto meeting = speechIn(root);
    return meeting ? Meetings{std::move(*meeting)} : Meetings();
}
}  // namespace

std::vector<ParsedMeeting> readJSONPages(std::string_view text) {
    constexpr std::size_t headSize = 4000;
    if (!beginsLikeJSON(text) || !hasSign(text.substr(0, headSize))) return {};
    try {
        const Json::Document document(text);
        auto meetings = meetingsOf(document.root());
        return meetings.empty() ? meetingOfSpeech(document.root()) : std::move(meetings);
    } catch (const Json::SyntaxError&) {
        return {};
    }
}
}  // namespace ombrix::TranscriptImport
