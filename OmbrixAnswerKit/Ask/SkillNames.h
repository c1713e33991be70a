// The names by which a request can mean meetings: their participants, their folders and the words
// of their titles. Names compare word by word, ignoring case, diacritics and the kind of
// apostrophes.
#pragma once

#include <cstddef>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <unordered_map>
#include <unordered_set>
#include <vector>

#include "OmbrixAnswerKit/Ask/AskMeeting.h"
#include "OmbrixMarkdownKit/Search/AnswerScope.h"

namespace ombrix {

class SkillNames {
  public:
    enum class Persons { included, excluded };

    /// The names of `pool`, newest first, which must outlive this object. Linear in it. The user
    /// and labels such as "Speaker 2" are no names.
    SkillNames(std::span<const AskMeeting> pool, std::string_view userName);

    /// What a name, words joined by blanks, narrows to. A participant whose name has these words in
    /// a row, an equal name first, then the newest meeting's; else the folder that is called so;
    /// else the meetings whose titles have all the words. Participant and folder are as listed.
    /// Nothing when there is none. Costs as much as the rarest of the words has occurrences.
    std::optional<AnswerScope> scopeOf(std::string_view name, Persons persons) const;

  private:
    using WordList = std::vector<std::string>;
    /// The indexes at which each word occurs, ascending.
    using Index = std::unordered_map<std::string, std::vector<std::size_t>>;
    struct Person {
        std::string listed;
        WordList words;
    };

    void addPersons(const AskMeeting& meeting, std::string_view userName);
    void addFolder(const AskMeeting& meeting);
    std::optional<std::string> person(const WordList& words) const;
    std::optional<AnswerScope::IDs> titled(std::string_view folded) const;

    std::span<const AskMeeting> pool_;
    std::vector<Person> persons_;
    std::unordered_set<std::string> seen_, folds_;  // of participants
    Index personsByWord_, titlesByWord_;
    std::unordered_map<std::string, std::string> folders_;  // as listed, by their fold
};
}  // namespace ombrix
