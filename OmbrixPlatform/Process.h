// What the operating system knows of the running process.
#pragma once

#include <optional>
#include <string>

namespace ombrix::Process {

/// The path of the running executable, links resolved; nothing when the system does not tell.
std::optional<std::string> executable();

/// The variable's value, also when it is empty; nothing when it is not set.
std::optional<std::string> environment(const std::string& name);

/// New for every call, on any machine; hexadecimal digits and hyphens.
std::string uniqueString();
}  // namespace ombrix::Process
