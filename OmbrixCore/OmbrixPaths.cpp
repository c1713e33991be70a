#include "OmbrixCore/OmbrixPaths.h"

#include <algorithm>
#include <filesystem>
#include <system_error>

#include "OmbrixPlatform/Paths.h"
#include "OmbrixPlatform/PropertyList.h"

namespace ombrix::OmbrixPaths {
namespace {

constexpr std::string_view applicationFolder = "/Applications/Ombrix.app";

bool isGiven(const std::optional<std::string>& value) { return value && !value->empty(); }

/// The value of `name`, or of `earlier` when `name` is not set. A value may be empty.
std::optional<std::string> variable(const Sources& sources, const char* name, const char* earlier) {
    auto value = sources.environment(name);
    return value ? value : sources.environment(earlier);
}

std::string resolvingLinks(const std::string& path) {
    std::error_code error;
    const auto resolved = std::filesystem::weakly_canonical(path, error);
    return error ? path : resolved.string();
}

/// The nearest folder around `executable` with the extension "app".
std::optional<std::string> enclosingBundle(const std::string& executable) {
    std::string folder(Paths::parent(executable));
    while (!Paths::lastComponent(folder).empty()) {
        if (Paths::extension(folder) == "app") return folder;
        folder.resize(Paths::parent(folder).size());
    }
    return std::nullopt;
}
}  // namespace

std::string defaultSupportDirectoryURL(std::string_view appName, std::string_view home) {
    const std::string folder = Paths::joined(home, "Library/Application Support");
    return Paths::absolute(Paths::joined(folder, appName), "/");
}

std::string defaultDatabaseURL(std::string_view appName, std::string_view home) {
    return Paths::joined(defaultSupportDirectoryURL(appName, home), databaseFileName);
}

Location resolve(const Sources& sources) {
    const auto path = [&](const std::string& given) {
        return Paths::absolute(given, given.starts_with('/') ? "/" : sources.workingDirectory());
    };
    const auto beside = [&](const std::string& database,
                            const std::optional<std::string>& support) -> Location {
        const std::string file = path(database);
        return {.supportDirectory = support ? path(*support) : std::string(Paths::parent(file)),
                .databaseURL = file};
    };
    const auto inside = [](const std::string& support) -> Location {
        return {.supportDirectory = support,
                .databaseURL = Paths::joined(support, databaseFileName)};
    };

    if (isGiven(sources.dbPath)) return beside(*sources.dbPath, sources.supportDir);
    if (isGiven(sources.supportDir)) return inside(path(*sources.supportDir));
    const auto database = variable(sources, "OMBRIX_DB_PATH", "TARVEN_DB_PATH");
    const auto support = variable(sources, "OMBRIX_SUPPORT_DIR", "TARVEN_SUPPORT_DIR");
    if (isGiven(database)) return beside(*database, support);
    if (isGiven(support)) return inside(path(*support));
    const std::string appName = enclosingAppSupportDirectoryName(sources.executable);
    return inside(defaultSupportDirectoryURL(appName, sources.home));
}

std::string enclosingAppSupportDirectoryName(const std::optional<std::string>& executable) {
    std::optional<std::string> name;
    if (const auto bundle =
            executable ? enclosingBundle(resolvingLinks(*executable)) : std::nullopt) {
        Files::Reader reader;
        if (const auto bytes = reader.read(Paths::joined(*bundle, "Contents/Info.plist"),
                                           PropertyList::largestSize)) {
            name = PropertyList::string(*bytes, "OmbrixSupportDirectoryName");
        }
    }
    return isGiven(name) ? *name : std::string(defaultAppName);
}

std::optional<std::string> appBundlePath(
    std::string_view argument0, std::string_view workingDirectory,
    const std::function<bool(const std::string& path)>& exists) {
    const std::string path = Paths::standardised(argument0, workingDirectory);
    const auto components = Paths::components(path);
    const auto last = std::find(components.rbegin(), components.rend(), "Contents");
    if (last != components.rend()) {
        std::string bundle;
        for (auto part = components.begin(); part != last.base() - 1; ++part) {
            bundle += '/';
            bundle += *part;
        }
        if (bundle.ends_with(".app")) return bundle;
    }
    const std::string installed(applicationFolder);
    if (exists(installed)) return installed;
    return std::nullopt;
}
}  // namespace ombrix::OmbrixPaths
