#include "OmbrixMemoryKit/Ledger/FollowUpsMerger.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <deque>
#include <functional>
#include <memory_resource>
#include <optional>
#include <string>
#include <tuple>
#include <unordered_set>
#include <utility>
#include <vector>

#include "OmbrixMemoryKit/Identity/CommitmentID.h"
#include "OmbrixMemoryKit/Identity/EntityKeys.h"
#include "OmbrixMemoryKit/Identity/ISODate.h"
#include "OmbrixMemoryKit/Ledger/MergeInputs.h"
#include "OmbrixMemoryKit/Ledger/Promises.h"
#include "OmbrixPlatform/Text.h"

namespace ombrix::FollowUpsMerger {
namespace {

using MergeInputs::People;
using MergeInputs::Person;
using MergeInputs::Resolution;
using MergeInputs::Resolutions;
using MergeInputs::Wish;
using MergeInputs::Wishes;

constexpr std::size_t mostRows = 20, mostNotSure = 10;  // the rest of a list goes to `older`

bool isOlder(const std::string* due, std::string_view lastTouched, std::string_view today) {
    if (due != nullptr && *due >= today) return false;
    const auto days = ISODate::days(lastTouched, today);
    return days && *days > daysUntilOlder;
}

const std::string* pointer(const std::optional<std::string>& day) { return day ? &*day : nullptr; }

// ---- one commitment on its way ----------------------------------------------------------------

/// A row to be. Big libraries have many, and only some are shown, so it copies no texts.
struct Draft {
    enum class State { live, late, moved, done, notSure };

    const LandSidecar* meeting;
    const LandCommitment* commitment;
    const Person* person;
    std::string id;
    std::size_t promise = Promises::alone;
    std::string_view what;  ///< as it is shown
    bool isPinned = false;
    State state = State::live;
    std::int64_t daysLate = 0;
    std::string_view doneOn{};               ///< by the user or by `resolution`
    std::optional<Resolution> resolution{};  ///< of a draft that a meeting moved or did
    FollowUpRow::Recurrence* recurrence = nullptr;

    bool isOwed() const { return commitment->direction == CommitmentDirection::owedToUser; }
    std::string_view said() const { return meeting->date; }
    const std::string* due() const {
        if (state == State::moved && resolution->said->newDue) return &*resolution->said->newDue;
        return pointer(commitment->due);
    }
    std::string_view lastTouched() const {  // a meeting that moves it is never the earlier one
        return state == State::moved ? std::string_view(resolution->meeting->date) : said();
    }
};

FollowUpRow::Status statusOf(const Draft& draft) {
    switch (draft.state) {
        case Draft::State::live:
            break;
        case Draft::State::late:
            return FollowUpRow::Late{.days = draft.daysLate};
        case Draft::State::notSure:
            return FollowUpRow::NotSure{};
        case Draft::State::moved:
            return FollowUpRow::Renegotiated{.from = draft.commitment->due,
                                             .to = draft.resolution->said->newDue,
                                             .sourceTitle = draft.resolution->meeting->title,
                                             .sourceDate = draft.resolution->meeting->date};
        case Draft::State::done:
            if (!draft.resolution)
                return FollowUpRow::Done{.confirmedOn = std::string(draft.doneOn),
                                         .sourceTitle = "marked by you"};
            return FollowUpRow::Done{.confirmedOn = std::string(draft.doneOn),
                                     .quote = draft.resolution->said->quote,
                                     .sourceTitle = draft.resolution->meeting->title};
    }
    return FollowUpRow::Live{};
}

FollowUpRow rowOf(Draft& draft) {
    const auto& [meeting, commitment, person] =
        std::tie(*draft.meeting, *draft.commitment, *draft.person);
    const std::string* due = draft.due();
    return {.id = std::move(draft.id),
            .direction = commitment.direction,
            .what = std::string(draft.what),
            .who = person.display.empty() ? commitment.who : person.display,
            .whoKey = person.key,
            .said = meeting.date,
            .dueRaw = commitment.dueRaw,
            .due = due == nullptr ? std::nullopt : std::optional(*due),
            .quote = commitment.quote,
            .certainty = commitment.certainty,
            .sourceTitle = meeting.title,
            .sourceDate = meeting.date,
            .meetingKey = meeting.meetingKey,
            .status = statusOf(draft),
            .speaker = commitment.speaker,
            .whatRaw = commitment.what,
            .recurrence = draft.recurrence == nullptr ? std::nullopt
                                                      : std::optional(std::move(*draft.recurrence)),
            .important = draft.isPinned};
}

// ---- orders -----------------------------------------------------------------------------------

using List = std::vector<Draft*>;

bool latestFirst(const Draft* a, const Draft* b) {
    if (a->daysLate != b->daysLate) return a->daysLate > b->daysLate;
    return a->said() < b->said();
}

bool soonestFirst(const Draft* a, const Draft* b) {
    const auto* first = a->due();
    const auto* second = b->due();
    if ((first == nullptr) != (second == nullptr)) return first != nullptr;
    if (first != nullptr && *first != *second) return *first < *second;
    return a->said() < b->said();
}

bool lastSaidFirst(const Draft* a, const Draft* b) { return a->said() > b->said(); }
bool lastDoneFirst(const Draft* a, const Draft* b) { return a->doneOn > b->doneOn; }

/// Sorts the list and moves what is too much for it to `older`.
template <typename Before>
void sortAndCap(List& list, Before before, std::size_t most, List& older) {
    std::ranges::stable_sort(list, before);
    if (list.size() <= most) return;
    older.insert(older.end(), list.begin() + static_cast<std::ptrdiff_t>(most), list.end());
    list.resize(most);
}

/// The list may hold most of the library, so the sort reads the days alone.
void sortLastTouchedFirst(List& list) {
    std::vector<std::pair<std::string_view, Draft*>> byDay;
    byDay.reserve(list.size());
    for (auto* draft : list) byDay.emplace_back(draft->lastTouched(), draft);
    std::ranges::stable_sort(byDay, std::ranges::greater(),
                             &std::pair<std::string_view, Draft*>::first);
    std::ranges::transform(byDay, list.begin(), &std::pair<std::string_view, Draft*>::second);
}

std::size_t commitmentCount(std::span<const LandSidecar> sidecars) {
    std::size_t count = 0;
    for (const auto& sidecar : sidecars) count += sidecar.output.commitments.size();
    return count;
}

// ---- the merge --------------------------------------------------------------------------------

class Merge {
  public:
    Merge(std::span<const LandSidecar> sidecars, std::span<const Correction> corrections,
          std::string_view today, const PersonAliases& aliases)
        : wishes_(corrections),
          resolutions_(sidecars),
          people_(aliases),
          promises_(commitmentCount(sidecars)),
          today_(today) {
        std::vector<const LandSidecar*> inOrder;
        inOrder.reserve(sidecars.size());
        for (const auto& sidecar : sidecars) inOrder.push_back(&sidecar);
        std::ranges::stable_sort(inOrder, {}, [](const LandSidecar* sidecar) {
            return std::tie(sidecar->date, sidecar->landedAt);
        });
        drafts_.reserve(commitmentCount(sidecars));  // they must not move
        seen_.max_load_factor(0.25F);
        seen_.reserve(drafts_.capacity());
        for (const auto* sidecar : inOrder)
            for (const auto& commitment : sidecar->output.commitments) add(*sidecar, commitment);
    }

    FollowUpsLedger ledger() {
        List all, late[2], live[2], moved, notSure, older;
        for (const auto& list : open_) all.insert(all.end(), list.begin(), list.end());
        for (Draft* draft : collapsed(all)) {
            auto& list = isOld(*draft)                         ? older
                         : draft->state == Draft::State::moved ? moved
                         : draft->state == Draft::State::late  ? late[draft->isOwed()]
                                                               : live[draft->isOwed()];
            list.push_back(draft);
        }
        for (auto& list : late) sortAndCap(list, latestFirst, mostRows, older);
        for (auto* list : {&live[0], &live[1], &moved})
            sortAndCap(*list, soonestFirst, mostRows, older);
        for (Draft* draft : collapsed(notSure_)) (isOld(*draft) ? older : notSure).push_back(draft);
        sortAndCap(notSure, lastSaidFirst, mostNotSure, older);
        List closed = collapsed(closed_);
        std::ranges::stable_sort(closed, lastDoneFirst);
        sortLastTouchedFirst(older);
        return {.youOweLate = rows(late[0]),
                .youOweLive = rows(live[0]),
                .owedLate = rows(late[1]),
                .owedLive = rows(live[1]),
                .changed = rows(moved),
                .closed = rows(closed),
                .notSure = rows(notSure),
                .older = rows(older),
                .pinnedIDs = wishes_.pinnedIDs(),
                .today = std::string(today_)};
    }

  private:
    void add(const LandSidecar& meeting, const LandCommitment& commitment) {
        if (commitment.direction == CommitmentDirection::other) return;
        const Person& person = people_.of(commitment.whoKey);
        std::string words = CommitmentID::normalize(commitment.what);
        std::string id =
            CommitmentID::makeNormalized(meeting.meetingKey, words, person.lowercasedKey);
        const Wish wish = wishFor(meeting, words, person, id);
        if (wish.isNoCommitment) return;

        Draft& draft = drafts_.emplace_back(Draft{.meeting = &meeting,
                                                  .commitment = &commitment,
                                                  .person = &person,
                                                  .id = std::move(id),
                                                  .what = wish.what.value_or(commitment.what),
                                                  .isPinned = wish.isPinned});
        if (!seen_.insert(draft.id).second) {
            drafts_.pop_back();
            return;
        }
        if (commitment.what.empty()) words = CommitmentID::normalize(draft.what);
        if (!person.isNobody)
            draft.promise = promises_.numberOf(commitment.direction, person.lowercasedKey, words);
        if (wish.doneOn)
            close(draft, *wish.doneOn);
        else if (isHedged(draft))
            addTo(notSure_, draft, Draft::State::notSure);
        else if ((draft.resolution = resolutions_.of(draft.id, meeting)))
            resolve(draft);
        else
            addOpen(draft);
    }

    /// What the user said about the commitment under any key of the person.
    Wish wishFor(const LandSidecar& meeting, std::string_view words, const Person& person,
                 std::string_view id) const {
        Wish wish;
        if (wishes_.empty()) return wish;
        for (const auto& key : person.keys) {
            if (key == person.lowercasedKey)
                wishes_.add(id, wish);
            else
                wishes_.add(CommitmentID::makeNormalized(meeting.meetingKey, words, key), wish);
        }
        return wish;
    }

    static bool isHedged(const Draft& draft) {
        if (draft.commitment->certainty == Certainty::read || draft.person->isNobody) return true;
        return draft.person->display.empty() ? EntityKeys::isGenericLabel(draft.commitment->who)
                                             : draft.person->isShownAsNobody;
    }

    static void addTo(List& list, Draft& draft, Draft::State state) {
        draft.state = state;
        list.push_back(&draft);
    }

    /// A day that is none leaves the draft out, too.
    void close(Draft& draft, std::string_view day) {
        draft.doneOn = day;
        const auto days = ISODate::days(day, today_);
        if (days && *days <= daysUntilGone) addTo(closed_, draft, Draft::State::done);
    }

    void resolve(Draft& draft) {
        if (draft.resolution->isDone())
            close(draft, draft.resolution->meeting->date);
        else
            addTo(open_[changed], draft, Draft::State::moved);
    }

    void addOpen(Draft& draft) {
        const auto* due = draft.due();
        const auto days = due == nullptr ? std::nullopt : ISODate::days(*due, today_);
        const bool isLate = days && *days >= 1;
        if (isLate) draft.daysLate = *days;
        const auto list =
            draft.isOwed() ? (isLate ? owedLate : owedLive) : (isLate ? youOweLate : youOweLive);
        addTo(open_[list], draft, isLate ? Draft::State::late : Draft::State::live);
    }

    bool isOld(const Draft& draft) const {
        return isOlder(draft.due(), draft.lastTouched(), today_);
    }

    /// Each promise once, its newest draft, which says how often it was made.
    List collapsed(const List& drafts) {
        std::vector<Promises::Member> members;
        members.reserve(drafts.size());
        for (const auto* draft : drafts)
            members.push_back({.promise = draft->promise, .said = draft->said(), .id = draft->id});
        List shown;
        shown.reserve(drafts.size());
        promises_.forEach(members, [&](std::span<const std::size_t> same) {
            Draft* newest = drafts[same.front()];
            shown.push_back(newest);
            if (same.size() == 1) return;
            newest->recurrence = &recurrences_.emplace_back();
            newest->recurrence->count = static_cast<std::int64_t>(same.size());
            newest->recurrence->firstSaid = drafts[same.back()]->said();
            for (const std::size_t i : same) newest->recurrence->memberIDs.push_back(drafts[i]->id);
        });
        return shown;
    }

    static FollowUpRows rows(const List& drafts) {
        FollowUpRows rows;
        rows.reserve(drafts.size());
        for (auto* draft : drafts) rows.push_back(rowOf(*draft));
        return rows;
    }

    /// In the order in which promises are looked at for earlier ones.
    enum OpenList { youOweLate, youOweLive, owedLate, owedLive, changed, openLists };

    Wishes wishes_;
    Resolutions resolutions_;
    People people_;
    Promises promises_;
    std::string_view today_;
    std::vector<Draft> drafts_;
    std::deque<FollowUpRow::Recurrence> recurrences_;  // of drafts
    std::pmr::monotonic_buffer_resource memory_;
    std::pmr::unordered_set<std::string_view> seen_{&memory_};  // ids of drafts
    std::array<List, openLists> open_;
    List notSure_, closed_;
};
}  // namespace

FollowUpsLedger merge(std::span<const LandSidecar> sidecars,
                      std::span<const Correction> corrections, std::string_view today,
                      const PersonAliases& aliases) {
    FollowUpsLedger ledger = Merge(sidecars, corrections, today, aliases).ledger();
    ledger.meetingsRead = static_cast<std::int64_t>(sidecars.size());
    return ledger;
}

bool isOlder(const FollowUpRow& row, std::string_view today) {
    return isOlder(pointer(row.due), row.lastTouched(), today);
}

FollowUpRows collapseRecurrences(FollowUpRows rows) {
    Promises promises(rows.size());
    std::vector<Promises::Member> members;
    members.reserve(rows.size());
    for (const auto& row : rows) {
        auto& member = members.emplace_back(Promises::Member{.said = row.said, .id = row.id});
        if (EntityKeys::isGenericKey(row.whoKey)) continue;
        member.promise = promises.numberOf(
            row.direction, Text::lowercased(row.whoKey),
            CommitmentID::normalize(row.whatRaw.empty() ? row.what : row.whatRaw));
    }
    FollowUpRows result;
    promises.forEach(members, [&](std::span<const std::size_t> same) {
        std::optional<FollowUpRow::Recurrence> recurrence = rows[same.front()].recurrence;
        if (same.size() > 1) {
            recurrence = {.count = static_cast<std::int64_t>(same.size()),
                          .firstSaid = rows[same.back()].said,
                          .memberIDs = {}};
            for (const std::size_t i : same) recurrence->memberIDs.push_back(rows[i].id);
        }
        result.push_back(std::move(rows[same.front()]));
        result.back().recurrence = std::move(recurrence);
    });
    return result;
}
}  // namespace ombrix::FollowUpsMerger
