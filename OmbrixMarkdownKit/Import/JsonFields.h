// Some members of a JSON object that is read without a schema.
#pragma once

#include <algorithm>
#include <array>
#include <cstddef>
#include <optional>
#include <span>
#include <string_view>

#include "OmbrixPlatform/JsonDocument.h"

namespace ombrix::TranscriptImport {

/// The members of `object` under `keys`, in the order of `keys`; none where a key is missing or
/// `object` is something else. Looks at each member once; of a key given twice the last one counts.
template <std::size_t count>
std::array<std::optional<Json::Node>, count> fields(
    const Json::Node& object, const std::array<std::string_view, count>& keys) {
    std::array<std::optional<Json::Node>, count> found;
    for (const auto& [name, value] : object.members()) {
        const auto key = std::ranges::find(keys, name);
        if (key != keys.end()) found[static_cast<std::size_t>(key - keys.begin())] = value;
    }
    return found;
}

inline std::optional<std::string_view> stringIn(const std::optional<Json::Node>& field) {
    return field ? field->string() : std::nullopt;
}

/// The first of the fields that is a string, even an empty one.
inline std::optional<std::string_view> firstString(
    std::span<const std::optional<Json::Node>> fields) {
    for (const auto& field : fields)
        if (const auto text = stringIn(field)) return text;
    return std::nullopt;
}
}  // namespace ombrix::TranscriptImport
