// The running process: its executable, its environment, unique names.
#pragma once

#include <optional>
#include <string>

namespace ombrix::Process {

/// The path of the running executable with links resolved; nothing when the system does not know.
std::optional<std::string> executable();

/// The variable's value, which may be empty; nothing when it is not set.
std::optional<std::string> environment(const std::string& name);

/// A random UUID in capitals: different for every call on every machine. Throws
/// `std::system_error` when the system has no random bytes.
std::string uniqueString();
}  // namespace ombrix::Process
