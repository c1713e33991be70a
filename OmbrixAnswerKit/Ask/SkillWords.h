// The words that skill requests are made of: kinds of meetings, counts, articles, possessives, and
// what the records of meetings say in words.
#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "OmbrixAnswerKit/Ask/AskMeeting.h"

namespace ombrix::SkillRequestReader {

struct KindRow {
    std::string_view spelling, kind;
};

/// The kinds of meetings by their spellings. A form that another one begins with stands before it.
/// A plural ends in "s", a singular does not.
inline constexpr auto kindTable = std::to_array<KindRow>({
    {"1:1s", "1:1"},
    {"1:1", "1:1"},
    {"1-on-1s", "1:1"},
    {"1-on-1", "1:1"},
    {"one-on-ones", "1:1"},
    {"one-on-one", "1:1"},
    {"check-ins", "check-in"},
    {"check-in", "check-in"},
    {"reviews", "review"},
    {"review", "review"},
    {"crits", "crit"},
    {"crit", "crit"},
    {"brainstorms", "brainstorm"},
    {"brainstorm", "brainstorm"},
    {"standups", "standup"},
    {"standup", "standup"},
    {"weeklies", "weekly"},
    {"weekly", "weekly"},
    {"kickoffs", "kickoff"},
    {"kickoff", "kickoff"},
    {"walkthroughs", "walkthrough"},
    {"walkthrough", "walkthrough"},
    {"workshops", "workshop"},
    {"workshop", "workshop"},
    {"retros", "retro"},
    {"retro", "retro"},
    {"demos", "demo"},
    {"demo", "demo"},
    {"interviews", "interview"},
    {"interview", "interview"},
    {"intros", "intro"},
    {"intro", "intro"},
    {"audits", "audit"},
    {"audit", "audit"},
    {"visits", "visit"},
    {"visit", "visit"},
    {"planning", "planning"},
});

/// The kind that a spelling means, ignoring case; nothing for another word.
std::optional<std::string_view> kindOf(std::string_view spelling);

/// True when a word of the title begins with a spelling of the kind: "Design reviews" holds
/// "review", "Preview" does not. A meeting with exactly one other participant is a "1:1" too.
bool isKind(std::string_view kind, std::string_view userName, const AskMeeting& meeting);

/// The words of the title, lower-case.
std::vector<std::string> titleWords(const AskMeeting& meeting);

/// The participants without the user, who goes by the name, its first word, "me" or "you". A blank
/// name is nobody.
std::vector<std::string> others(std::span<const std::string> participants,
                                std::string_view userName);

/// True for a label that tells nothing of who it is: "them", "Speaker 2", "guest".
bool isGenericLabel(std::string_view participant);

/// The value of ASCII digits, or of a word from "one" to "ten" ignoring case. Nothing for any other
/// text, and for more than fits.
std::optional<std::int64_t> number(std::string_view text);

/// Without a final "'s", straight or curly.
std::string_view dropPossessive(std::string_view text);

/// True when the first word is "my", "the", "our" or "all", ignoring case.
bool startsWithArticle(std::string_view text);

/// True for a word that says nothing of which meetings are meant: "of", "about", "recent".
bool isQuiet(std::string_view word);

/// "A", "A or B", "A, B or C"; empty without words.
std::string orList(std::span<const std::string> words);
}  // namespace ombrix::SkillRequestReader
