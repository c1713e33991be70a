#include "OmbrixMemoryKit/Moves/MoveStateRecord.h"

#include <utility>

namespace ombrix {

MoveStateRecord::MoveStateRecord(MoveState state, std::string sourceId)
    : stored_(std::move(state)), sourceId_(std::move(sourceId)) {
    stored_.preparation = Preparation::ready;
    auto& events = stored_.events;
    if (events.size() > maximalEvents)
        events.erase(events.begin(), events.end() - static_cast<std::ptrdiff_t>(maximalEvents));
}

MoveState MoveStateRecord::state(Preparation preparation) const {
    MoveState state = stored_;
    state.preparation = preparation;
    return state;
}

std::string MoveStateRecord::encode() const {
    auto fields = encodeStored(stored_);
    fields.emplace("schema", schema);
    fields.emplace("sourceId", sourceId_);
    return Json::write(fields, Json::Style::file);
}

MoveStateRecord decode(Json::As<MoveStateRecord>, const Json::Object& in) {
    MoveStateRecord record;
    record.stored_ = decodeStored(in);
    record.sourceId_ = in.required<std::string>("sourceId");
    auto found = in.required<std::string>("schema");
    if (found != MoveStateRecord::schema) throw UnsupportedSchema(std::move(found));
    return record;
}

MoveStateRecord MoveStateRecord::decode(std::string_view json) {
    return Json::decode<MoveStateRecord>(json);
}
}  // namespace ombrix
