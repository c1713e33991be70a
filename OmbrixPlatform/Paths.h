// Paths as text. No function here uses the file system.
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

/// The part of the last component after its last ".": "md" for "a.tar.md"; empty for ".md", "a."
/// and "a".
std::string_view extension(std::string_view path);

/// The components between the slashes, without empty ones.
std::vector<std::string_view> components(std::string_view path);

/// `path` when it is absolute, else `workingDirectory` joined with it. No trailing slash.
std::string absolute(std::string_view path, std::string_view workingDirectory);

/// Absolute, without ".", ".." and repeated "/". Links are not resolved.
std::string standardised(std::string_view path, std::string_view workingDirectory);

/// `path` with `home` in place of a leading "~" that is followed by "/" or the end.
std::string expandingTilde(std::string_view path, std::string_view home);
}  // namespace ombrix::Paths
