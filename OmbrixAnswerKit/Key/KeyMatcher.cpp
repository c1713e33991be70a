#include "OmbrixAnswerKit/Key/KeyMatcher.h"

#include <algorithm>
#include <bitset>
#include <cmath>
#include <set>
#include <unordered_map>
#include <utility>

#include "OmbrixAnswerKit/Key/KeyWords.h"
#include "OmbrixPlatform/Calendar.h"
#include "OmbrixPlatform/Characters.h"
#include "OmbrixPlatform/Paths.h"
#include "OmbrixPlatform/Text.h"
#include "OmbrixPlatform/WordSet.h"

namespace ombrix::KeyMatcher {
namespace {

// What a surface's mention of a meeting is worth. A name's worth is divided by the number of
// people; counts are cut off where more of the same says nothing new.
constexpr double titleNameWorth = 4;
constexpr double nearNameWorth = 3;
constexpr std::size_t mostNames = 2;
constexpr double threadWorth = 3.0;
constexpr std::size_t mostFieldHits = 3;
constexpr double surfaceHitsWorth = 2.0;  // for the least number of hits
constexpr double furtherHitWorth = 0.5;
constexpr std::size_t leastSurfaceHits = 2;
constexpr std::size_t mostSurfaceHits = 3;
constexpr double unknownAgeFactor = 0.5;
constexpr std::size_t fewPeople = 3;  // with fewer, the title is asked for names

constexpr auto fillerWords =
    wordSet({"the", "and", "for", "with", "from", "about", "this", "that", "our", "your"});
constexpr auto stopwords = wordSet(
    {"with",   "about",   "from",    "this",    "that",  "what",   "when",   "your",    "weekly",
     "daily",  "sync",    "meeting", "call",    "chat",  "check",  "notes",  "team",    "update",
     "review", "session", "catch",   "follow",  "zoom",  "meet",   "google", "teams",   "slack",
     "mail",   "inbox",   "draft",   "message", "reply", "thread", "today",  "tomorrow"});

/// A text of the surface, prepared to look for many names: where each of its words stands.
class Words {
  public:
    explicit Words(std::string_view text) : words_(nameTokens(text)) {
        for (std::size_t i = 0; i < words_.size(); ++i) places_[words_[i]].push_back(i);
        for (const auto& [word, places] : places_) {
            lengths_.insert(word.size());
            firstBytes_.set(static_cast<unsigned char>(word[0]));
        }
    }
    Words(const Words&) = delete;
    Words& operator=(const Words&) = delete;

    bool contains(std::string_view word) const {
        return !word.empty() && firstBytes_[static_cast<unsigned char>(word[0])] &&
               places_.contains(word);
    }

    /// True when the words of `phrase` follow each other there.
    bool containsPhrase(const std::vector<std::string_view>& phrase) const {
        if (phrase.empty()) return false;
        return std::ranges::any_of(placesOf(phrase.front()), [&](std::size_t at) {
            return phrase.size() <= words_.size() - at &&
                   std::equal(phrase.begin(), phrase.end(),
                              words_.begin() + static_cast<std::ptrdiff_t>(at));
        });
    }

    bool names(const Person& person) const {
        if (words_.empty()) return false;
        // Nearly no name is there: all but a handle begin with a word that is.
        const std::string_view full = person.full;
        if (contains(full.substr(0, full.find(' '))) &&
            (person.first || containsPhrase(Text::split(full, " ")))) {
            return true;
        }
        return person.initial && person.last && namesHandle(*person.initial, *person.last);
    }

  private:
    const std::vector<std::size_t>& placesOf(std::string_view word) const {
        static const std::vector<std::size_t> none;
        const auto found = places_.find(word);
        return found == places_.end() ? none : found->second;
    }

    /// True for "john smith" and for "john smi th", when the handle is "jsmith".
    bool namesHandle(std::string_view initial, std::string_view last) const {
        for (const std::size_t cut : lengths_) {  // not at each byte: a handle may be a megabyte
            if (cut > last.size()) break;
            if (standsBehind(initial, last.substr(0, cut), last.substr(cut))) return true;
        }
        return false;
    }

    /// True when a word with that initial is before `word`, and `next`, if any, after it.
    bool standsBehind(std::string_view initial, std::string_view word,
                      std::string_view next) const {
        return std::ranges::any_of(placesOf(word), [&](std::size_t at) {
            if (!next.empty() && (at + 1 == words_.size() || words_[at + 1] != next)) return false;
            return at > 0 && Characters::hasAtLeast(words_[at - 1], 2) &&
                   Characters::prefix(words_[at - 1], 1) == initial;
        });
    }

    std::vector<std::string> words_;
    std::unordered_map<std::string_view, std::vector<std::size_t>> places_;
    std::set<std::size_t> lengths_;  // of the words, in bytes
    std::bitset<256> firstBytes_;    // of the words
};

/// A person of the pool and where the surface names it.
struct Known {
    std::string key;  ///< of `keyOf`
    bool inTitle = false;
    bool inField = false;
    bool inNear = false;
};

/// A title of the pool: its names, as numbers of known persons, and its telling words.
struct Title {
    std::vector<std::size_t> names;
    std::vector<std::string> words;
};

struct Scored {
    const AskMeeting* meeting = nullptr;
    double score = 0;
};

/// One surface against a pool. Participants and titles come back from meeting to meeting, so each
/// is read and looked for once.
class Matching {
  public:
    Matching(const Surface& surface, std::span<const AskMeeting> pool, const ThreadNames& threads,
             const Me& me, std::string_view today)
        : title_(surface.windowTitle),
          near_(surface.nearText),
          field_(KeyPress::isShort(surface.fieldText) ? surface.fieldText : std::string()),
          pool_(pool),
          threads_(threads),
          me_(me),
          orgs_(orgNames(pool)),
          today_(day(today)) {
        std::size_t participants = 0;
        for (const AskMeeting& meeting : pool) participants += meeting.participants.size();
        byParticipant_.reserve(participants);
    }

    KeyPress::World world() {
        std::vector<Scored> kept;
        for (const AskMeeting& meeting : pool_)
            if (const auto score = decayed(meeting)) kept.push_back({&meeting, *score});
        KeyPress::World world;
        if (kept.empty()) return world;
        const double best = std::ranges::max(kept, {}, &Scored::score).score;
        if (best <= 0) return world;
        std::erase_if(kept, [&](const Scored& each) { return each.score < margin * best; });
        std::ranges::stable_sort(kept, std::greater<>(), &Scored::score);
        kept.resize(std::min(kept.size(), maxCandidates));
        for (const auto& [meeting, score] : kept) world.candidates.push_back(candidate(*meeting));
        return world;
    }

  private:
    /// Nothing for a meeting that is too old or that the surface does not touch.
    std::optional<double> decayed(const AskMeeting& meeting) {
        double factor = unknownAgeFactor;
        if (const auto date = today_ ? day(meeting.date) : std::nullopt) {
            const std::int64_t age = *today_ - *date;
            if (age > lookbackDays) return std::nullopt;
            factor = std::exp2(-static_cast<double>(age) / halfLifeDays);
        }
        const double score = this->score(meeting);
        if (score < floor) return std::nullopt;
        return score * factor;
    }

    double score(const AskMeeting& meeting) {
        const std::vector<std::size_t> people = peopleOf(meeting);
        const Title& title = titleOf(meeting.title);
        static const std::vector<std::size_t> none;
        const auto& names = people.size() < fewPeople ? title.names : none;
        const std::size_t count = people.empty() ? names.size() : people.size();
        const double base = count == 0 ? 1.0 : 1.0 / static_cast<double>(count);

        const auto named = [&](bool Known::*where) {
            return std::max(countNamed(people, where), countNamed(names, where));
        };
        const std::size_t inTitle = std::max(named(&Known::inTitle), named(&Known::inField));
        return base * titleNameWorth * static_cast<double>(std::min(inTitle, mostNames)) +
               base * nearNameWorth *
                   static_cast<double>(std::min(named(&Known::inNear), mostNames)) +
               (touchesThread(meeting) ? threadWorth : 0.0) + wordScore(title);
    }

    bool isShown(std::string_view word) const {
        return title_.contains(word) || near_.contains(word);
    }

    /// Of a word that is shown.
    bool isPlain(std::string_view word) {
        if (!plain_)
            plain_ = plainWords(pool_, [&](std::string_view each) { return isShown(each); });
        return plain_->contains(word);
    }

    double wordScore(const Title& title) {
        std::size_t fieldHits = 0;
        std::size_t surfaceHits = 0;
        for (const std::string& word : title.words) {
            if (field_.contains(word)) ++fieldHits;
            if (isShown(word) && !isPlain(word)) ++surfaceHits;
        }
        double score = static_cast<double>(std::min(fieldHits, mostFieldHits));
        if (surfaceHits >= leastSurfaceHits) {
            const std::size_t further = std::min(surfaceHits, mostSurfaceHits) - leastSurfaceHits;
            score += surfaceHitsWorth + static_cast<double>(further) * furtherHitWorth;
        }
        return score;
    }

    std::size_t countNamed(const std::vector<std::size_t>& people, bool Known::*where) const {
        return static_cast<std::size_t>(std::ranges::count_if(
            people, [&](std::size_t number) { return known_[number].*where; }));
    }

    bool touchesThread(const AskMeeting& meeting) {
        const auto touches = [&](std::string_view name) {
            const auto [entry, isNew] = touches_.try_emplace(name);
            if (isNew) {
                const std::string lowered = Text::lowercased(name);
                const auto words = KeyWords::inLowered(lowered);
                entry->second = title_.containsPhrase(words) || field_.containsPhrase(words);
            }
            return entry->second;
        };
        const auto thread = threads_.find(meeting.id);
        return (thread != threads_.end() && touches(thread->second)) ||
               touches(Paths::lastComponent(meeting.folder));
    }

    /// Each person once, in no particular order.
    std::vector<std::size_t> peopleOf(const AskMeeting& meeting) {
        std::vector<std::size_t> people;
        for (const std::string& participant : meeting.participants) {
            const auto [entry, isNew] = byParticipant_.try_emplace(participant);
            if (isNew) {
                if (auto found = person(participant, me_, orgs_))
                    entry->second = number(std::move(*found));
            }
            if (entry->second) people.push_back(*entry->second);
        }
        const auto key = [&](std::size_t number) -> std::string_view { return known_[number].key; };
        std::ranges::sort(people, {}, key);
        people.erase(std::ranges::unique(people, {}, key).begin(), people.end());
        return people;
    }

    const Title& titleOf(const std::string& text) {
        const auto [entry, isNew] = titles_.try_emplace(text);
        Title& title = entry->second;
        if (!isNew) return title;
        for (auto& name : titleNames(text, me_, orgs_))
            title.names.push_back(number(std::move(name)));
        title.words = KeyWords::distinct(nameTokens(text));
        std::erase_if(title.words, [&](const std::string& word) {
            return !Characters::hasAtLeast(word, 4) || stopwords.contains(word) ||
                   me_.tokens.contains(word) || orgs_.contains(word);
        });
        return title;
    }

    /// A number for a person of one participant or title.
    std::size_t number(Person person) {
        const bool inTitle = title_.names(person);
        const bool inField = field_.names(person);
        const bool inNear = near_.names(person);
        known_.push_back({keyOf(std::move(person)), inTitle, inField, inNear});
        return known_.size() - 1;
    }

    KeyPress::MeetingCandidate candidate(const AskMeeting& meeting) const {
        std::vector<std::string> threadNames;
        const auto thread = threads_.find(meeting.id);
        if (thread != threads_.end()) threadNames.push_back(thread->second);
        return {
            .id = meeting.id,
            .title = meeting.title,
            .date = meeting.date,
            .terms = candidateTerms(meeting, people(meeting, me_, orgs_), threadNames, me_.tokens)};
    }

    const Words title_, near_, field_;  // a long field has no words here
    const std::span<const AskMeeting> pool_;
    const ThreadNames& threads_;
    const Me& me_;
    const WordsSet orgs_;
    std::optional<WordsSet> plain_;  // of the words shown; nothing until one is asked for
    const std::optional<std::int64_t> today_;

    std::vector<Known> known_;
    std::unordered_map<std::string_view, std::optional<std::size_t>> byParticipant_;
    std::unordered_map<std::string_view, Title> titles_;
    std::unordered_map<std::string_view, bool> touches_;  // by names of threads and folders
};
}  // namespace

KeyPress::World world(const Surface& surface, std::span<const AskMeeting> pool,
                      const ThreadNames& threads, const std::string& userName,
                      std::span<const std::string> alsoMe, std::string_view today) {
    std::vector<std::string> names{userName};
    names.insert(names.end(), alsoMe.begin(), alsoMe.end());
    const Me me(names);
    return Matching(surface, pool, threads, me, today).world();
}

std::vector<std::string> candidateTerms(const AskMeeting& meeting, std::span<const Person> others,
                                        std::span<const std::string> threadNames,
                                        const WordsSet& excluding) {
    std::vector<std::string> terms;
    const auto add = [&](std::string_view text) {
        for (auto& token : nameTokens(text)) terms.push_back(std::move(token));
    };
    add(meeting.title);
    for (const Person& person : others) add(person.full);
    for (const std::string& name : threadNames) add(name);
    std::erase_if(terms, [&](const std::string& term) {
        return !Characters::hasAtLeast(term, 3) || fillerWords.contains(term) ||
               excluding.contains(term);
    });
    terms = KeyWords::distinct(std::move(terms));
    if (others.size() == 1) terms.emplace_back("1:1");
    return terms;
}

std::optional<std::int64_t> day(std::string_view text) {
    const auto found = parseIsoDay(text);
    if (!found) return std::nullopt;
    return found->time_since_epoch().count();
}
}  // namespace ombrix::KeyMatcher
