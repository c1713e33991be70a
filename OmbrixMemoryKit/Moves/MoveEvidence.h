// What a move rests on, in the transcripts as they are now. Transcripts change after a move was
// prepared: what is cited is still shown as far as it is there, and it is said plainly when a
// citation no longer holds.
#pragma once

#include <memory>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "OmbrixMemoryKit/Moves/ResolvedMove.h"

namespace ombrix::MoveEvidence {

/// The move as it is shown. A state whose `current` is no index shows the prepared move; one whose
/// `candidate` is none has nothing on offer. Linear in the move and, for ids that do not hold, in
/// the transcripts cited, save that each cited id costs a glance at every turn of its meeting.
ResolvedMove resolve(PreparedMove move, MoveState state, const MoveSources& sources);

/// The claims in force: the revision's, then those of the move that only the revision's lines and
/// unresolved items use. Of claims with one id the first counts.
std::vector<Claim> claimPool(const PreparedMove& move, const Revision& revision);

/// What a list shows of a move. Costs far less than `resolve`, which gives the same.
struct Outline {
    std::string title;
    EvidenceStanding evidence = EvidenceStanding::verified;
    bool hasCandidate = false;
    std::shared_ptr<const MoveSource> source;  ///< the move's own meeting; null when it is gone
};
Outline outline(const PreparedMove& move, const MoveState& state, const MoveSources& sources);

struct Exchanges {
    std::vector<ResolvedExchange> list;
    EvidenceStanding standing = EvidenceStanding::verified;
    bool operator==(const Exchanges&) const = default;
};

/// The stretches of talk around the turns that the claims cite. A cited turn brings the turn before
/// and the turn after it, unless both have times that are more than 90 seconds apart. Stretches
/// that then share a turn or touch are one. Those of `ownMeeting` come first, then meeting by
/// meeting in the order in which the claims first cite them, each in the order of its turns.
Exchanges buildExchanges(std::span<const Claim> claims, const MoveSources& sources,
                         std::string_view ownMeeting = {});
/// Its list alone, for some claims of a move.
std::vector<ResolvedExchange> exchanges(std::span<const Claim> claims, const MoveSources& sources);
/// The first exchange that holds a claim, or null.
const ResolvedExchange* exchange(std::string_view claimId,
                                 std::span<const ResolvedExchange> exchanges);
/// What changes from one revision to another, by line id: added and changed lines in the order of
/// `to`, then removed lines in the order of `from`. Of lines with one id the first counts.
std::vector<LineChange> diffRevisions(const Revision& from, const Revision& to);
}  // namespace ombrix::MoveEvidence
