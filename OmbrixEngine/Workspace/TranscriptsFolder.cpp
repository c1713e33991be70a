#include "OmbrixEngine/Workspace/TranscriptsFolder.h"

#include <cerrno>

#include "OmbrixCLI/CLIError.h"
#include "OmbrixCLI/PathArguments.h"
#include "OmbrixPlatform/Files.h"
#include "OmbrixPlatform/Paths.h"

namespace ombrix {
namespace {

bool isIn(std::string_view folder, std::string_view path) {
    return path == folder || path.starts_with(Paths::joined(folder, ""));
}

CLIError leadsOut(std::string_view relative) {
    return CLIError::invalidInput(
        "'" + printable(relative) + "' leads out of the transcripts folder.",
        "Nothing outside that folder is read or written: take the link or the \"..\" away.");
}
}  // namespace

TranscriptsFolder::TranscriptsFolder(const std::string& path) {
    const auto real = Files::realPath(path);
    if (!real || !Files::isDirectory(*real)) throw folderNotFound(path);
    path_ = *real;
}

std::string TranscriptsFolder::absolute(std::string_view relative) const {
    return Paths::joined(path_, relative);
}

std::string TranscriptsFolder::relative(std::string_view absolute) const {
    return std::string(absolute.substr(Paths::joined(path_, "").size()));
}

bool TranscriptsFolder::holds(const std::string& absolute) const {
    const auto real = Files::realPath(absolute);
    return real && isIn(path_, *real);
}

std::string TranscriptsFolder::inside(std::string_view relative) const {
    const std::string wanted = Paths::standardised(absolute(relative), "/");
    if (relative.starts_with('/') || relative.find('\0') != relative.npos || !isIn(path_, wanted))
        throw leadsOut(relative);
    // The part of the path that exists, and what is not there yet.
    std::string there = wanted, missing;
    for (;;) {
        if (const auto real = Files::realPath(there)) {
            if (!isIn(path_, *real)) throw leadsOut(relative);
            return missing.empty() ? *real : Paths::joined(*real, missing);
        }
        if (Files::facts(there)) throw leadsOut(relative);  // a link to nowhere
        const auto name = Paths::lastComponent(there);
        missing = missing.empty() ? std::string(name) : Paths::joined(name, missing);
        there = Paths::parent(there);
    }
}

std::optional<std::string> TranscriptsFolder::bytes(std::string_view relative,
                                                    std::size_t largest) const {
    const std::string path = inside(relative);
    if (!Files::exists(path)) return std::nullopt;
    try {
        return Files::bytes(path, largest);
    } catch (const Files::Error& error) {
        if (error.code().value() == ENOENT) return std::nullopt;
        throw CLIError::invalidInput(std::string(error.what()) + ".");
    }
}

std::vector<std::string> TranscriptsFolder::files(std::string_view relative,
                                                  std::string_view extension) const {
    const std::string folder = inside(relative);
    std::vector<std::string> found;
    for (const auto& name : Files::names(folder)) {
        if (!name.ends_with(extension)) continue;
        const std::string path = Paths::joined(folder, name);
        const auto facts = Files::facts(path);
        if (!facts ||
            (facts->isLink ? !(holds(path) && Files::isRegular(path)) : !facts->isRegular))
            continue;
        found.push_back(Paths::joined(relative, name));
    }
    return found;
}
}  // namespace ombrix
