#include "OmbrixAnswerKit/Ask/SkillNames.h"

#include <algorithm>

#include "OmbrixAnswerKit/Ask/SkillWords.h"
#include "OmbrixPlatform/Characters.h"
#include "OmbrixPlatform/Paths.h"
#include "OmbrixPlatform/Text.h"
#include "OmbrixPlatform/Words.h"

namespace ombrix {
namespace {

std::string foldedName(std::string_view name) {
    return Text::folded(Text::withStraightApostrophes(name));
}

std::vector<std::string> wordsAtBlanks(std::string_view text) {
    std::vector<std::string> words;
    for (const auto word : Characters::splitAtWhiteSpace(text)) words.emplace_back(word);
    return words;
}

/// Adds `place` under each of the words, once.
template <typename Index>
void addToIndex(Index& index, const std::vector<std::string>& words, std::size_t place) {
    for (const std::string& word : words) {
        auto& places = index[word];
        if (places.empty() || places.back() != place) places.push_back(place);
    }
}

/// The places of the word with the fewest; nothing when a word has none.
template <typename Index>
const std::vector<std::size_t>* rarest(const Index& index, const std::vector<std::string>& words) {
    const std::vector<std::size_t>* fewest = nullptr;
    for (const std::string& word : words) {
        const auto found = index.find(word);
        if (found == index.end()) return nullptr;
        if (!fewest || found->second.size() < fewest->size()) fewest = &found->second;
    }
    return fewest;
}
}  // namespace

SkillNames::SkillNames(std::span<const AskMeeting> pool, std::string_view userName) : pool_(pool) {
    for (std::size_t i = 0; i < pool.size(); ++i) {
        addPersons(pool[i], userName);
        addFolder(pool[i]);
        WordList words;
        for (const auto& word : SkillRequestReader::titleWords(pool[i]))
            words.push_back(foldedName(word));
        addToIndex(titlesByWord_, words, i);
    }
}

void SkillNames::addPersons(const AskMeeting& meeting, std::string_view userName) {
    std::vector<std::string> unseen;
    for (const std::string& participant : meeting.participants)
        if (seen_.insert(participant).second) unseen.push_back(participant);
    for (const std::string& other : SkillRequestReader::others(unseen, userName)) {
        std::string fold = foldedName(other);
        if (SkillRequestReader::isGenericLabel(other) || !folds_.insert(fold).second) continue;
        WordList words = wordsAtBlanks(fold);
        addToIndex(personsByWord_, words, persons_.size());
        persons_.push_back({other, std::move(words)});
    }
}

void SkillNames::addFolder(const AskMeeting& meeting) {
    const std::string_view name = Paths::lastComponent(meeting.folder);
    if (!name.empty()) folders_.try_emplace(foldedName(name), name);
}

std::optional<std::string> SkillNames::person(const WordList& words) const {
    const auto* candidates = rarest(personsByWord_, words);
    if (candidates == nullptr) return std::nullopt;
    const Person* first = nullptr;
    for (const std::size_t candidate : *candidates) {
        const Person& person = persons_[candidate];
        if (person.words == words) return person.listed;
        if (first == nullptr && !std::ranges::search(person.words, words).empty()) first = &person;
    }
    if (first == nullptr) return std::nullopt;
    return first->listed;
}

std::optional<AnswerScope::IDs> SkillNames::titled(std::string_view folded) const {
    // A hyphen parts words in a title, so it does in the name.
    WordList words;
    for (const ByteRange word : Words::ranges(folded)) words.emplace_back(word.of(folded));
    const auto* candidates = rarest(titlesByWord_, words);
    if (candidates == nullptr) return std::nullopt;
    AnswerScope::IDs ids;
    for (const std::size_t candidate : *candidates) {
        const bool hasAll = std::ranges::all_of(words, [&](const std::string& word) {
            return std::ranges::binary_search(titlesByWord_.at(word), candidate);
        });
        if (hasAll) ids.insert(pool_[candidate].id);
    }
    if (ids.empty()) return std::nullopt;
    return ids;
}

std::optional<AnswerScope> SkillNames::scopeOf(std::string_view name, Persons persons) const {
    const std::string folded = foldedName(name);
    if (persons == Persons::included) {
        if (auto listed = person(wordsAtBlanks(folded))) return AnswerScope{.participant = listed};
    }
    if (const auto folder = folders_.find(folded); folder != folders_.end())
        return AnswerScope{.folder = folder->second};
    if (auto ids = titled(folded)) return AnswerScope{.meetingIDs = std::move(ids)};
    return std::nullopt;
}
}  // namespace ombrix
