#include "OmbrixMemoryKit/Land/LandSidecar.h"

#include <utility>

namespace ombrix {

std::string LandSidecar::encode() const {
    return Json::write(ombrix::encode(*this), Json::Style::file);
}

LandSidecar LandSidecar::decode(std::string_view bytes) { return Json::decode<LandSidecar>(bytes); }

std::string LandSidecar::fileName(std::string_view meetingKey) {
    return std::string(meetingKey) + ".json";
}

Json::Value encode(LandSidecar sidecar) {
    return Json::object({{"schema", std::move(sidecar.schema)},
                         {"meetingKey", std::move(sidecar.meetingKey)},
                         {"contentFingerprint", std::move(sidecar.contentFingerprint)},
                         {"relativePath", std::move(sidecar.relativePath)},
                         {"title", std::move(sidecar.title)},
                         {"date", std::move(sidecar.date)},
                         {"participants", std::move(sidecar.participants)},
                         {"landedAt", sidecar.landedAt},
                         {"route", std::move(sidecar.route)},
                         {"model", std::move(sidecar.model)},
                         {"recipeVersion", std::move(sidecar.recipeVersion)},
                         {"inputHash", std::move(sidecar.inputHash)},
                         {"output", std::move(sidecar.output)}});
}

LandSidecar decode(Json::As<LandSidecar>, const Json::Object& in) {
    return {.schema = in.required<std::string>("schema"),
            .meetingKey = in.required<std::string>("meetingKey"),
            .contentFingerprint = in.required<std::string>("contentFingerprint"),
            .relativePath = in.required<std::string>("relativePath"),
            .title = in.required<std::string>("title"),
            .date = in.required<std::string>("date"),
            .participants = in.required<std::vector<std::string>>("participants"),
            .landedAt = in.required<Instant>("landedAt"),
            .route = in.required<std::string>("route"),
            .model = in.required<std::string>("model"),
            .recipeVersion = in.required<std::string>("recipeVersion"),
            .inputHash = in.required<std::string>("inputHash"),
            .output = in.required<LandOutput>("output")};
}
}  // namespace ombrix
