// The desktop's own trash, from which a person can bring a file back.
#pragma once

#include <optional>
#include <string>

namespace ombrix::Trash {

/// Moves a file there. Nothing on success, otherwise what went wrong; the file then stands where it
/// was.
std::optional<std::string> move(const std::string& path);
}  // namespace ombrix::Trash
