// A prepared move is one piece of work that the user can pick up: a prompt for their tools, a
// message to send, or a hold for their calendar. Every line of it rests on claims, and every claim
// on turns of a transcript. The records here are plain data. They never change once they are made:
// what happens to a move is its state (MoveLifecycle.h).
//
// JSON mixes two styles of keys ("sourceId", "commitment_ids"); files hold them, so they stay. Each
// record has `encode` and `decode` beside it, as Json.h and JsonDecoding.h describe them. An absent
// optional has no key.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "OmbrixPlatform/EnumNames.h"
#include "OmbrixPlatform/Json.h"
#include "OmbrixPlatform/JsonDecoding.h"

namespace ombrix {

// ---- kinds; files hold the raw strings --------------------------------------------------------

enum class MoveKind { prompt, message, hold };
constexpr auto rawValues(MoveKind) {
    return EnumNames::table<MoveKind>(
        {{MoveKind::prompt, "prompt"}, {MoveKind::message, "message"}, {MoveKind::hold, "hold"}});
}
/// Any other string fails with "unknown move kind " and the string.
MoveKind decode(Json::As<MoveKind>, const Json::Element& in);

/// Whether a named person said it, or the model reads it so.
enum class Stance { stated, suggested };
constexpr auto rawValues(Stance) {
    return EnumNames::table<Stance>({{Stance::stated, "stated"}, {Stance::suggested, "suggested"}});
}

enum class ClaimRole { decided, constraint, open, context, ruledOut };
constexpr auto rawValues(ClaimRole) {
    return EnumNames::table<ClaimRole>({{ClaimRole::decided, "decided"},
                                        {ClaimRole::constraint, "constraint"},
                                        {ClaimRole::open, "open"},
                                        {ClaimRole::context, "context"},
                                        {ClaimRole::ruledOut, "ruled-out"}});
}

// ---- evidence ---------------------------------------------------------------------------------

/// Turns of one transcript.
struct EvidenceRef {
    std::string sourceId;              ///< the meeting's key
    std::vector<std::string> turnIds;  ///< of TranscriptTurnID.h; "turn_ids"
    bool operator==(const EvidenceRef&) const = default;
};

/// What lines rest on.
struct Claim {
    std::string id;  ///< unique in its move
    std::string gist;
    ClaimRole role = ClaimRole::context;
    std::vector<EvidenceRef> refs;
    bool earlier = false;     ///< it rests on an earlier meeting
    bool superseded = false;  ///< a later turn replaced it
    bool operator==(const Claim&) const = default;
};

// ---- work -------------------------------------------------------------------------------------

struct MoveLine {
    std::string id;
    std::string text;
    std::vector<std::string> claimIds;  ///< "claim_ids"
    bool operator==(const MoveLine&) const = default;
};

struct MoveBlock {
    std::string id;
    std::string label;  ///< empty: the lines are running text
    std::vector<MoveLine> lines;
    bool operator==(const MoveBlock&) const = default;
};

/// What the work needs and the meeting did not settle.
struct Unresolved {
    std::string id;
    std::string text;
    std::vector<std::string> claimIds;  ///< "claim_ids"; empty when it never came up
    bool operator==(const Unresolved&) const = default;
};

struct MoveDue {
    std::string iso;   ///< the day
    std::string said;  ///< the words it was said in
    bool operator==(const MoveDue&) const = default;
};

struct Invite {
    /// The claims that each field rests on.
    struct Cites {
        std::vector<std::string> date;
        std::optional<std::vector<std::string>> time;
        std::vector<std::string> with;
        bool operator==(const Cites&) const = default;
    };

    std::string title;
    std::string date;                     ///< a day
    std::optional<std::string> time;      ///< "HH:mm"
    std::optional<std::int64_t> minutes;  ///< how long
    std::vector<std::string> with;
    Cites cites;
    bool operator==(const Invite&) const = default;
};

struct EmailDraft {
    std::vector<std::string> to;  ///< empty when nobody said who
    std::string subject;
    bool operator==(const EmailDraft&) const = default;
};

struct PreparedMove {
    std::string id;                          ///< of `MoveID::make`
    std::string sourceId;                    ///< the key of its own meeting
    std::vector<std::string> commitmentIds;  ///< "commitment_ids": the commitments it serves
    MoveKind kind = MoveKind::prompt;
    Stance stance = Stance::stated;
    std::string title;
    /// Absent when nobody was named, which is not the same as empty.
    std::optional<std::vector<std::string>> recipients;
    std::optional<MoveDue> due;
    std::string preparedAt;  ///< "prepared_at": an ISO 8601 instant
    std::vector<MoveBlock> blocks;
    std::vector<Unresolved> unresolved;
    std::vector<Claim> claims;
    std::optional<std::string> hedge;  ///< why it is only a suggestion
    std::optional<std::string> idea;   ///< whose idea it was
    std::optional<Invite> invite;      ///< for a hold
    std::optional<EmailDraft> email;   ///< for a message
    bool operator==(const PreparedMove&) const = default;
};

/// A later version of a move's content.
struct Revision {
    /// Why it changed.
    struct Reason {
        std::string text;
        std::vector<std::string> claimIds;  ///< "claim_ids"
        bool operator==(const Reason&) const = default;
    };

    std::string id;     ///< unique in the move
    std::string label;  ///< what the user sees: "Prepared"
    std::string at;     ///< an ISO 8601 instant
    std::optional<Reason> reason;
    // These replace the move's own when they are present.
    std::optional<std::string> title;
    std::optional<std::vector<std::string>> recipients;
    std::optional<MoveDue> due;
    std::optional<Invite> invite;
    std::vector<MoveBlock> blocks;
    std::vector<Unresolved> unresolved;
    std::vector<Claim> claims;
    bool operator==(const Revision&) const = default;
};

namespace MoveID {

/// The id of a move, "mv-" and eight lower-case hexadecimal digits: "mv-1a2b3c4d". It depends on
/// nothing but the four arguments and not on the order of the commitments, so preparing a meeting
/// again gives the same work the same id.
std::string make(std::string_view meetingKey, std::vector<std::string> commitmentIDs, MoveKind kind,
                 std::string_view key);
}  // namespace MoveID

// ---- JSON -------------------------------------------------------------------------------------

Json::Value encode(const EvidenceRef& ref);
EvidenceRef decode(Json::As<EvidenceRef>, const Json::Object& in);
Json::Value encode(const Claim& claim);
Claim decode(Json::As<Claim>, const Json::Object& in);
Json::Value encode(const MoveLine& line);
MoveLine decode(Json::As<MoveLine>, const Json::Object& in);
Json::Value encode(const MoveBlock& block);
MoveBlock decode(Json::As<MoveBlock>, const Json::Object& in);
Json::Value encode(const Unresolved& item);
Unresolved decode(Json::As<Unresolved>, const Json::Object& in);
Json::Value encode(const MoveDue& due);
MoveDue decode(Json::As<MoveDue>, const Json::Object& in);
Json::Value encode(const Invite::Cites& cites);
Invite::Cites decode(Json::As<Invite::Cites>, const Json::Object& in);
Json::Value encode(const Invite& invite);
Invite decode(Json::As<Invite>, const Json::Object& in);
Json::Value encode(const EmailDraft& email);
EmailDraft decode(Json::As<EmailDraft>, const Json::Object& in);
Json::Value encode(const PreparedMove& move);
PreparedMove decode(Json::As<PreparedMove>, const Json::Object& in);
Json::Value encode(const Revision::Reason& reason);
Revision::Reason decode(Json::As<Revision::Reason>, const Json::Object& in);
Json::Value encode(const Revision& revision);
Revision decode(Json::As<Revision>, const Json::Object& in);
}  // namespace ombrix
