// Which of a person's recent meetings a window touches, by names and rare words alone: no model, no
// index. A person named in the window's title counts most, one named near the field a little less;
// then the name of a thread or a folder, then the words of a meeting's title. In a small meeting a
// name says more than in a large one, and a meeting of two weeks ago counts half.
#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <map>
#include <optional>
#include <set>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "OmbrixAnswerKit/Ask/AskMeeting.h"
#include "OmbrixAnswerKit/Key/KeyPress.h"

namespace ombrix::KeyMatcher {

inline constexpr std::int64_t lookbackDays = 60;  ///< older meetings are not considered
inline constexpr std::size_t maxCandidates = 4;
inline constexpr double margin = 0.75;  ///< the share of the best score that a candidate must reach
inline constexpr double floor = 1.0;    ///< the least score, before it decays
inline constexpr double halfLifeDays = 14.0;

/// The window as it was read.
struct Surface {
    std::string windowTitle;
    std::string windowText{};  ///< kept for later steps; it picks no meeting
    std::string fieldText{};   ///< picks one only when it is short
    std::string nearText{};    ///< around the field: a line of recipients, a conversation
    bool operator==(const Surface&) const = default;
};

/// What a name or an address is looked for by. All in lower case.
struct Person {
    std::string full;                      ///< the words of the name, joined by blanks
    std::optional<std::string> first{};    ///< when it may stand for the person alone
    std::optional<std::string> initial{};  ///< one character, of a handle such as "jsmith"
    std::optional<std::string> last{};     ///< the rest of that handle
    bool operator==(const Person&) const = default;
};

/// The same for equal persons alone.
std::string keyOf(Person person);

using WordsSet = std::set<std::string, std::less<>>;
using ThreadNames = std::map<std::string, std::string, std::less<>>;  ///< by the meeting's id

/// The user, who is never one of the persons.
struct Me {
    /// From the names the user goes by. "Tomas Reyes" gives the handles "tomas", "tomasreyes" and
    /// "treyes".
    explicit Me(std::span<const std::string> names);

    WordsSet tokens;   ///< all words of all names
    WordsSet handles;  ///< what the user's addresses may begin with
};

/// The meetings of `pool` that the surface touches, at most `maxCandidates`, the best first; ties
/// stay in the order of the pool. None when nothing is named. `today` and the dates are
/// "YYYY-MM-DD"; a meeting whose age cannot be told counts half, one of the future more than one
/// of today. Linear in the pool; never throws.
KeyPress::World world(const Surface& surface, std::span<const AskMeeting> pool,
                      const ThreadNames& threads, const std::string& userName,
                      std::span<const std::string> alsoMe, std::string_view today);

// ---- names --------------------------------------------------------------------------------------

/// The persons among the participants, each once.
std::vector<Person> people(const AskMeeting& meeting, const Me& me, const WordsSet& orgs);

/// The person of a participant: a name ("Ann Ek"), an address, or both ("Ann Ek <ann@ek.se>", of
/// which the name counts). Nothing for labels ("Guest", "Speaker 2"), rooms and groups, names of
/// more than four words or with digits, brackets or single letters, and for the user. `orgs` are
/// companies, which are no first names.
std::optional<Person> person(std::string_view raw, const Me& me, const WordsSet& orgs);

/// The persons in a title that puts names side by side: "Ann / Bo", "Ann x Bo", "lunch with Ann".
std::vector<Person> titleNames(std::string_view title, const Me& me, const WordsSet& orgs);

/// The companies in the addresses of the participants: "lumen" of "ann@mail.lumen.co.uk". Providers
/// of mailboxes are none.
WordsSet orgNames(std::span<const AskMeeting> pool);

// ---- words --------------------------------------------------------------------------------------

/// The words that say nothing of a meeting: common English ones, and those that stand in more
/// titles than one in 25 of the pool, at least in four.
WordsSet plainWords(std::span<const AskMeeting> pool);
/// Those of them for which `matters` is true: quick when it is false of most.
WordsSet plainWords(std::span<const AskMeeting> pool,
                    const std::function<bool(std::string_view word)>& matters);

/// What typed words may pick a meeting by: the words of its title, of the other persons and of the
/// thread's names, those of three characters and more, each once, without `excluding`; then "1:1"
/// when there is one other person.
std::vector<std::string> candidateTerms(const AskMeeting& meeting, std::span<const Person> others,
                                        std::span<const std::string> threadNames,
                                        const WordsSet& excluding);

/// The words of a text; see `KeyWords::of`.
std::vector<std::string> nameTokens(std::string_view text);

/// A number that grows by one a day, from "YYYY-MM-DD"; nothing for any other text and for a day
/// that does not exist.
std::optional<std::int64_t> day(std::string_view text);
}  // namespace ombrix::KeyMatcher
