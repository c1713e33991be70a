// The ledger of follow-ups: every open promise of the user's meetings, both ways, and those that
// were closed lately. It is computed by FollowUpsMerger.h and never stored.
#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <set>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

#include "OmbrixMemoryKit/Land/LandInput.h"
#include "OmbrixMemoryKit/Land/LandModels.h"

namespace ombrix {

/// One commitment. All days are ISO days.
struct FollowUpRow {
    struct Live {
        bool operator==(const Live&) const = default;
    };
    struct Late {
        std::int64_t days = 1;  ///< since it was due, at least 1
        bool operator==(const Late&) const = default;
    };
    struct Done {
        std::string confirmedOn{};
        std::string quote{};        ///< empty when the user marked it
        std::string sourceTitle{};  ///< of the meeting that says so
        bool operator==(const Done&) const = default;
    };
    struct Renegotiated {
        std::optional<std::string> from{}, to{};  ///< the old and the new day, if any
        std::string sourceTitle{}, sourceDate{};  ///< the meeting that moved it
        bool operator==(const Renegotiated&) const = default;
    };
    /// Nobody with a name is known to have promised it.
    struct NotSure {
        bool operator==(const NotSure&) const = default;
    };
    using Status = std::variant<Live, Late, Done, Renegotiated, NotSure>;

    /// The same promise was made in several meetings; the row is the newest of them.
    struct Recurrence {
        std::int64_t count = 0;
        std::string firstSaid{};
        std::vector<std::string> memberIDs{};  ///< of all of them, the newest first
        bool operator==(const Recurrence&) const = default;
    };

    std::string id{};  ///< the `CommitmentID` under `whoKey`
    CommitmentDirection direction = CommitmentDirection::userOwes;  ///< never `other`
    std::string what{};                ///< the user's words for it, else the model's
    std::string who{};                 ///< the other party, as it is shown
    std::string whoKey{};              ///< the person's canonical key; may be empty
    std::string said{};                ///< the day of the meeting
    std::string dueRaw{};              ///< the words as said
    std::optional<std::string> due{};  ///< the new day when it was moved to one
    std::string quote{};
    Certainty certainty = Certainty::recorded;
    std::string sourceTitle{}, sourceDate{}, meetingKey{};  ///< of the meeting it was said in
    Status status{};
    std::string speaker{};
    std::string whatRaw{};  ///< the model's words
    std::optional<Recurrence> recurrence{};
    bool important = false;  ///< pinned by the user

    template <typename Case>
    const Case* statusAs() const {
        return std::get_if<Case>(&status);
    }
    bool isDone() const { return statusAs<Done>() != nullptr; }
    /// `said`; the day it was moved if that is later. A view of this row.
    std::string_view lastTouched() const;

    bool operator==(const FollowUpRow&) const = default;
};

using FollowUpRows = std::vector<FollowUpRow>;

struct FollowUpsLedger {
    using Keys = std::set<std::string, std::less<>>;

    FollowUpRows youOweLate{}, youOweLive{}, owedLate{}, owedLive{};
    FollowUpRows changed{};  ///< moved to another day, in both directions
    FollowUpRows closed{};   ///< done, for 30 days
    FollowUpRows notSure{};
    FollowUpRows older{};  ///< open, but not mentioned for long, or one too many for its list
    std::int64_t meetingsRead = 0;
    std::set<std::string> pinnedIDs{};  ///< as the corrections name them, of whatever commitment
    std::string today{};                ///< the day the ledger is of

    /// What a land input says about the people of `keys` (canonical ones): their first `limit` open
    /// commitments, late ones of both directions first. A negative limit counts as 0.
    std::vector<LandOpenFollowUp> open(const Keys& keys, std::int64_t limit) const;

    enum class Older { left, added };
    /// Open rows whose `whoKey` is in `keys`: the user's before those owed to the user, late before
    /// live, then the changed ones, then the older ones if they are asked for. The first `limit`,
    /// or all.
    FollowUpRows openRows(const Keys& keys, std::optional<std::int64_t> limit = std::nullopt,
                          Older older = Older::left) const;

    bool operator==(const FollowUpsLedger&) const = default;
};
}  // namespace ombrix
