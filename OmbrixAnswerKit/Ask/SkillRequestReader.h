// Which meetings a skill's request names: "/slack-recap my last 3 Lumen meetings". Reads a time
// phrase, a count, a kind of meeting, a project, a person or a word of a title. It never guesses: a
// word that no meeting on file has is given back, and words that name nothing are ignored.
#pragma once

#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "OmbrixAnswerKit/Ask/AskMeeting.h"
#include "OmbrixAnswerKit/Ask/SkillWords.h"
#include "OmbrixPlatform/Calendar.h"

namespace ombrix::SkillRequestReader {

struct Command {
    std::string command;  ///< lower-case, without the slash
    std::string request;  ///< the rest, trimmed; may be empty
    bool operator==(const Command&) const = default;
};

/// The command that an ask starts with: "/", then letters, numbers and hyphens, then white space or
/// the end. Nothing for any other ask: "/tmp/x" is a path.
std::optional<Command> split(std::string_view ask);

struct Read {
    std::vector<std::string> phrases{};    ///< what named something, as written and each once:
                                           ///< times, then meetings, then projects
    std::vector<std::string> material{};   ///< ids of meetings, newest first
    std::optional<std::string> person{};   ///< the participant named, as a meeting lists them
    std::vector<std::string> unmatched{};  ///< words of names that no meeting has, each once

    /// Of a request that names nothing.
    static const Read none;
    bool operator==(const Read&) const = default;
};

/// Reads a request against the meetings on file, at the clock `now`. Several phrases narrow
/// together (`AnswerScope::merging`), several kinds are alternatives, and a count applies last.
/// When none of the names was found there is no material. `userName` may be empty. Never throws;
/// linear in the request: a piece of more than 200 bytes without white space is no part of a
/// phrase.
Read read(std::string_view request, std::span<const AskMeeting> pool, std::string_view userName,
          Instant now, const Calendar& calendar);
}  // namespace ombrix::SkillRequestReader
