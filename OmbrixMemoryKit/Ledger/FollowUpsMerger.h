// Makes the ledger of follow-ups from scratch: from the records of all landed meetings, what the
// user corrected, and who is the same person. Landing a meeting again replaces its record, and as
// the id of a commitment is a function of its meeting, words and person, a correction still names
// it. Everything here is a pure function, linear in the commitments apart from sorting.
//
// What becomes of a commitment, the first that holds:
//
//   between other people                          left out
//   "not a commitment" by the user                left out
//   the same words with the same person, earlier  left out: one meeting promises a thing once
//     in the same meeting
//   "done" by the user                            closed; left out 30 days after that day
//   inferred, or with nobody that has a name      not sure
//   done by a later meeting                       closed; left out 30 days after that meeting
//   moved by a later meeting                      changed
//   due before today                              late
//   else                                          live
//
// Then promises that were repeated become one row, and those that nobody mentioned for 90 days and
// what is too much for a list go to `older`.
#pragma once

#include <cstdint>
#include <span>
#include <string_view>

#include "OmbrixMemoryKit/Identity/PersonAliases.h"
#include "OmbrixMemoryKit/Land/LandSidecar.h"
#include "OmbrixMemoryKit/Ledger/FollowUpsLedger.h"
#include "OmbrixMemoryKit/Region/Corrections.h"

namespace ombrix::FollowUpsMerger {

/// The most days that a closed row is shown, and that an open one stays out of `older`.
constexpr std::int64_t daysUntilGone = 30, daysUntilOlder = 90;

/// The ledger of the day `today`, an ISO day. The order of the sidecars counts only for meetings of
/// one day that were landed in the same second, and for what several meetings of one day say about
/// the same commitment. Of two `done` or `reword` corrections of one id the later counts; a `done`
/// on something that is no day leaves the commitment out. An id under any key of a person names the
/// commitment, so corrections hold when a person gets another canonical key.
FollowUpsLedger merge(std::span<const LandSidecar> sidecars,
                      std::span<const Correction> corrections, std::string_view today,
                      const PersonAliases& aliases);

/// True when the row was last mentioned more than 90 days before `today`, unless it is due today or
/// later. False when one of the days is none.
bool isOlder(const FollowUpRow& row, std::string_view today);

/// The rows with each promise once: of rows with the same direction, person and words the newest,
/// with its `recurrence`. Rows with no named person, or without words, are all kept and come first;
/// the others follow in the order of each promise's first row.
FollowUpRows collapseRecurrences(FollowUpRows rows);
}  // namespace ombrix::FollowUpsMerger
