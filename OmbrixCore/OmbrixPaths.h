// Where the support directory and the database are. One machine can hold several installations of
// the desktop application, each with its own support directory; a copy of the tool inside an
// application bundle follows that bundle's data.
#pragma once

#include <functional>
#include <optional>
#include <string>
#include <string_view>

#include "OmbrixPlatform/Files.h"

namespace ombrix::OmbrixPaths {

inline constexpr std::string_view defaultAppName = "Ombrix";
inline constexpr std::string_view databaseFileName = "ombrix.db";

/// `home`/Library/Application Support/`appName`. `home` is the user record's
/// (`Files::homeDirectory()`), never `$HOME`.
std::string defaultSupportDirectoryURL(std::string_view appName, std::string_view home);
/// "ombrix.db" in that directory.
std::string defaultDatabaseURL(std::string_view appName, std::string_view home);

/// What one run works on. Neither needs to exist.
struct Location {
    std::string supportDirectory = {};
    std::string databaseURL = {};
    bool operator==(const Location&) const = default;
};

/// Everything the location is read from.
struct Sources {
    std::optional<std::string> dbPath = {};      ///< `--db-path`, when it was given
    std::optional<std::string> supportDir = {};  ///< `--support-dir`, when it was given
    /// A variable's value, also when it is empty; nothing when it is not set.
    std::function<std::optional<std::string>(const std::string& name)> environment;
    std::optional<std::string> executable = {};  ///< the running executable, if known
    std::string home = {};
    /// Asked when a path is relative; may throw.
    std::function<std::string()> workingDirectory;
};

/// The location that the first of these sources gives:
///   1. `--db-path`
///   2. `--support-dir`
///   3. OMBRIX_DB_PATH
///   4. OMBRIX_SUPPORT_DIR
///   5. the application bundle that contains the executable.
/// An empty option or variable counts as missing, with one exception: if the database is named
/// directly (1 or 3), a support directory given the same way counts even when empty (then it is the
/// working directory); without one the support directory is the database's folder. TARVEN_DB_PATH
/// and TARVEN_SUPPORT_DIR, the names of an earlier product, are read only when the newer name is
/// not set at all. A relative path starts at the working directory; otherwise a path is kept as it
/// was given, "~", ".." and "//" included, without a trailing slash. Never throws.
Location resolve(const Sources& sources);

/// The name of the support directory that the application bundle around `executable` names: the
/// string `OmbrixSupportDirectoryName` of the nearest enclosing "*.app" folder's
/// Contents/Info.plist, links in `executable` resolved. "Ombrix" when there is no executable, no
/// bundle, no readable property list, or no such string in it.
std::string enclosingAppSupportDirectoryName(const std::optional<std::string>& executable);

/// The application bundle in `argument0`, the path that the tool was started with: the part before
/// its last component "Contents", if that part ends in ".app"; otherwise
/// "/Applications/Ombrix.app" if that exists; otherwise nothing.
std::optional<std::string> appBundlePath(
    std::string_view argument0, std::string_view workingDirectory,
    const std::function<bool(const std::string& path)>& exists = Files::exists);
}  // namespace ombrix::OmbrixPaths
