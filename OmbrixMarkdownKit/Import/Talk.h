// A text as a conversation, before it is certain that it is one: its lines with who speaks in them.
// Nothing is copied but the title and the day.
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
    bool isInBrackets = false;  ///< the clock
    bool hasColon = false;      ///< after the speaker
    std::string_view line;      ///< all of it, as `readTalk` found it
};

struct Talk {
    std::optional<std::string> title, date;
    std::vector<TalkLine> lines;  ///< from the first that names a speaker
    std::size_t linesBefore = 0;  ///< that tell nothing of the meeting; headings do not count
};

/// The lines of `text`, which has plain line ends. `read` gets each trimmed line that is not empty
/// and says who speaks in it, if that is to be seen there. Headings end a speech, but for a line in
/// the midst of it, with no empty line around it, that only looks like one. Title and day come from
/// front matter, from the first "# " heading and from lines such as "Date:" and "标题：" ahead of
/// the first speech.
Talk readTalk(std::string_view text,
              const std::function<std::optional<TalkLine>(std::string_view)>& read);

/// The talk as a meeting, tags removed. Two people of one name are told apart by their
/// organisations.
ParsedMeeting meetingOf(const Talk& talk);
}  // namespace ombrix::TranscriptImport
