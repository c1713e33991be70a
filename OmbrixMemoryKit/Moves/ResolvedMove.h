// A move with its state and its evidence as the transcripts stand now: all that a window or a file
// needs to show it. `MoveEvidence` makes it.
#pragma once

#include <cstddef>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "OmbrixMemoryKit/Moves/MoveSource.h"
#include "OmbrixMemoryKit/Moves/MoveState.h"
#include "OmbrixPlatform/EnumNames.h"

namespace ombrix {

/// `stale` when a citation no longer holds: its meeting or its turn is gone, or the turn's text has
/// changed.
enum class EvidenceStanding { verified, stale };
constexpr auto rawValues(EvidenceStanding) {
    return EnumNames::table<EvidenceStanding>(
        {{EvidenceStanding::verified, "verified"}, {EvidenceStanding::stale, "stale"}});
}

struct ResolvedLine {
    std::string id;
    std::string text;      ///< what the user sees: their edit, if there is one
    std::string baseText;  ///< the revision's
    bool edited = false;
    std::optional<std::string> conflict;  ///< the newer text that the edit hides
    std::vector<std::string> claimIds;
    std::vector<std::size_t> anchors;  ///< indexes of the exchanges that hold its claims, ascending
    bool operator==(const ResolvedLine&) const = default;
};

struct ResolvedBlock {
    std::string id;
    std::string label;
    std::vector<ResolvedLine> lines;
    bool operator==(const ResolvedBlock&) const = default;
};

struct ResolvedUnresolved {
    std::string id;
    std::string text;
    std::vector<std::string> claimIds;
    std::vector<std::size_t> anchors;  ///< as a line's
    bool operator==(const ResolvedUnresolved&) const = default;
};

/// A turn as the transcript has it now.
struct ResolvedTurn {
    std::string id;
    std::optional<double> atSec;  ///< seconds from the start of the recording
    std::string speaker;
    std::string text;
    bool cited = false;                 ///< otherwise it is there for the context
    std::vector<std::string> claimIds;  ///< the claims that cite it
    bool changed = false;               ///< its text is not the one that was cited
    bool operator==(const ResolvedTurn&) const = default;
};

/// A stretch of one meeting around cited turns.
struct ResolvedExchange {
    std::string key;  ///< unique in the move: the meeting's key, "#" and the first cited turn's id
    std::shared_ptr<const MoveSource> source;  ///< never null
    std::vector<ResolvedTurn> turns;
    std::vector<std::string> claimIds;  ///< the claims that cite its turns
    std::vector<std::size_t> anchors;   ///< the cited turns' indexes in the meeting, ascending
    bool earlier = false;               ///< one of its claims is
    bool superseded = false;            ///< one of its claims is
    /// Compares meetings by what they hold.
    bool operator==(const ResolvedExchange& other) const;
};

struct NumberedClaim {
    Claim claim;
    std::size_t n = 1;  ///< what the user sees
    bool operator==(const NumberedClaim&) const = default;
};

/// What a revision on offer does to one line.
struct LineChange {
    enum class Kind { added, removed, changed };

    std::string lineId;
    std::string blockLabel;
    Kind kind = Kind::added;
    std::optional<std::string> before;  ///< absent for `added`
    std::optional<std::string> after;   ///< absent for `removed`
    bool operator==(const LineChange&) const = default;
};

struct ResolvedMove {
    PreparedMove move;
    MoveState state;
    Revision revision;  ///< the current one
    // The revision's, or else the move's.
    std::string title;
    std::optional<std::vector<std::string>> recipients;
    std::optional<MoveDue> due;
    std::optional<Invite> invite;
    std::optional<EmailDraft> email;  ///< the move's
    std::vector<ResolvedBlock> blocks;
    std::vector<ResolvedUnresolved> unresolved;
    std::vector<NumberedClaim> claims;
    std::vector<ResolvedExchange> exchanges;
    std::optional<Revision> candidate;               ///< on offer
    std::optional<std::vector<LineChange>> changes;  ///< what it changes; there with a candidate
    EvidenceStanding evidence = EvidenceStanding::verified;
    std::shared_ptr<const MoveSource> source;  ///< the move's own meeting; null when it is gone

    /// All lines of all blocks, in order; shows the move's own.
    std::vector<const ResolvedLine*> lines() const;
};
}  // namespace ombrix
