#include "OmbrixAnswerKit/Commitments/CommitmentExtractor.h"

#include <algorithm>
#include <array>
#include <unordered_map>
#include <unordered_set>
#include <utility>

#include "OmbrixAnswerKit/Commitments/ActionItems.h"
#include "OmbrixAnswerKit/Commitments/NameIndex.h"
#include "OmbrixAnswerKit/Commitments/SpokenWords.h"
#include "OmbrixPlatform/Text.h"

namespace ombrix {

namespace CommitmentExtractor {
namespace {

using CommitmentCues::StraightText;

using Direction = Commitment::Direction;
using Turn = TranscriptDocument::Turn;

/// Who owes whom, before the words are added.
struct Debt {
    Direction direction = Direction::other;
    std::optional<std::string_view> owner;
};

Debt nobodysDebt() { return {}; }
Debt debtOf(std::string_view owner, Direction direction = Direction::other) {
    return {.direction = direction, .owner = owner};
}

/// The user by all names.
class User {
  public:
    explicit User(std::span<const std::string> aliases) : keys_({"you", "me"}) {
        for (const std::string& alias : aliases) {
            keys_.insert(NameIndex::key(alias));
            const std::string lower = Text::lowercased(alias);
            if (lower == "you" || lower == "me") continue;
            if (!name_) name_ = alias;
            names_.add(alias);
        }
    }

    bool isKey(const std::string& key) const { return keys_.contains(key); }
    bool isNamed(std::string_view written) const {
        return isKey(NameIndex::key(written)) || names_.withFirstWordOf(written);
    }
    bool isAddressedIn(const SpokenWords& words) const {
        return names_.addressedIn(words).has_value();
    }
    Debt debt() const { return debtOf(name_.value_or("You"), Direction::userOwes); }

  private:
    std::unordered_set<std::string> keys_;
    NameIndex names_;  // without "you" and "me"
    std::optional<std::string_view> name_;
};

/// The speakers of a document's turns, each name folded once.
class Speakers {
  public:
    struct Speaker {
        std::string key;
        bool isUser = false;
    };

    Speakers(const std::vector<Turn>& turns, const User& user) {
        speakers_.reserve(turns.size());
        std::unordered_map<std::string, bool> isUserByKey;
        for (const Turn& turn : turns) {
            const auto [known, isNew] = byName_.try_emplace(turn.speaker);
            if (isNew) {
                std::string key = NameIndex::key(turn.speaker);
                const bool isUser = user.isKey(key);
                isUserByKey.emplace(key, isUser);
                known->second = {.key = std::move(key), .isUser = isUser};
            }
            speakers_.push_back(&known->second);
        }
        const auto others =
            std::ranges::count(isUserByKey, false, [](const auto& entry) { return entry.second; });
        isTwoParty_ = isUserByKey.size() == 2 && others == 1;
    }

    const Speaker& of(std::size_t turn) const { return *speakers_[turn]; }
    /// The user and one other, whatever the frontmatter says of participants.
    bool isTwoParty() const { return isTwoParty_; }

  private:
    std::unordered_map<std::string_view, Speaker> byName_;
    std::vector<const Speaker*> speakers_;  // one a turn
    bool isTwoParty_ = false;
};

/// Reads one document.
class Extraction {
  public:
    Extraction(const TranscriptDocument& document, std::string_view id,
               std::span<const std::string> userAliases)
        : document_(document), id_(id), user_(userAliases), speakers_(document.turns, user_) {
        for (const std::string& participant : document.participants)
            if (!user_.isKey(NameIndex::key(participant))) otherParticipants_.add(participant);
    }

    std::vector<Finding> read() {
        for (std::size_t i = 0; i < document_.turns.size();) i += readTurn(i);
        readActionItems();
        return std::move(found_);
    }

  private:
    /// The number of turns read: a reply that accepts a request is read with it.
    std::size_t readTurn(std::size_t i) {
        const Turn& turn = document_.turns[i];
        const SpokenWords& words = wordsOf(i);
        if (i > 0 && words.isEchoOf(wordsOf(i - 1))) return 1;
        // Straight apostrophes would not change the words: either kind parts them.
        if (!words.hasAtLeast(2)) return 1;
        const StraightText text(turn.text);
        if (hasFirstPersonCue(text.view())) {
            add(ownPromise(i, text.view()), turn.text, Commitment::firstPersonConfidence);
            return 1;
        }
        if (!hasRequestCue(text.view())) return 1;
        const bool isAccepted = acknowledges(i);
        add(isAccepted ? acceptedRequest(i) : openRequest(i), turn.text,
            Commitment::requestConfidence);
        return isAccepted ? 2 : 1;
    }

    Debt ownPromise(std::size_t i, std::string_view text) const {
        if (speakers_.of(i).isUser) return user_.debt();
        return debtOf(document_.turns[i].speaker,
                      isAddressedToListener(text) ? Direction::owedToUser : Direction::other);
    }

    /// The turn after `i` is another speaker's and accepts the request.
    bool acknowledges(std::size_t i) const {
        return i + 1 < document_.turns.size() && speakers_.of(i + 1).key != speakers_.of(i).key &&
               isAcknowledgement(document_.turns[i + 1].text);
    }

    Debt acceptedRequest(std::size_t i) const {
        const std::string& acknowledger = document_.turns[i + 1].speaker;
        if (speakers_.of(i).isUser) return debtOf(acknowledger, Direction::owedToUser);
        if (speakers_.of(i + 1).isUser) return user_.debt();
        return debtOf(acknowledger);
    }

    Debt openRequest(std::size_t i) {
        if (speakers_.of(i).isUser) return nobodysDebt();
        const SpokenWords& words = wordsOf(i);
        if (user_.isAddressedIn(words)) return user_.debt();
        // With only two people in the room a request is one to the user.
        if (speakers_.isTwoParty()) return user_.debt();
        if (const auto name = otherParticipants_.addressedIn(words)) return debtOf(*name);
        return nobodysDebt();
    }

    void readActionItems() {
        const auto lines = ActionItems::lines(document_);
        if (lines.empty()) return;
        NameIndex people;
        for (const std::string& participant : document_.participants) people.add(participant);
        std::unordered_set<std::string_view> known;
        for (const Turn& turn : document_.turns)
            if (known.insert(turn.speaker).second) people.add(turn.speaker);
        for (const std::string_view line : lines)
            if (const auto item = ActionItems::parse(line)) readActionItem(line, *item, people);
    }

    void readActionItem(std::string_view line, const ActionItems::Item& item,
                        const NameIndex& people) {
        if (!item.owner) return addListed(nobodysDebt(), item.text);
        if (user_.isNamed(*item.owner)) return addListed(user_.debt(), item.text);
        auto person = people.withKeyOf(*item.owner);
        if (!person) person = people.withFirstWordOf(*item.owner);
        if (person) return addListed(debtOf(*person), item.text);
        // The part before the separator is nobody in the meeting, so it belongs to the text.
        addListed(nobodysDebt(), ActionItems::trimmedBullet(line));
    }

    void addListed(const Debt& debt, std::string_view text) {
        add(debt, text, Commitment::actionItemConfidence);
        found_.back().isListed = true;
    }

    void add(const Debt& debt, std::string_view text, double confidence) {
        found_.push_back({.direction = debt.direction,
                          .owner = debt.owner,
                          .text = text,
                          .confidence = confidence,
                          .meetingID = id_,
                          .document = &document_});
    }

    /// The words of a turn are needed for the turn itself and for the one after it.
    const SpokenWords& wordsOf(std::size_t i) {
        Heard& heard = heard_[i % heard_.size()];
        if (heard.turn != i) heard = {.turn = i, .words = SpokenWords(document_.turns[i].text)};
        return heard.words;
    }

    struct Heard {
        std::optional<std::size_t> turn;
        SpokenWords words;
    };

    const TranscriptDocument& document_;
    std::string_view id_;
    User user_;
    Speakers speakers_;
    NameIndex otherParticipants_;
    std::array<Heard, 2> heard_;
    std::vector<Finding> found_;
};

/// The order of lists, without the place in the input: the latest meeting first, then by direction,
/// then the highest confidence.
struct Rank {
    std::string_view date;
    Direction direction;
    double confidence;

    bool operator<(const Rank& other) const {
        if (date != other.date) return date > other.date;
        if (direction != other.direction) return direction < other.direction;
        return confidence > other.confidence;
    }
};

Rank rankOf(const Commitment& c) { return {c.meetingDate, c.direction, c.confidence}; }
Rank rankOf(const Finding& f) { return {f.document->date, f.direction, f.confidence}; }

template <typename Promise>
std::vector<Promise> selected(std::span<const Promise> promises, std::optional<Direction> direction,
                              std::int64_t cap) {
    std::vector<const Promise*> kept;
    for (const Promise& promise : promises)
        if (!direction || promise.direction == *direction) kept.push_back(&promise);
    std::ranges::stable_sort(
        kept, [](const Promise* a, const Promise* b) { return rankOf(*a) < rankOf(*b); });
    const auto size = static_cast<std::size_t>(std::max<std::int64_t>(cap, 0));
    if (kept.size() > size) kept.resize(size);
    std::vector<Promise> result;
    result.reserve(kept.size());
    for (const Promise* promise : kept) result.push_back(*promise);
    return result;
}

std::string counted(std::int64_t count, std::string_view noun) {
    return std::to_string(count) + " " + std::string(noun) + (count == 1 ? "" : "s");
}
}  // namespace

bool isEcho(std::string_view text, const Turn* previous) {
    return previous && SpokenWords(text).isEchoOf(SpokenWords(previous->text));
}

std::vector<Finding> find(const TranscriptDocument& document, std::string_view id,
                          std::span<const std::string> userAliases) {
    return Extraction(document, id, userAliases).read();
}

Commitment written(const Finding& finding) {
    const StraightText straight(finding.text);
    return {.direction = finding.direction,
            .owner = finding.owner ? std::optional<std::string>(*finding.owner) : std::nullopt,
            .text = Text::flattened(finding.isListed ? finding.text : straight.view()),
            .deadline = deadline(straight.view()),
            .confidence = finding.confidence,
            .meetingID = std::string(finding.meetingID),
            .meetingTitle = finding.document->title,
            .meetingDate = finding.document->date};
}

std::vector<Commitment> extract(const TranscriptDocument& document, std::string_view id,
                                std::span<const std::string> userAliases) {
    std::vector<Commitment> commitments;
    for (const Finding& finding : find(document, id, userAliases))
        commitments.push_back(written(finding));
    return commitments;
}

std::vector<Commitment> select(std::span<const Commitment> commitments,
                               std::optional<Direction> direction, std::int64_t cap) {
    return selected(commitments, direction, cap);
}

std::vector<Finding> select(std::span<const Finding> findings, std::optional<Direction> direction,
                            std::int64_t cap) {
    return selected(findings, direction, cap);
}

StructuredAnswer assemble(std::span<const Commitment> commitments,
                          std::optional<Direction> direction, std::int64_t cap) {
    StructuredAnswer answer{.shape = AnswerShape::commitments};
    std::unordered_map<std::string, std::int64_t> numbers;
    for (Commitment& commitment : select(commitments, direction, cap)) {
        const auto next = static_cast<std::int64_t>(answer.citationIDs.size()) + 1;
        const auto [known, isNew] = numbers.try_emplace(commitment.meetingID, next);
        if (isNew) answer.citationIDs.push_back(commitment.meetingID);
        const std::int64_t number = known->second;
        answer.items.push_back({.date = std::nullopt,
                                .owner = std::move(commitment.owner),
                                .text = commitment.text + " [" + std::to_string(number) + "]",
                                .citationIndices = {number}});
    }
    answer.summary = summary(static_cast<std::int64_t>(answer.items.size()),
                             static_cast<std::int64_t>(answer.citationIDs.size()));
    return answer;
}

std::optional<std::string> summary(std::int64_t count, std::int64_t meetings) {
    if (count < 1) return std::nullopt;
    return counted(count, "commitment") + " across " + counted(meetings, "meeting") +
           ", quoted from your transcripts.";
}
}  // namespace CommitmentExtractor
}  // namespace ombrix
