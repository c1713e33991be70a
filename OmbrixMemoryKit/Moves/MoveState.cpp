#include "OmbrixMemoryKit/Moves/MoveState.h"

#include <cstddef>

namespace ombrix {

const Revision* MoveState::revision(std::optional<std::int64_t> index) const {
    if (!index || *index < 0) return nullptr;
    const auto place = static_cast<std::size_t>(*index);
    return place < revisions.size() ? &revisions[place] : nullptr;
}

std::string MoveState::encode() const {
    return Json::write(Json::toValue(*this), Json::Style::file);
}

MoveState MoveState::decode(std::string_view json) { return Json::decode<MoveState>(json); }

// ---- JSON -------------------------------------------------------------------------------------

Json::Value encode(const Delivery& delivery) {
    std::optional<std::string> to;
    if (delivery.kind == Delivery::Kind::handedOff) to = delivery.to;
    return Json::object({{"kind", delivery.kind}, {"to", to}});
}

Delivery decode(Json::As<Delivery>, const Json::Object& in) {
    const auto kind = in.required<std::string>("kind");
    const auto known = fromRawValue<Delivery::Kind>(kind);
    if (!known) in.fail("kind", "unknown delivery " + kind);
    if (*known != Delivery::Kind::handedOff) return {*known, {}};
    return {*known, in.required<std::string>("to")};
}

Json::Value encode(const MoveEvent& event) {
    return Json::object({{"at", event.at}, {"kind", event.kind}, {"detail", event.note}});
}

MoveEvent decode(Json::As<MoveEvent>, const Json::Object& in) {
    return {.at = in.required<std::string>("at"),
            .kind = in.required<MoveEventKind>("kind"),
            .note = in.optional<std::string>("detail")};
}

Json::Members encodeStored(const MoveState& state) {
    return *Json::object({{"moveId", state.moveId},
                          {"revisions", state.revisions},
                          {"current", state.current},
                          {"candidate", state.candidate},
                          {"edits", state.edits},
                          {"conflicts", state.conflicts},
                          {"delivery", state.delivery},
                          {"copiedAt", state.copiedAt},
                          {"obligation", state.obligation},
                          {"doneBy", state.doneBy},
                          {"dismissed", state.dismissed},
                          {"events", state.events}})
                .members();
}

MoveState decodeStored(const Json::Object& in) {
    using Texts = std::map<std::string, std::string>;
    return {.moveId = in.required<std::string>("moveId"),
            .preparation = Preparation::ready,
            .revisions = in.required<std::vector<Revision>>("revisions"),
            .current = in.required<std::int64_t>("current"),
            .candidate = in.optional<std::int64_t>("candidate"),
            .edits = in.required<Texts>("edits"),
            .conflicts = in.required<Texts>("conflicts"),
            .delivery = in.required<Delivery>("delivery"),
            .copiedAt = in.optional<std::string>("copiedAt"),
            .obligation = in.required<Obligation>("obligation"),
            .doneBy = in.optional<DoneBy>("doneBy"),
            .dismissed = in.required<bool>("dismissed"),
            .events = in.required<std::vector<MoveEvent>>("events")};
}

Json::Value encode(const MoveState& state) {
    auto fields = encodeStored(state);
    fields.emplace("preparation", Json::toValue(state.preparation));
    return fields;
}

MoveState decode(Json::As<MoveState>, const Json::Object& in) {
    MoveState state = decodeStored(in);
    state.preparation = in.required<Preparation>("preparation");
    return state;
}
}  // namespace ombrix
