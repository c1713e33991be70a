// Paths as text. Nothing here asks the file system.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace ombrix::Paths {

/// `name` inside `folder`: one "/" between them, none when `folder` is empty.
std::string joined(std::string_view folder, std::string_view name);

/// The part before the last component: "/a" of "/a/b" and of "/a/b/", "/" of "/a", "" of "a".
std::string_view parent(std::string_view path);

/// "b" of "/a/b" and of "/a/b/"; empty for "/".
std::string_view lastComponent(std::string_view path);

/// What stands behind the last "." of the last component: "md" of "a.tar.md"; nothing for ".md",
/// "a." and "a".
std::string_view extension(std::string_view path);

/// The components between the slashes, without empty ones.
std::vector<std::string_view> components(std::string_view path);

/// `path` as it stands when it is absolute, else behind `workingDirectory`; no trailing slash.
std::string absolute(std::string_view path, std::string_view workingDirectory);

/// Absolute, with ".", ".." and repeated "/" resolved by text alone; links are not followed.
std::string standardised(std::string_view path, std::string_view workingDirectory);

/// "~" alone and a leading "~/" become `home`; anything else stays.
std::string expandingTilde(std::string_view path, std::string_view home);
}  // namespace ombrix::Paths
