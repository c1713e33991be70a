// What a model answers to the `prepare` recipe: the user's next moves out of one landed meeting. An
// answer is refused whole unless it passes `decode` (it has the recipe's form, its dates are days)
// and `validate` (every line cites a claim, every claim cites turns of the meeting); whoever asked
// the model calls both.
//
//   {"version": 1, "not_sure": [], "moves": [{"key": "send-the-deck", "kind": "message", ...}]}
#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <set>
#include <string>
#include <string_view>
#include <utility>
#include <variant>
#include <vector>

#include "OmbrixMemoryKit/Land/AnswerFault.h"
#include "OmbrixMemoryKit/Moves/MoveModels.h"
#include "OmbrixPlatform/EnumNames.h"
#include "OmbrixPlatform/Json.h"
#include "OmbrixPlatform/JsonDecoding.h"

namespace ombrix {

// ---- kinds, as the answer writes them ---------------------------------------------------------

enum class PrepareMoveKind { prompt, message, hold };
constexpr auto rawValues(PrepareMoveKind) {
    return EnumNames::table<PrepareMoveKind>({{PrepareMoveKind::prompt, "prompt"},
                                              {PrepareMoveKind::message, "message"},
                                              {PrepareMoveKind::hold, "hold"}});
}

enum class PrepareStance { stated, suggested };
constexpr auto rawValues(PrepareStance) {
    return EnumNames::table<PrepareStance>(
        {{PrepareStance::stated, "stated"}, {PrepareStance::suggested, "suggested"}});
}

enum class PrepareClaimRole { decided, constraint, ruledOut, open, context };
constexpr auto rawValues(PrepareClaimRole) {
    return EnumNames::table<PrepareClaimRole>({{PrepareClaimRole::decided, "decided"},
                                               {PrepareClaimRole::constraint, "constraint"},
                                               {PrepareClaimRole::ruledOut, "ruled-out"},
                                               {PrepareClaimRole::open, "open"},
                                               {PrepareClaimRole::context, "context"}});
}

// ---- the answer -------------------------------------------------------------------------------

// The parts of a move that the answer writes as files do.
using PrepareDue = MoveDue;
using PrepareLine = MoveLine;
using PrepareBlock = MoveBlock;
using PrepareUnresolved = Unresolved;
using PrepareEmail = EmailDraft;

struct PrepareClaim {
    std::string id;  ///< unique in its move
    std::string gist;
    PrepareClaimRole role = PrepareClaimRole::context;
    std::vector<std::string> turnIDs;  ///< "turn_ids": turns of the input's meeting, at least one
    bool operator==(const PrepareClaim&) const = default;
};

struct PrepareInvite {
    /// Ids of the claims that each field rests on.
    struct Cites {
        std::vector<std::string> date, time, with;
        bool operator==(const Cites&) const = default;
    };

    std::string title;
    std::string date;                 ///< a day
    std::optional<std::string> time;  ///< "HH:mm"
    std::optional<std::int64_t> minutes;
    std::vector<std::string> with;
    Cites cites;
    bool operator==(const PrepareInvite&) const = default;
};

struct PrepareMove {
    std::string key;                         ///< unique in the answer
    std::vector<std::string> commitmentIDs;  ///< "commitment_ids", at least one
    PrepareMoveKind kind = PrepareMoveKind::prompt;
    PrepareStance stance = PrepareStance::stated;
    std::string title;
    std::vector<std::string> recipients;
    std::optional<PrepareDue> due;
    std::optional<std::string> hedge, idea;
    std::vector<PrepareBlock> blocks;
    std::vector<PrepareUnresolved> unresolved;
    std::vector<PrepareClaim> claims;
    std::optional<PrepareInvite> invite;  ///< only of a hold
    std::optional<PrepareEmail> email;    ///< only of a message
    bool operator==(const PrepareMove&) const = default;
};

struct PrepareOutput {
    std::int64_t version = 1;
    std::vector<PrepareMove> moves;    ///< empty when the meeting asks for no work
    std::vector<std::string> notSure;  ///< "not_sure"
    bool operator==(const PrepareOutput&) const = default;

    class DecodeError;
    class CitationError;

    /// The record of an answer. Keys that the recipe does not name are refused at every level, and
    /// so is a key that is missing, also one that may be null. Throws `DecodeError` for the first
    /// fault: of the JSON, of the version, then move by move.
    static PrepareOutput decode(std::string_view json);

    /// Throws `CitationError` for the first fault. `turnIDs` are those of the input's meeting.
    /// Claim ids are local to their move. Looks at no date.
    void validate(const std::set<std::string, std::less<>>& turnIDs) const;

    /// Throws `CitationError` for the first move that serves a commitment which is not among
    /// `commitmentIDs`, those of the input.
    void validateCommitments(const std::set<std::string, std::less<>>& commitmentIDs) const;
};

/// Why `decode` refuses an answer.
class PrepareOutput::DecodeError : public RefusedAnswer {
  public:
    struct NotJSON {
        bool operator==(const NotJSON&) const = default;
    };
    struct UnsupportedVersion {
        std::int64_t version = 0;
        bool operator==(const UnsupportedVersion&) const = default;
    };
    /// `field` is "moves.due.iso" or "moves.invite.date".
    struct InvalidDate {
        std::string field, value;
        bool operator==(const InvalidDate&) const = default;
    };
    /// `field` is "moves.invite.time".
    struct InvalidTime {
        std::string field, value;
        bool operator==(const InvalidTime&) const = default;
    };
    /// An "invite" or an "email" (`field`) on another kind of move; `move` is its key.
    struct Misplaced {
        std::string field, move;
        bool operator==(const Misplaced&) const = default;
    };
    using Reason = std::variant<NotJSON, UnsupportedVersion, InvalidDate, InvalidTime, Misplaced>;

    DecodeError(Reason reason, AnswerFault fault)
        : RefusedAnswer(std::move(fault)), reason_(std::move(reason)) {}
    const Reason& reason() const { return reason_; }

  private:
    Reason reason_;
};

/// Why `validate` refuses an answer. `move` is a move's key, the others are ids.
class PrepareOutput::CitationError : public RefusedAnswer {
  public:
    struct DuplicateMoveKey {
        std::string key;
        bool operator==(const DuplicateMoveKey&) const = default;
    };
    struct NoCommitment {
        std::string move;
        bool operator==(const NoCommitment&) const = default;
    };
    struct DuplicateClaim {
        std::string move, claim;
        bool operator==(const DuplicateClaim&) const = default;
    };
    /// A claim without turns.
    struct Unciting {
        std::string move, claim;
        bool operator==(const Unciting&) const = default;
    };
    struct UnknownTurn {
        std::string move, claim, turnID;
        bool operator==(const UnknownTurn&) const = default;
    };
    /// A line without claims.
    struct UnclaimedLine {
        std::string move, line;
        bool operator==(const UnclaimedLine&) const = default;
    };
    /// `at` is the id of a line or of an unresolved item, or "invite.cites.date" and the like.
    struct UnknownClaim {
        std::string move, at, claimID;
        bool operator==(const UnknownClaim&) const = default;
    };
    /// Only `validateCommitments` throws it.
    struct UnknownCommitment {
        std::string move, commitmentID;
        bool operator==(const UnknownCommitment&) const = default;
    };
    using Reason = std::variant<DuplicateMoveKey, NoCommitment, DuplicateClaim, Unciting,
                                UnknownTurn, UnclaimedLine, UnknownClaim, UnknownCommitment>;

    CitationError(Reason reason, AnswerFault fault)
        : RefusedAnswer(std::move(fault)), reason_(std::move(reason)) {}
    const Reason& reason() const { return reason_; }

  private:
    Reason reason_;
};

Json::Value encode(const PrepareClaim& claim);
PrepareClaim decode(Json::As<PrepareClaim>, const Json::Object& in);
Json::Value encode(const PrepareInvite::Cites& cites);
PrepareInvite::Cites decode(Json::As<PrepareInvite::Cites>, const Json::Object& in);
Json::Value encode(const PrepareInvite& invite);
PrepareInvite decode(Json::As<PrepareInvite>, const Json::Object& in);
Json::Value encode(const PrepareMove& move);
PrepareMove decode(Json::As<PrepareMove>, const Json::Object& in);
Json::Value encode(const PrepareOutput& output);
/// The form alone, without the checks of `PrepareOutput::decode`.
PrepareOutput decode(Json::As<PrepareOutput>, const Json::Object& in);
}  // namespace ombrix
