#include "OmbrixMemoryKit/Moves/MoveModels.h"

#include <algorithm>
#include <cstddef>

#include "OmbrixPlatform/Digest.h"
#include "OmbrixPlatform/Text.h"

namespace ombrix {
namespace {

using Strings = std::vector<std::string>;
}  // namespace

std::string MoveID::make(std::string_view meetingKey, Strings commitmentIDs, MoveKind kind,
                         std::string_view key) {
    constexpr std::string_view separator = "\x1f";
    constexpr std::size_t idBytes = 4;
    std::ranges::sort(commitmentIDs);
    const std::string commitments = Text::joined(commitmentIDs, ",");
    const std::string source = Text::joined(
        std::vector<std::string_view>{meetingKey, commitments, rawValue(kind), key}, separator);
    return "mv-" + Digest::hex(Digest::sha256(source).data(), idBytes);
}

MoveKind decode(Json::As<MoveKind>, const Json::Element& in) {
    const auto text = in.as<std::string>();
    const auto kind = fromRawValue<MoveKind>(text);
    if (!kind) in.fail("unknown move kind " + text);
    return *kind;
}

// ---- evidence ---------------------------------------------------------------------------------

Json::Value encode(const EvidenceRef& ref) {
    return Json::object({{"sourceId", ref.sourceId}, {"turn_ids", ref.turnIds}});
}

EvidenceRef decode(Json::As<EvidenceRef>, const Json::Object& in) {
    return {.sourceId = in.required<std::string>("sourceId"),
            .turnIds = in.required<Strings>("turn_ids")};
}

Json::Value encode(const Claim& claim) {
    return Json::object({{"id", claim.id},
                         {"gist", claim.gist},
                         {"role", claim.role},
                         {"refs", claim.refs},
                         {"earlier", claim.earlier},
                         {"superseded", claim.superseded}});
}

Claim decode(Json::As<Claim>, const Json::Object& in) {
    return {.id = in.required<std::string>("id"),
            .gist = in.required<std::string>("gist"),
            .role = in.required<ClaimRole>("role"),
            .refs = in.required<std::vector<EvidenceRef>>("refs"),
            .earlier = in.required<bool>("earlier"),
            .superseded = in.required<bool>("superseded")};
}

// ---- work -------------------------------------------------------------------------------------

Json::Value encode(const MoveLine& line) {
    return Json::object({{"id", line.id}, {"text", line.text}, {"claim_ids", line.claimIds}});
}

MoveLine decode(Json::As<MoveLine>, const Json::Object& in) {
    return {.id = in.required<std::string>("id"),
            .text = in.required<std::string>("text"),
            .claimIds = in.required<Strings>("claim_ids")};
}

Json::Value encode(const MoveBlock& block) {
    return Json::object({{"id", block.id}, {"label", block.label}, {"lines", block.lines}});
}

MoveBlock decode(Json::As<MoveBlock>, const Json::Object& in) {
    return {.id = in.required<std::string>("id"),
            .label = in.required<std::string>("label"),
            .lines = in.required<std::vector<MoveLine>>("lines")};
}

Json::Value encode(const Unresolved& item) {
    return Json::object({{"id", item.id}, {"text", item.text}, {"claim_ids", item.claimIds}});
}

Unresolved decode(Json::As<Unresolved>, const Json::Object& in) {
    return {.id = in.required<std::string>("id"),
            .text = in.required<std::string>("text"),
            .claimIds = in.required<Strings>("claim_ids")};
}

Json::Value encode(const MoveDue& due) {
    return Json::object({{"iso", due.iso}, {"said", due.said}});
}

MoveDue decode(Json::As<MoveDue>, const Json::Object& in) {
    return {.iso = in.required<std::string>("iso"), .said = in.required<std::string>("said")};
}

Json::Value encode(const Invite::Cites& cites) {
    return Json::object({{"date", cites.date}, {"time", cites.time}, {"with", cites.with}});
}

Invite::Cites decode(Json::As<Invite::Cites>, const Json::Object& in) {
    return {.date = in.required<Strings>("date"),
            .time = in.optional<Strings>("time"),
            .with = in.required<Strings>("with")};
}

Json::Value encode(const Invite& invite) {
    return Json::object({{"title", invite.title},
                         {"date", invite.date},
                         {"time", invite.time},
                         {"minutes", invite.minutes},
                         {"with", invite.with},
                         {"cites", invite.cites}});
}

Invite decode(Json::As<Invite>, const Json::Object& in) {
    return {.title = in.required<std::string>("title"),
            .date = in.required<std::string>("date"),
            .time = in.optional<std::string>("time"),
            .minutes = in.optional<std::int64_t>("minutes"),
            .with = in.required<Strings>("with"),
            .cites = in.required<Invite::Cites>("cites")};
}

Json::Value encode(const EmailDraft& email) {
    return Json::object({{"to", email.to}, {"subject", email.subject}});
}

EmailDraft decode(Json::As<EmailDraft>, const Json::Object& in) {
    return {.to = in.required<Strings>("to"), .subject = in.required<std::string>("subject")};
}

// ---- moves and revisions ----------------------------------------------------------------------

Json::Value encode(const PreparedMove& move) {
    return Json::object({{"id", move.id},
                         {"sourceId", move.sourceId},
                         {"commitment_ids", move.commitmentIds},
                         {"kind", move.kind},
                         {"stance", move.stance},
                         {"title", move.title},
                         {"recipients", move.recipients},
                         {"due", move.due},
                         {"prepared_at", move.preparedAt},
                         {"blocks", move.blocks},
                         {"unresolved", move.unresolved},
                         {"claims", move.claims},
                         {"hedge", move.hedge},
                         {"idea", move.idea},
                         {"invite", move.invite},
                         {"email", move.email}});
}

PreparedMove decode(Json::As<PreparedMove>, const Json::Object& in) {
    return {.id = in.required<std::string>("id"),
            .sourceId = in.required<std::string>("sourceId"),
            .commitmentIds = in.required<Strings>("commitment_ids"),
            .kind = in.required<MoveKind>("kind"),
            .stance = in.required<Stance>("stance"),
            .title = in.required<std::string>("title"),
            .recipients = in.optional<Strings>("recipients"),
            .due = in.optional<MoveDue>("due"),
            .preparedAt = in.required<std::string>("prepared_at"),
            .blocks = in.required<std::vector<MoveBlock>>("blocks"),
            .unresolved = in.required<std::vector<Unresolved>>("unresolved"),
            .claims = in.required<std::vector<Claim>>("claims"),
            .hedge = in.optional<std::string>("hedge"),
            .idea = in.optional<std::string>("idea"),
            .invite = in.optional<Invite>("invite"),
            .email = in.optional<EmailDraft>("email")};
}

Json::Value encode(const Revision::Reason& reason) {
    return Json::object({{"text", reason.text}, {"claim_ids", reason.claimIds}});
}

Revision::Reason decode(Json::As<Revision::Reason>, const Json::Object& in) {
    return {.text = in.required<std::string>("text"),
            .claimIds = in.required<Strings>("claim_ids")};
}

Json::Value encode(const Revision& revision) {
    return Json::object({{"id", revision.id},
                         {"label", revision.label},
                         {"at", revision.at},
                         {"reason", revision.reason},
                         {"title", revision.title},
                         {"recipients", revision.recipients},
                         {"due", revision.due},
                         {"invite", revision.invite},
                         {"blocks", revision.blocks},
                         {"unresolved", revision.unresolved},
                         {"claims", revision.claims}});
}

Revision decode(Json::As<Revision>, const Json::Object& in) {
    return {.id = in.required<std::string>("id"),
            .label = in.required<std::string>("label"),
            .at = in.required<std::string>("at"),
            .reason = in.optional<Revision::Reason>("reason"),
            .title = in.optional<std::string>("title"),
            .recipients = in.optional<Strings>("recipients"),
            .due = in.optional<MoveDue>("due"),
            .invite = in.optional<Invite>("invite"),
            .blocks = in.required<std::vector<MoveBlock>>("blocks"),
            .unresolved = in.required<std::vector<Unresolved>>("unresolved"),
            .claims = in.required<std::vector<Claim>>("claims")};
}
}  // namespace ombrix
