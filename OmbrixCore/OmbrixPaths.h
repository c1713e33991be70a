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

/// What one run works on. Nothing says that either exists.
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
    std::optional<std::string> executable = {};  ///< the running executable, when the system tells
    std::string home = {};
    std::string workingDirectory = {};
};

/// The first of these that speaks: `--db-path`; `--support-dir`; OMBRIX_DB_PATH;
/// OMBRIX_SUPPORT_DIR; the application bundle that holds the executable. An empty option or
/// variable does not speak, but beside a database path given by option or variable an empty support
/// directory counts and is the working directory; one that is not given there is the database's
/// folder. TARVEN_DB_PATH and TARVEN_SUPPORT_DIR, the names of an earlier product, are read only
/// when the newer name is not set at all. A relative path is the working directory's; otherwise a
/// path stays as it was given, "~",
/// ".." and "//" included, without a trailing slash. Never throws.
Location resolve(const Sources& sources);

/// The name of the support directory that the application bundle around `executable` asks for: the
/// string `OmbrixSupportDirectoryName` of the nearest enclosing "*.app" folder's
/// Contents/Info.plist, links in `executable` resolved. "Ombrix" when there is no executable, no
/// bundle, no readable property list, or no such string in it.
std::string enclosingAppSupportDirectoryName(const std::optional<std::string>& executable);

/// The application bundle that `argument0`, the path the tool was started by, leads into: what
/// stands before its last component "Contents", when that ends in ".app"; otherwise
/// "/Applications/Ombrix.app" when that exists; otherwise nothing.
std::optional<std::string> appBundlePath(
    std::string_view argument0, std::string_view workingDirectory,
    const std::function<bool(const std::string& path)>& exists = Files::exists);
}  // namespace ombrix::OmbrixPaths
