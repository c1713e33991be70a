#include "OmbrixMemoryKit/Moves/PrepareOutput.h"

#include <cstddef>

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

using Rule = AnswerFault::Rule;
using AnswerPath::inQuotes;
using AnswerPath::item;

AnswerFault fault(Rule rule, std::string path, std::string problem, std::string_view text = {}) {
    return {.rule = rule,
            .path = std::move(path),
            .problem = std::move(problem),
            .text = std::string(text)};
}

void requireDay(const char* field, const std::string& path, const std::string& value) {
    if (!ISODate::isValid(value))
        throw DecodeError(DecodeError::InvalidDate{field, value}, notADay(path, value));
}

/// Of a part that another kind of move has.
DecodeError misplaced(const char* field, const char* kind, const PrepareMove& move,
                      const std::string& path) {
    return {DecodeError::Misplaced{field, move.key},
            fault(Rule::kind, path + "." + field,
                  "only a " + std::string(kind) + " has one; write null, or another kind",
                  rawValue(move.kind))};
}

void checkForm(const PrepareMove& move, const std::string& path) {
    if (move.due) requireDay("moves.due.iso", path + ".due.iso", move.due->iso);
    if (move.invite) {
        if (move.kind != PrepareMoveKind::hold) throw misplaced("invite", "hold", move, path);
        requireDay("moves.invite.date", path + ".invite.date", move.invite->date);
        if (const auto& time = move.invite->time; time && !isTime(*time))
            throw DecodeError(DecodeError::InvalidTime{"moves.invite.time", *time},
                              fault(Rule::time, path + ".invite.time",
                                    inQuotes(*time) + " is no time; write HH:mm, or null", *time));
    }
    if (move.email && move.kind != PrepareMoveKind::message)
        throw misplaced("email", "message", move, path);
}

// ---- citations --------------------------------------------------------------------------------

using IDs = std::set<std::string, std::less<>>;

/// Checks one move; `path_` leads to it.
class CitationCheck {
  public:
    CitationCheck(const PrepareMove& move, std::size_t index)
        : move_(move), path_(item("moves", index)) {}

    void run(const IDs& turnIDs) {
        if (move_.commitmentIDs.empty())
            refuse(CitationError::NoCommitment{move_.key}, ".commitment_ids",
                   "none, and a move serves at least one commitment of the input");
        checkClaims(turnIDs);
        for (std::size_t i = 0; i < move_.blocks.size(); ++i)
            checkLines(move_.blocks[i], item(".blocks", i) + ".lines");
        for (std::size_t i = 0; i < move_.unresolved.size(); ++i) {
            const auto& open = move_.unresolved[i];
            requireKnown(open.claimIds, open.id, item(".unresolved", i) + ".claim_ids");
        }
        if (!move_.invite) return;
        requireKnown(move_.invite->cites.date, "invite.cites.date", ".invite.cites.date");
        requireKnown(move_.invite->cites.time, "invite.cites.time", ".invite.cites.time");
        requireKnown(move_.invite->cites.with, "invite.cites.with", ".invite.cites.with");
    }

    void runCommitments(const IDs& commitmentIDs) const {
        for (std::size_t i = 0; i < move_.commitmentIDs.size(); ++i) {
            const auto& id = move_.commitmentIDs[i];
            if (commitmentIDs.contains(id)) continue;
            refuse(CitationError::UnknownCommitment{move_.key, id}, item(".commitment_ids", i),
                   "no commitment " + inQuotes(id) + " in the input", id);
        }
    }

    [[noreturn]] void refuse(CitationError::Reason reason, const std::string& at,
                             std::string problem, std::string_view text = {},
                             Rule rule = Rule::citation) const {
        throw CitationError(std::move(reason), fault(rule, path_ + at, std::move(problem), text));
    }

  private:
    void checkClaims(const IDs& turnIDs) {
        for (std::size_t i = 0; i < move_.claims.size(); ++i) {
            const auto& claim = move_.claims[i];
            const auto at = item(".claims", i);
            if (!claims_.insert(claim.id).second)
                refuse(CitationError::DuplicateClaim{move_.key, claim.id}, at + ".id",
                       "another claim of this move is called " + inQuotes(claim.id), claim.id,
                       Rule::unique);
            if (claim.turnIDs.empty())
                refuse(CitationError::Unciting{move_.key, claim.id}, at + ".turn_ids",
                       "none, and a claim rests on at least one turn");
            for (std::size_t j = 0; j < claim.turnIDs.size(); ++j) {
                const auto& turn = claim.turnIDs[j];
                if (turnIDs.contains(turn)) continue;
                refuse(CitationError::UnknownTurn{move_.key, claim.id, turn},
                       item(at + ".turn_ids", j), "no turn " + inQuotes(turn) + " in the input",
                       turn);
            }
        }
    }

    void checkLines(const PrepareBlock& block, const std::string& at) const {
        for (std::size_t i = 0; i < block.lines.size(); ++i) {
            const auto& line = block.lines[i];
            const auto path = item(at, i) + ".claim_ids";
            if (line.claimIds.empty())
                refuse(CitationError::UnclaimedLine{move_.key, line.id}, path,
                       "none, and a line rests on at least one claim");
            requireKnown(line.claimIds, line.id, path);
        }
    }

    void requireKnown(const Strings& cited, std::string_view where, const std::string& at) const {
        for (std::size_t i = 0; i < cited.size(); ++i)
            if (!claims_.contains(cited[i]))
                refuse(CitationError::UnknownClaim{move_.key, std::string(where), cited[i]},
                       item(at, i), "no claim " + inQuotes(cited[i]) + " in this move", cited[i]);
    }

    const PrepareMove& move_;
    std::string path_;
    IDs claims_;
};

PrepareOutput shapeOf(std::string_view json) {
    try {
        return Json::decode<PrepareOutput>(json, Json::Reading::answer);
    } catch (const Json::SyntaxError&) {
        throw DecodeError(DecodeError::NotJSON{}, AnswerFault::ofText(json));
    } catch (const Json::DecodingError& error) {
        throw DecodeError(DecodeError::NotJSON{}, AnswerFault::of(error));
    }
}
}  // namespace

PrepareOutput PrepareOutput::decode(std::string_view json) {
    auto output = shapeOf(json);
    if (const auto text = std::to_string(output.version); output.version != 1)
        throw DecodeError(DecodeError::UnsupportedVersion{output.version},
                          fault(Rule::version, "version", "must be 1, not " + text, text));
    for (std::size_t i = 0; i < output.moves.size(); ++i)
        checkForm(output.moves[i], item("moves", i));
    return output;
}

void PrepareOutput::validate(const IDs& turnIDs) const {
    IDs keys;
    for (std::size_t i = 0; i < moves.size(); ++i) {
        CitationCheck check(moves[i], i);
        if (const auto& key = moves[i].key; !keys.insert(key).second)
            check.refuse(CitationError::DuplicateMoveKey{key}, ".key",
                         "another move is called " + inQuotes(key), key, Rule::unique);
        check.run(turnIDs);
    }
}

void PrepareOutput::validateCommitments(const IDs& commitmentIDs) const {
    for (std::size_t i = 0; i < moves.size(); ++i)
        CitationCheck(moves[i], i).runCommitments(commitmentIDs);
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
