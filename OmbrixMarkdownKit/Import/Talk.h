// A text as a conversation, before it is certain that it is one: its lines with who speaks in them,
// and what they tell for and against. Nothing is copied but the title and the day.
#pragma once

#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "OmbrixMarkdownKit/Import/Clocks.h"
#include "OmbrixMarkdownKit/Import/ParsedMeeting.h"

namespace ombrix::TranscriptImport {

/// Views of the text.
struct TalkLine {
    std::string_view speaker;  ///< empty: goes on with the one before
    std::string_view organisation;
    std::string_view text;
    std::optional<Clock> clock;
};

struct Talk {
    std::optional<std::string> title, date;
    std::vector<TalkLine> lines;  ///< from the first that names a speaker
    std::size_t linesBefore = 0;  ///< that tell nothing of the meeting; headings do not count
};

/// The lines of `text`, which has plain line ends. `read` gets each trimmed line that is not empty
/// and says who speaks in it, if that is to be seen there. Headings end a speech. Title and day
/// come from front matter, from the first "# " heading and from lines such as "Date:" and "标题："
/// ahead of the first speech.
Talk readTalk(std::string_view text,
              const std::function<std::optional<TalkLine>(std::string_view)>& read);

/// The talk as a meeting, tags removed. Two people of one name are told apart by their
/// organisations.
ParsedMeeting meetingOf(const Talk& talk);

/// What speaks for and against a conversation.
struct Voices {
    std::size_t speeches = 0;   ///< lines that name a speaker
    std::size_t names = 0;      ///< different ones
    std::size_t returning = 0;  ///< of these, those that speak more than once
    std::size_t personal = 0;   ///< and those that are somebody's by themselves
    std::size_t caseless = 0;   ///< and those in a script without case, where any word is a name
    std::size_t texts = 0;      ///< lines with text
    std::size_t codeLike = 0;   ///< of these, those with marks of code and logs
    std::size_t sentences = 0;  ///< of these, those that end like a sentence
    bool areRecords = false;    ///< three labels or more come again and again in one order
    bool clocksGoBack = false;
    bool beginsAtZero = false;   ///< its first clock is that of a recording that just began
    bool areClocksRound = true;  ///< as in a schedule, and none in the first five minutes

    bool areAllPersonal() const { return personal == names; }
};
Voices voicesOf(const Talk& talk);
}  // namespace ombrix::TranscriptImport
