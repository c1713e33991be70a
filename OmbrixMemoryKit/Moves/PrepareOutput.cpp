#include "OmbrixMemoryKit/Moves/PrepareOutput.h"

#include "OmbrixMemoryKit/Identity/ISODate.h"
#include "OmbrixPlatform/Characters.h"
#include "OmbrixPlatform/Numbers.h"
#include "OmbrixPlatform/Text.h"

namespace ombrix {
namespace {

using Strings = std::vector<std::string>;
using DecodeError = PrepareOutput::DecodeError;
using CitationError = PrepareOutput::CitationError;

// ---- dates and places -------------------------------------------------------------------------

bool isTime(std::string_view text) {
    const auto pieces = Text::split(text, ":");
    if (pieces.size() != 2) return false;
    for (const auto piece : pieces)
        if (Characters::count(piece) != 2) return false;
    const auto hours = Numbers::parseInteger<int>(pieces[0]);
    const auto minutes = Numbers::parseInteger<int>(pieces[1]);
    return hours && minutes && *hours <= 23 && *minutes < 60;
}

void requireDay(const char* field, const std::string& value) {
    if (!ISODate::isValid(value)) throw DecodeError(DecodeError::InvalidDate{field, value});
}

void checkForm(const PrepareMove& move) {
    if (move.due) requireDay("moves.due.iso", move.due->iso);
    if (move.invite) {
        if (move.kind != PrepareMoveKind::hold)
            throw DecodeError(DecodeError::Misplaced{"invite", move.key});
        requireDay("moves.invite.date", move.invite->date);
        if (move.invite->time && !isTime(*move.invite->time))
            throw DecodeError(DecodeError::InvalidTime{"moves.invite.time", *move.invite->time});
    }
    if (move.email && move.kind != PrepareMoveKind::message)
        throw DecodeError(DecodeError::Misplaced{"email", move.key});
}

// ---- citations --------------------------------------------------------------------------------

using IDs = std::set<std::string, std::less<>>;

/// The ids of the move's claims.
IDs checkClaims(const PrepareMove& move, const IDs& turnIDs) {
    IDs claims;
    for (const auto& claim : move.claims) {
        if (!claims.insert(claim.id).second)
            throw CitationError(CitationError::DuplicateClaim{move.key, claim.id});
        if (claim.turnIDs.empty()) throw CitationError(CitationError::Unciting{move.key, claim.id});
        for (const auto& turn : claim.turnIDs)
            if (!turnIDs.contains(turn))
                throw CitationError(CitationError::UnknownTurn{move.key, claim.id, turn});
    }
    return claims;
}

void checkCitations(const PrepareMove& move, const IDs& turnIDs) {
    if (move.commitmentIDs.empty()) throw CitationError(CitationError::NoCommitment{move.key});
    const IDs claims = checkClaims(move, turnIDs);
    const auto requireKnown = [&](const Strings& cited, std::string_view at) {
        for (const auto& id : cited)
            if (!claims.contains(id))
                throw CitationError(CitationError::UnknownClaim{move.key, std::string(at), id});
    };
    for (const auto& block : move.blocks) {
        for (const auto& line : block.lines) {
            if (line.claimIds.empty())
                throw CitationError(CitationError::UnclaimedLine{move.key, line.id});
            requireKnown(line.claimIds, line.id);
        }
    }
    for (const auto& item : move.unresolved) requireKnown(item.claimIds, item.id);
    if (move.invite) {
        requireKnown(move.invite->cites.date, "invite.cites.date");
        requireKnown(move.invite->cites.time, "invite.cites.time");
        requireKnown(move.invite->cites.with, "invite.cites.with");
    }
}
}  // namespace

PrepareOutput PrepareOutput::decode(std::string_view json) {
    const auto output = [json] {
        try {
            return Json::decode<PrepareOutput>(json, Json::Reading::answer);
        } catch (const Json::SyntaxError&) {
        } catch (const Json::DecodingError&) {
        }
        throw DecodeError(DecodeError::NotJSON{});
    }();
    if (output.version != 1) throw DecodeError(DecodeError::UnsupportedVersion{output.version});
    for (const auto& move : output.moves) checkForm(move);
    return output;
}

void PrepareOutput::validate(const IDs& turnIDs) const {
    IDs keys;
    for (const auto& move : moves) {
        if (!keys.insert(move.key).second)
            throw CitationError(CitationError::DuplicateMoveKey{move.key});
        checkCitations(move, turnIDs);
    }
}

// ---- JSON -------------------------------------------------------------------------------------

Json::Value encode(const PrepareClaim& claim) {
    return Json::object({{"id", claim.id},
                         {"gist", claim.gist},
                         {"role", claim.role},
                         {"turn_ids", claim.turnIDs}});
}

PrepareClaim decode(Json::As<PrepareClaim>, const Json::Object& in) {
    return {.id = in.required<std::string>("id"),
            .gist = in.required<std::string>("gist"),
            .role = in.required<PrepareClaimRole>("role"),
            .turnIDs = in.required<Strings>("turn_ids")};
}

Json::Value encode(const PrepareInvite::Cites& cites) {
    return Json::object({{"date", cites.date}, {"time", cites.time}, {"with", cites.with}});
}

PrepareInvite::Cites decode(Json::As<PrepareInvite::Cites>, const Json::Object& in) {
    return {.date = in.required<Strings>("date"),
            .time = in.required<Strings>("time"),
            .with = in.required<Strings>("with")};
}

Json::Value encode(const PrepareInvite& invite) {
    return Json::object({{"title", invite.title},
                         {"date", invite.date},
                         {"time", invite.time},
                         {"minutes", invite.minutes},
                         {"with", invite.with},
                         {"cites", invite.cites}});
}

PrepareInvite decode(Json::As<PrepareInvite>, const Json::Object& in) {
    return {.title = in.required<std::string>("title"),
            .date = in.required<std::string>("date"),
            .time = in.optional<std::string>("time"),
            .minutes = in.optional<std::int64_t>("minutes"),
            .with = in.required<Strings>("with"),
            .cites = in.required<PrepareInvite::Cites>("cites")};
}

Json::Value encode(const PrepareMove& move) {
    return Json::object({{"key", move.key},
                         {"commitment_ids", move.commitmentIDs},
                         {"kind", move.kind},
                         {"stance", move.stance},
                         {"title", move.title},
                         {"recipients", move.recipients},
                         {"due", move.due},
                         {"hedge", move.hedge},
                         {"idea", move.idea},
                         {"blocks", move.blocks},
                         {"unresolved", move.unresolved},
                         {"claims", move.claims},
                         {"invite", move.invite},
                         {"email", move.email}});
}

PrepareMove decode(Json::As<PrepareMove>, const Json::Object& in) {
    return {.key = in.required<std::string>("key"),
            .commitmentIDs = in.required<Strings>("commitment_ids"),
            .kind = in.required<PrepareMoveKind>("kind"),
            .stance = in.required<PrepareStance>("stance"),
            .title = in.required<std::string>("title"),
            .recipients = in.required<Strings>("recipients"),
            .due = in.optional<PrepareDue>("due"),
            .hedge = in.optional<std::string>("hedge"),
            .idea = in.optional<std::string>("idea"),
            .blocks = in.required<std::vector<PrepareBlock>>("blocks"),
            .unresolved = in.required<std::vector<PrepareUnresolved>>("unresolved"),
            .claims = in.required<std::vector<PrepareClaim>>("claims"),
            .invite = in.optional<PrepareInvite>("invite"),
            .email = in.optional<PrepareEmail>("email")};
}

Json::Value encode(const PrepareOutput& output) {
    return Json::object(
        {{"version", output.version}, {"moves", output.moves}, {"not_sure", output.notSure}});
}

PrepareOutput decode(Json::As<PrepareOutput>, const Json::Object& in) {
    return {.version = in.required<std::int64_t>("version"),
            .moves = in.required<std::vector<PrepareMove>>("moves"),
            .notSure = in.required<Strings>("not_sure")};
}
}  // namespace ombrix
