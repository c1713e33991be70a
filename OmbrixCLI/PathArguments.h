// Paths as a person types and reads them.
#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "OmbrixCLI/CLIError.h"

namespace ombrix {

/// An absolute path without a trailing slash, with the home folder for a leading "~"; nothing
/// unless `path` begins with "/" or "~/" or is "~".
std::optional<std::string> expandedPath(std::string_view path);

/// The failure for a `--folder` that is no folder.
CLIError folderNotFound(const std::string& given);

/// A path or a title as one line of valid text: each control character (C0, DEL and C1), line
/// breaks among them, is a blank, so that it cannot look like a line of output or command the
/// terminal. Linear.
std::string printable(std::string_view given);
}  // namespace ombrix
