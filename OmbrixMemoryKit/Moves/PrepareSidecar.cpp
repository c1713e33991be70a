#include "OmbrixMemoryKit/Moves/PrepareSidecar.h"

#include <algorithm>
#include <utility>

namespace ombrix {
namespace {

/// The value of another enumeration with the same raw string.
template <typename To, typename From>
constexpr To sameRawValue(From value) {
    static_assert(std::ranges::all_of(EnumNames::rows<From>, [](const auto& row) {
        return fromRawValue<To>(row.second).has_value();
    }));
    return *fromRawValue<To>(rawValue(value));
}

Claim claimOf(PrepareClaim claim, const std::string& meetingKey) {
    return {.id = std::move(claim.id),
            .gist = std::move(claim.gist),
            .role = PrepareMapping::role(claim.role),
            .refs = {{meetingKey, std::move(claim.turnIDs)}},
            .earlier = false,
            .superseded = false};
}

std::optional<std::vector<std::string>> absentWhenEmpty(std::vector<std::string> list) {
    if (list.empty()) return std::nullopt;
    return list;
}

Invite inviteOf(PrepareInvite invite) {
    return {.title = std::move(invite.title),
            .date = std::move(invite.date),
            .time = std::move(invite.time),
            .minutes = invite.minutes,
            .with = std::move(invite.with),
            .cites = {.date = std::move(invite.cites.date),
                      .time = absentWhenEmpty(std::move(invite.cites.time)),
                      .with = std::move(invite.cites.with)}};
}
}  // namespace

// ---- JSON -------------------------------------------------------------------------------------

std::string PrepareSidecar::encode() const {
    return Json::write(Json::toValue(*this), Json::Style::file);
}

PrepareSidecar PrepareSidecar::decode(std::string_view json) {
    return Json::decode<PrepareSidecar>(json);
}

Json::Value encode(const PrepareSidecar& sidecar) {
    return Json::object({{"schema", PrepareSidecar::schema},
                         {"meetingKey", sidecar.meetingKey},
                         {"contentFingerprint", sidecar.contentFingerprint},
                         {"relativePath", sidecar.relativePath},
                         {"title", sidecar.title},
                         {"date", sidecar.date},
                         {"preparedAt", sidecar.preparedAt},
                         {"route", sidecar.route},
                         {"model", sidecar.model},
                         {"recipeVersion", sidecar.recipeVersion},
                         {"inputHash", sidecar.inputHash},
                         {"output", sidecar.output}});
}

PrepareSidecar decode(Json::As<PrepareSidecar>, const Json::Object& in) {
    PrepareSidecar sidecar{.meetingKey = in.required<std::string>("meetingKey"),
                           .contentFingerprint = in.required<std::string>("contentFingerprint"),
                           .relativePath = in.required<std::string>("relativePath"),
                           .title = in.required<std::string>("title"),
                           .date = in.required<std::string>("date"),
                           .preparedAt = in.required<Instant>("preparedAt"),
                           .route = in.required<std::string>("route"),
                           .model = in.required<std::string>("model"),
                           .recipeVersion = in.required<std::string>("recipeVersion"),
                           .inputHash = in.required<std::string>("inputHash"),
                           .output = in.required<PrepareOutput>("output")};
    auto found = in.required<std::string>("schema");
    if (found != PrepareSidecar::schema) throw UnsupportedSchema(std::move(found));
    return sidecar;
}

// ---- mapping ----------------------------------------------------------------------------------

namespace PrepareMapping {

MoveKind kind(PrepareMoveKind kind) { return sameRawValue<MoveKind>(kind); }
Stance stance(PrepareStance stance) { return sameRawValue<Stance>(stance); }
ClaimRole role(PrepareClaimRole role) { return sameRawValue<ClaimRole>(role); }

PreparedMove move(PrepareMove move, std::string meetingKey, std::string preparedAt) {
    PreparedMove result;
    result.kind = kind(move.kind);
    result.id = MoveID::make(meetingKey, move.commitmentIDs, result.kind, move.key);
    result.commitmentIds = std::move(move.commitmentIDs);
    result.stance = stance(move.stance);
    result.title = std::move(move.title);
    result.recipients = absentWhenEmpty(std::move(move.recipients));
    result.due = std::move(move.due);
    result.preparedAt = std::move(preparedAt);
    result.blocks = std::move(move.blocks);
    result.unresolved = std::move(move.unresolved);
    result.claims.reserve(move.claims.size());
    for (auto& claim : move.claims) result.claims.push_back(claimOf(std::move(claim), meetingKey));
    result.hedge = std::move(move.hedge);
    result.idea = std::move(move.idea);
    if (move.invite) result.invite = inviteOf(std::move(*move.invite));
    result.email = std::move(move.email);
    result.sourceId = std::move(meetingKey);
    return result;
}

std::vector<PreparedMove> moves(PrepareOutput output, const std::string& meetingKey,
                                const std::string& preparedAt) {
    std::vector<PreparedMove> result;
    result.reserve(output.moves.size());
    for (auto& each : output.moves) result.push_back(move(std::move(each), meetingKey, preparedAt));
    return result;
}

Revision revision(const PreparedMove& move, std::string id, std::string label, std::string at,
                  std::optional<Revision::Reason> reason) {
    return {.id = std::move(id),
            .label = std::move(label),
            .at = std::move(at),
            .reason = std::move(reason),
            .title = move.title,
            .recipients = move.recipients,
            .due = move.due,
            .invite = move.invite,
            .blocks = move.blocks,
            .unresolved = move.unresolved,
            .claims = move.claims};
}
}  // namespace PrepareMapping
}  // namespace ombrix
