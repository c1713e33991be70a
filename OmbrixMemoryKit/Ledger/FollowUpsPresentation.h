// Follow-ups as a view shows them: in which order, by person, and with which labels. No Markdown.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "OmbrixMemoryKit/Ledger/FollowUpsLedger.h"

namespace ombrix::FollowUpsPresentation {

/// The rows with one person.
struct PersonGroup {
    std::string who{};     ///< as it is shown
    std::string whoKey{};  ///< empty when no key is known
    FollowUpRows rows{};

    std::int64_t openCount() const;  ///< how many are not done
    bool operator==(const PersonGroup&) const = default;
};

/// The state of a row in a word or two.
struct StatusPill {
    enum class Kind { late, moved, due, saidAs, done, noDate };
    Kind kind = Kind::noDate;
    std::string payload{};  ///< empty for `done` and `noDate`

    std::string text() const;
    bool operator==(const StatusPill&) const = default;
};

/// What the user owes before what is owed to the user, late before live, then the changed ones.
FollowUpRows openRows(const FollowUpsLedger& ledger);

/// Pinned rows first unless they are done; then late, due, without a day, done. Late and due rows
/// by their day, rows without one by when they were said, done ones the last first. Stable.
FollowUpRows byTime(FollowUpRows rows);

/// The rows in the order of `byTime`, grouped by key, or by name when a row has no key. A group is
/// called as its first row with a name in upper case says, else as its first row does. The person
/// with the most open rows comes first; of equals the one with the earlier row.
std::vector<PersonGroup> byPerson(FollowUpRows rows);

StatusPill statusPill(const FollowUpRow& row, std::string_view today);
/// "today", "tomorrow", "Tue Sep 1", "Wed Sep 1, 2027"; a text that is no day is returned as it is.
std::string dueLabel(std::string_view due, std::string_view today);
/// "1 day late", "12 days late".
std::string lateBy(std::int64_t days);
/// "to Ana Ruiz" for what the user owes, else "from Ana Ruiz".
std::string counterpart(const FollowUpRow& row);
/// "You owe" or "Owed to you"; nothing for a row that is not sure.
std::optional<std::string> directionLabel(const FollowUpRow& row);
/// False when the other party has no name of their own.
bool showsAvatar(const FollowUpRow& row);
/// "Weekly · Sep 1": the meeting it was said in.
std::string sourceLabel(const FollowUpRow& row, std::string_view today);
/// "Came up 3 times since Jun 2"; nothing for a promise that was made once.
std::optional<std::string> recurrenceLabel(const FollowUpRow& row, std::string_view today);
/// Who said it, "You" for the user; nothing when that is not known.
std::optional<std::string> speakerLabel(const FollowUpRow& row);
}  // namespace ombrix::FollowUpsPresentation
