// What has happened to a prepared move: its revisions, the user's edits, where it went and whether
// it is done. Four things change independently: preparation (was the work made), delivery (did it
// leave the application), obligation (is the commitment met) and `dismissed` (does the user want to
// see it). `MoveLifecycle` changes a state, `MoveStateRecord` is its file.
#pragma once

#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "OmbrixMemoryKit/Moves/MoveModels.h"
#include "OmbrixPlatform/EnumNames.h"
#include "OmbrixPlatform/Json.h"
#include "OmbrixPlatform/JsonDecoding.h"

namespace ombrix {

// ---- kinds; files hold the raw strings --------------------------------------------------------

enum class Preparation { preparing, ready, failed, paused };
constexpr auto rawValues(Preparation) {
    return EnumNames::table<Preparation>({{Preparation::preparing, "preparing"},
                                          {Preparation::ready, "ready"},
                                          {Preparation::failed, "failed"},
                                          {Preparation::paused, "paused"}});
}

/// Where the work went last. In JSON an object: {"kind": "handed-off", "to": "Notes"}.
struct Delivery {
    enum class Kind { none, copied, copyFailed, handedOff };

    Kind kind = Kind::none;
    std::string to;  ///< for `handedOff` alone
    bool operator==(const Delivery&) const = default;
};
constexpr auto rawValues(Delivery::Kind) {
    return EnumNames::table<Delivery::Kind>({{Delivery::Kind::none, "none"},
                                             {Delivery::Kind::copied, "copied"},
                                             {Delivery::Kind::copyFailed, "copy-failed"},
                                             {Delivery::Kind::handedOff, "handed-off"}});
}

enum class Obligation { open, done };
constexpr auto rawValues(Obligation) {
    return EnumNames::table<Obligation>({{Obligation::open, "open"}, {Obligation::done, "done"}});
}

/// Who says that an obligation is done: the user, or a later meeting.
enum class DoneBy { you, evidence };
constexpr auto rawValues(DoneBy) {
    return EnumNames::table<DoneBy>({{DoneBy::you, "you"}, {DoneBy::evidence, "evidence"}});
}

enum class MoveEventKind {
    prepared,
    edited,
    copied,
    regenerated,
    revised,
    adopted,
    kept,
    dismissed,
    restored,
    done,
    reopened,
    failed,
    paused,
    retried,
    copyFailed,
    usedNewLine,
    handedOff
};
constexpr auto rawValues(MoveEventKind) {
    using enum MoveEventKind;
    return EnumNames::table<MoveEventKind>({{prepared, "prepared"},
                                            {edited, "edited"},
                                            {copied, "copied"},
                                            {regenerated, "regenerated"},
                                            {revised, "revised"},
                                            {adopted, "adopted"},
                                            {kept, "kept"},
                                            {dismissed, "dismissed"},
                                            {restored, "restored"},
                                            {done, "done"},
                                            {reopened, "reopened"},
                                            {failed, "failed"},
                                            {paused, "paused"},
                                            {retried, "retried"},
                                            {copyFailed, "copy-failed"},
                                            {usedNewLine, "used-new-line"},
                                            {handedOff, "handed-off"}});
}

// ---- state ------------------------------------------------------------------------------------

struct MoveEvent {
    std::string at;  ///< an ISO 8601 instant, or the day that a correction names
    MoveEventKind kind = MoveEventKind::prepared;
    std::optional<std::string> note;  ///< "detail" in JSON
    bool operator==(const MoveEvent&) const = default;
};

struct MoveState {
    std::string moveId;
    Preparation preparation = Preparation::ready;
    std::vector<Revision> revisions;               ///< the first is the prepared move itself
    std::int64_t current = 0;                      ///< index of the revision that the user sees
    std::optional<std::int64_t> candidate;         ///< index of a revision that is offered
    std::map<std::string, std::string> edits;      ///< line id to the user's text
    std::map<std::string, std::string> conflicts;  ///< line id to the new text that an edit hides
    Delivery delivery;
    std::optional<std::string> copiedAt;  ///< the last copy that worked
    Obligation obligation = Obligation::open;
    std::optional<DoneBy> doneBy;
    bool dismissed = false;
    std::vector<MoveEvent> events;  ///< oldest first
    bool operator==(const MoveState&) const = default;

    /// The revision at an index; null when a file gave an index that no revision has.
    const Revision* revision(std::optional<std::int64_t> index) const;
    /// JSON in the style of files, with all fields.
    std::string encode() const;
    /// Throws `Json::SyntaxError` and `Json::DecodingError`.
    static MoveState decode(std::string_view json);
};

// ---- JSON -------------------------------------------------------------------------------------

Json::Value encode(const Delivery& delivery);
/// An unknown kind fails with "unknown delivery " and the kind.
Delivery decode(Json::As<Delivery>, const Json::Object& in);
Json::Value encode(const MoveEvent& event);
MoveEvent decode(Json::As<MoveEvent>, const Json::Object& in);
Json::Value encode(const MoveState& state);
MoveState decode(Json::As<MoveState>, const Json::Object& in);

/// The fields that a file of the state shares with the state: all but `preparation`, which is
/// `ready` in what is decoded.
Json::Members encodeStored(const MoveState& state);
MoveState decodeStored(const Json::Object& in);
}  // namespace ombrix
