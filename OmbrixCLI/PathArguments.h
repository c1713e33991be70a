// Paths as a person types and reads them.
#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "OmbrixCLI/CLIError.h"

namespace ombrix {

/// An absolute path without a trailing slash, with the home folder for a leading "~"; nothing when
/// `path` does not begin with "/", "~/" or is not "~" alone.
std::optional<std::string> expandedPath(std::string_view path);

/// The failure for a `--folder` that is no folder.
CLIError folderNotFound(const std::string& given);

/// `path` as one line of valid text: each control character, line breaks among them, is a blank,
/// so that a file's name cannot look like a line of output.
std::string printable(std::string_view path);
}  // namespace ombrix
