// What a press of the key does: which kind of press it is, which meeting it rests on, what text
// lands where, what the mark on the screen says and which source is shown. Decided from the field
// and from the meetings that the window touches; reads no screen, calls no model, writes nothing.
//
//   plan -> (ambiguous: the person chooses, resolveAsked) -> drafts from a model -> landing -> undo
//
// Offsets into the field are UTF-16 units. A selection is taken as it is meant: its ends lie in the
// text, the lesser first, and an end inside a surrogate pair is at the start of that scalar.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "OmbrixPlatform/EnumNames.h"
#include "OmbrixPlatform/JsonDecoding.h"

namespace ombrix::KeyPress {

/// A text with fewer units is short: an instruction, and worth searching for names. A longer one is
/// the person's own draft.
inline constexpr std::size_t longTextUnits = 141;

/// True when `text` has fewer than `longTextUnits` units.
bool isShort(std::string_view text);

// ---- what a press starts from -----------------------------------------------------------------

/// A meeting that a press may rest on.
struct MeetingCandidate {
    std::string id;
    std::string title;
    std::string date;                ///< "yyyy-MM-dd"
    std::vector<std::string> terms;  ///< words that pick this meeting when they are typed
    bool operator==(const MeetingCandidate&) const = default;
};

/// Under the field names.
Json::Value encode(const MeetingCandidate& candidate);
MeetingCandidate decode(Json::As<MeetingCandidate>, const Json::Object& in);

/// The meetings that the window touches, the best first.
struct World {
    std::vector<MeetingCandidate> candidates;
    bool operator==(const World&) const = default;
};

/// A field as it is at one moment.
struct FieldSnapshot {
    std::string text;
    std::int64_t selStart = 0;  ///< any number; see above
    std::int64_t selEnd = 0;
    bool operator==(const FieldSnapshot&) const = default;
};
/// The field at the moment of the press.
using Press = FieldSnapshot;

/// Under the field names.
Json::Value encode(const FieldSnapshot& field);
FieldSnapshot decode(Json::As<FieldSnapshot>, const Json::Object& in);

// ---- what it becomes --------------------------------------------------------------------------

enum class Kind {
    empty,        ///< an empty field: write what fits
    instruction,  ///< a short text that says what to write
    selection,    ///< rewrite what is selected
    skill,        ///< "/name request"
    ambiguous,    ///< two or more meetings fit: ask which
    guess,        ///< no meeting fits: go from what the window shows
    unchanged,    ///< a long text, which stays as it is
};

constexpr auto rawValues(Kind) {  // the log of presses holds these
    using enum Kind;
    return EnumNames::table<Kind>({{empty, "empty"},
                                   {instruction, "instruction"},
                                   {selection, "selection"},
                                   {skill, "skill"},
                                   {ambiguous, "ambiguous"},
                                   {guess, "guess"},
                                   {unchanged, "unchanged"}});
}

struct Plan {
    Kind kind = Kind::empty;
    std::optional<std::string> skill{};    ///< in lower case; of a skill press
    std::optional<std::string> request{};  ///< what followed the skill's name, perhaps nothing
    std::optional<MeetingCandidate> matched{};
    std::optional<std::vector<MeetingCandidate>> choices{};  ///< of an ambiguous press
    std::optional<Kind> asked{};            ///< what an ambiguous press becomes by a choice
    std::optional<std::string> lookedAt{};  ///< what a guess is made from
    bool operator==(const Plan&) const = default;
};

/// What a press of this field does. Never throws; linear in the field.
Plan plan(const World& world, const Press& press);

/// The plan of an ambiguous press after the person chose; any other plan as it was.
Plan resolveAsked(const Plan& plan, const MeetingCandidate& chosen);

/// The plan when the person takes a meeting from a list, without a press: for the selection, else
/// for the text as an instruction or a draft, else for the empty field.
Plan pulled(const MeetingCandidate& chosen, const Press& press);

// ---- landing ----------------------------------------------------------------------------------

/// What the models wrote for a press.
struct Drafts {
    std::string draft;
    std::string selection;
    std::string skill;
    std::optional<std::string> guess{};

    /// One text for every use.
    static Drafts single(const std::string& text) { return {text, text, text, text}; }
    bool operator==(const Drafts&) const = default;
};

/// The field after a landing.
struct Landing {
    std::string text;
    std::int64_t selStart = 0;
    std::int64_t selEnd = 0;
    bool operator==(const Landing&) const = default;
};

/// Half open, in UTF-16 units.
struct Range {
    std::int64_t start = 0;
    std::int64_t end = 0;
    bool operator==(const Range&) const = default;
};

/// What the field becomes. Nothing for an ambiguous or unchanged press, and for a guess when a part
/// of the field is selected (the guess was made from the selection, not for it) or there is no
/// guess. A rewritten selection stays selected; otherwise the caret is at the end.
std::optional<Landing> landing(const Plan& plan, const FieldSnapshot& before, const Drafts& drafts);

/// What of the old text a landing replaces: the selection or all of it.
std::optional<Range> replacedRange(const Plan& plan, const FieldSnapshot& before);

/// The field to go back to; nothing for a press that changes nothing.
std::optional<FieldSnapshot> undo(const Plan& plan, const FieldSnapshot& before);

// ---- what is shown ----------------------------------------------------------------------------

/// The steps that the mark on the screen tells.
enum class MarkPhase { looking, reading, guess, almost, writing, asked };

constexpr auto rawValues(MarkPhase) {
    using enum MarkPhase;
    return EnumNames::table<MarkPhase>({{looking, "looking"},
                                        {reading, "reading"},
                                        {guess, "guess"},
                                        {almost, "almost"},
                                        {writing, "writing"},
                                        {asked, "asked"}});
}

std::vector<MarkPhase> markPhases(const Plan& plan);
/// What the mark says in a phase: "reading the meeting".
std::string_view markLabel(MarkPhase phase);

inline constexpr std::string_view bestGuess = "Here's my best guess";

/// What a landed text rests on: a meeting, or a guess.
struct SourceLine {
    std::optional<std::string> meetingID;  ///< nothing for a guess
    std::string label;                     ///< "Pricing workshop, Jun 18"
    bool operator==(const SourceLine&) const = default;
};

/// Nothing for a press that rests on no meeting and is no guess, or that changes nothing. The name
/// of the meeting's thread comes before its title unless the title begins with it.
std::optional<SourceLine> source(const Plan& plan, const std::optional<std::string>& threadName);

/// "Jun 18" for "2026-06-18"; a text that is no date as it is.
std::string formatDate(std::string_view date);

// ---- parts ------------------------------------------------------------------------------------

/// True when a key going down at `now` seconds is the second tap of a double tap, whose first was
/// at `last`: the right Command key, not repeating, at most 0.3 seconds later.
bool isDoubleTap(bool isRightCommand, bool isRepeat, std::optional<double> last, double now);

struct SkillText {
    std::string skill;                     ///< in lower case
    std::optional<std::string> request{};  ///< as it stands; nothing without white space before it
    bool operator==(const SkillText&) const = default;
};

/// The skill and the request of "/name request"; nothing for any other text, "/ name" among them.
std::optional<SkillText> skillText(std::string_view text);

/// What stands after the slash while a skill's name is being typed ("/ema"), in lower case and
/// perhaps empty; nothing for any other text.
std::optional<std::string> slashQuery(std::string_view text);

/// The units from `start` to `end`, both clamped into the text; empty when they are not in order.
std::string slice(std::string_view text, std::int64_t start, std::int64_t end);
}  // namespace ombrix::KeyPress
