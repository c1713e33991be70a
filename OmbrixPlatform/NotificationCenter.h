// Notifications with a name and an optional string, sent to every program of the desktop session
// that subscribes. There is no answer, and no way to know whether anyone received one.
#pragma once

#include <optional>
#include <string_view>

namespace ombrix::NotificationCenter {

/// Posts a notification and returns when it has left this process. Never fails: without a session
/// bus, or with one that refuses or does not answer, it returns within half a second; with a slow
/// one, within a second.
void post(std::string_view name, std::optional<std::string_view> object = std::nullopt);
}  // namespace ombrix::NotificationCenter
