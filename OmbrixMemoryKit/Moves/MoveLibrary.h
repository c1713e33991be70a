// Joins what lies in separate files to one list of moves: prepared work in sidecars, what happened
// to it in records, what the user says of it in next-move files, and what was said in transcripts.
// Pure: reading the folders is the caller's work.
#pragma once

#include <functional>
#include <map>
#include <set>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "OmbrixMemoryKit/Ledger/FollowUpsLedger.h"
#include "OmbrixMemoryKit/Moves/MoveCorrections.h"
#include "OmbrixMemoryKit/Moves/MoveStateRecord.h"
#include "OmbrixMemoryKit/Moves/PrepareSidecar.h"
#include "OmbrixMemoryKit/Moves/ResolvedMove.h"

namespace ombrix::MoveLibrary {

/// By move id.
using Records = std::map<std::string, MoveStateRecord, std::less<>>;
using CorrectionsByMove = std::map<std::string, std::vector<MoveCorrection>, std::less<>>;

/// What is known of moves apart from the sidecars. Ids that no sidecar has are ignored.
struct Knowledge {
    Records records{};
    CorrectionsByMove corrections{};
    Preparation preparation = Preparation::ready;  ///< of a move without a record
};

/// All moves: the newest meeting first, by its day and then by when it was prepared; in a meeting
/// the stated ones before the suggested ones, otherwise as the answer has them.
std::vector<ResolvedMove> resolve(std::vector<PrepareSidecar> sidecars, const Knowledge& known,
                                  const MoveSources& sources);

// `resolve` in steps, for a caller that does not hold all transcripts at once.

/// Sorts by the order of `resolve`; equal ones keep their order.
void sortNewestFirst(std::vector<PrepareSidecar>& sidecars);

struct MoveInState {
    PreparedMove move;
    MoveState state;
};
enum class Detail {
    whole,
    outline,  ///< enough for `MoveEvidence::outline`: a move without a record has no revisions
};
/// The moves of one sidecar in the order of `resolve`, each with its state, corrections applied.
std::vector<MoveInState> movesOf(PrepareSidecar sidecar, const Knowledge& known,
                                 Detail detail = Detail::whole);

/// Applies those of the corrections that name the state's move, in order: the last one wins.
/// `preparedAt` becomes the time of a discard and a restore, which carry none. Corrections are
/// applied on each read and stored in no record: the file remains the user's word.
MoveState apply(std::span<const MoveCorrection> corrections, MoveState state,
                std::string_view preparedAt);

/// The corrections in the texts of next-move files, in the order of the files; a text that is none
/// has none.
CorrectionsByMove corrections(std::span<const std::string> files);

/// The move to show first: the first that is open and not dismissed, a stated one if there is one.
/// Null when none is open.
const ResolvedMove* head(std::span<const ResolvedMove> moves);

/// The ids of the moves of each meeting, by its key, in their order.
std::map<std::string, std::vector<std::string>> byMeeting(std::span<const ResolvedMove> moves);

/// The commitments that moves serve, without moves that are dismissed. A follow-up row stands for
/// its own id and those of its recurrence: who serves one of them serves them all.
std::set<std::string> servedCommitmentIDs(std::span<const ResolvedMove> moves,
                                          std::span<const FollowUpRow> rows);
}  // namespace ombrix::MoveLibrary
