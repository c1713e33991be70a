#include "OmbrixPlatform/Paths.h"

#include "OmbrixPlatform/Text.h"

namespace ombrix::Paths {
namespace {

std::string_view withoutTrailingSlashes(std::string_view path) {
    while (path.size() > 1 && path.ends_with('/')) path.remove_suffix(1);
    return path;
}
}  // namespace

std::string joined(std::string_view folder, std::string_view name) {
    std::string path(folder);
    if (!path.empty() && !path.ends_with('/')) path += '/';
    path += name;
    return path;
}

std::string_view parent(std::string_view path) {
    path = withoutTrailingSlashes(path);
    const std::size_t slash = path.rfind('/');
    if (slash == std::string_view::npos) return path.substr(0, 0);
    const auto above = withoutTrailingSlashes(path.substr(0, slash));
    return above.empty() ? path.substr(0, 1) : above;
}

std::string_view lastComponent(std::string_view path) {
    path = withoutTrailingSlashes(path);
    return path.substr(path.rfind('/') + 1);  // npos + 1 is 0
}

std::string_view extension(std::string_view path) {
    const auto name = lastComponent(path);
    const std::size_t dot = name.rfind('.');
    if (dot == std::string_view::npos || dot == 0) return {};
    return name.substr(dot + 1);
}

std::vector<std::string_view> components(std::string_view path) {
    return Text::splitDroppingEmpty(path, "/");
}

std::string absolute(std::string_view path, std::string_view workingDirectory) {
    const std::string whole =
        path.starts_with('/') ? std::string(path) : joined(workingDirectory, path);
    return std::string(withoutTrailingSlashes(whole));
}

std::string standardised(std::string_view path, std::string_view workingDirectory) {
    const std::string whole = absolute(path, workingDirectory);
    std::vector<std::string_view> kept;
    for (const auto component : components(whole)) {
        if (component == ".") continue;
        if (component != "..")
            kept.push_back(component);
        else if (!kept.empty())
            kept.pop_back();
    }
    return "/" + Text::joined(kept, "/");
}

std::string expandingTilde(std::string_view path, std::string_view home) {
    if (path == "~") return std::string(home);
    if (path.starts_with("~/")) return joined(home, path.substr(2));
    return std::string(path);
}
}  // namespace ombrix::Paths
