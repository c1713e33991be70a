// Named notifications with an optional string, heard by every program of the session that asks for
// them. There is no answer and no way to know whether anybody listened.
#pragma once

#include <optional>
#include <string_view>

namespace ombrix::NotificationCenter {

/// Posts a notification and returns once it has left this process. With no session bus, or one that
/// refuses or does not answer, it returns quietly, within half a second.
void post(std::string_view name, std::optional<std::string_view> object = std::nullopt);
}  // namespace ombrix::NotificationCenter
