#include "OmbrixMarkdownKit/Import/AnyExport.h"

#include <algorithm>
#include <cstring>

#include "OmbrixMarkdownKit/Import/JsonPages.h"
#include "OmbrixMarkdownKit/Import/LabelledTalk.h"
#include "OmbrixMarkdownKit/Import/LinkedQuotes.h"
#include "OmbrixMarkdownKit/Import/MarkdownReader.h"
#include "OmbrixMarkdownKit/Import/SheetOfTurns.h"
#include "OmbrixMarkdownKit/Import/TimedTalk.h"
#include "OmbrixPlatform/LineCursor.h"
#include "OmbrixPlatform/Text.h"
#include "OmbrixPlatform/Utf8.h"

namespace ombrix::TranscriptImport {
namespace {

using Reference = std::optional<std::string>;

/// In bytes. A sign stands in it, or there is none.
constexpr std::size_t headSize = 4000;
constexpr std::string_view commentOpen = "<!--", commentClose = "-->";
/// In the files that the memory engine writes for the person.
constexpr std::string_view engineMark = "<!-- ombrix:";

struct Signs {
    TimedSigns timed;
    bool hasLabels = false, hasCaselessNames = false;
};

std::string_view linesOfHead(std::string_view text) {
    const auto head = text.substr(0, headSize);
    return head.size() < text.size() ? head.substr(0, head.rfind('\n')) : head;
}

/// One pass over the beginning, which nearly always finds nothing.
Signs signsOf(std::string_view text) {
    Signs signs;
    const auto head = linesOfHead(text);
    const bool isAscii = Utf8::isAscii(head), mayBeTimed = mayHoldClock(head);
    LineCursor lines(head);
    while (const auto next = lines.next()) {
        if (mayBeTimed) signs.timed.look(Text::trimmed(*next));
        if (!signs.hasLabels) signs.hasLabels = hasSpeakerLabel(*next);
        if (!isAscii && !signs.hasCaselessNames)
            signs.hasCaselessNames = hasCaselessSpeaker(Text::trimmed(*next));
    }
    return signs;
}

bool holds(std::string_view text, std::string_view part) {  // faster than string_view's find
    return !text.empty() && ::memmem(text.data(), text.size(), part.data(), part.size());
}

/// True when there is an arrow where subtitles are told from other texts: in 4,000 characters.
bool holdsArrow(std::string_view text) {
    constexpr std::size_t bytesACharacter = 3;  // in most scripts at most
    const bool isAscii = Utf8::isAscii(text.substr(0, headSize));
    return holds(text.substr(0, isAscii ? headSize : headSize * bytesACharacter), commentClose);
}

Export exportOf(ParsedMeeting meeting, std::string_view text) {
    const Format format = meeting.format ? *meeting.format : markdownFormat(headOf(text));
    Export found{.format = format};
    found.meetings.push_back(std::move(meeting));
    return found;
}

/// Talk with clocks, labels or names of other scripts.
std::optional<Export> readTalkText(std::string_view text, const Reference& reference) {
    const Signs signs = signsOf(text);
    for (const TimedForm form : signs.timed.forms())
        if (auto meeting = readTimedTalk(text, form, reference))
            return exportOf(std::move(*meeting), text);
    if (signs.timed.isClockBelowName())
        if (auto meeting = readClocksBelowNames(text)) return exportOf(std::move(*meeting), text);
    if (signs.hasLabels)
        if (auto meeting = readSpeakerLabels(text)) return exportOf(std::move(*meeting), text);
    if (signs.hasCaselessNames)
        if (auto meeting = readCaselessSpeakers(text)) return exportOf(std::move(*meeting), text);
    return std::nullopt;
}

std::string withoutComments(std::string_view text) {
    std::string plain;
    while (true) {
        const std::size_t open = text.find(commentOpen);
        const std::size_t close = open == text.npos ? open : text.find(commentClose, open);
        plain.append(text.substr(0, close == text.npos ? text.npos : open));
        if (close == text.npos) break;
        text.remove_prefix(close + commentClose.size());
    }
    return plain.erase(0, std::min(plain.find_first_not_of(" \t\n"), plain.size()));
}

std::size_t turnCount(const Export& found) {
    std::size_t count = 0;
    for (const auto& meeting : found.meetings) count += meeting.turns.size();
    return count;
}

/// A text that was taken for subtitles because of an arrow, in a comment or in what somebody says.
std::optional<Export> readWithoutArrows(std::string_view text, const Reference& reference) {
    if (holds(text, engineMark)) return std::nullopt;
    const std::string plain = withoutComments(text);
    auto talk = readTalkText(plain, reference);
    if (!talk && !isPlainTalk(plain)) return std::nullopt;
    if (!holdsArrow(plain)) {
        auto known = readExport(plain);
        if (known && turnCount(*known) >= (talk ? turnCount(*talk) : 1)) return known;
    }
    if (talk) return talk;
    auto meeting = readMarkdown(plain);
    if (meeting.turns.empty()) return std::nullopt;
    return exportOf(std::move(meeting), plain);
}

std::optional<Export> readFurther(std::string_view text, const Reference& reference) {
    if (auto meetings = readJSONPages(text); !meetings.empty()) {
        const Format format = meetings.front().format.value_or(Format::genericJSON);
        return Export{format, std::move(meetings)};
    }
    if (auto meetings = readLinkedQuotes(text); !meetings.empty())
        return Export{Format::limitlessMarkdown, std::move(meetings)};
    if (auto meeting = readSheetOfTurns(text)) return exportOf(std::move(*meeting), text);
    if (holdsArrow(text)) return readWithoutArrows(text, reference);
    return readTalkText(text, reference);
}
}  // namespace

std::optional<Export> readAnyExport(std::string_view text, const Reference& reference) {
    auto found = readExport(text);
    if (found && !found->meetings.empty()) return found;
    auto further = readFurther(text, reference);
    return further ? further : found;
}
}  // namespace ombrix::TranscriptImport
