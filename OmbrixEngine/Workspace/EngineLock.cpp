#include "OmbrixEngine/Workspace/EngineLock.h"

#include <chrono>
#include <string>

#include "OmbrixCLI/CLIError.h"
#include "OmbrixMemoryKit/EnginePaths.h"
#include "OmbrixPlatform/Files.h"
#include "OmbrixPlatform/Paths.h"

namespace ombrix {
namespace {

std::optional<FileLock> taken(const TranscriptsFolder& folder, std::chrono::milliseconds patience) {
    const std::string place = folder.inside(EnginePaths::engineFolder);
    Files::createDirectories(place);
    return FileLock::take(Paths::joined(place, "lock"), patience);
}

FileLock required(const TranscriptsFolder& folder) {
    try {
        if (auto lock = taken(folder, std::chrono::seconds(2))) return std::move(*lock);
    } catch (const Files::Error& error) {
        throw CLIError::invalidInput(std::string(error.what()) + ".",
                                     "The engine writes below .ombrix in the transcripts folder.");
    }
    throw CLIError::invalidInput("Another run of ombrix-engine is writing.",
                                 "Nothing was changed. Wait until it has ended and try again.");
}
}  // namespace

EngineLock::EngineLock(const TranscriptsFolder& folder) : lock_(required(folder)) {}

std::optional<FileLock> EngineLock::tryNow(const TranscriptsFolder& folder) {
    try {
        return taken(folder, std::chrono::milliseconds(0));
    } catch (const Files::Error&) {
    } catch (const CLIError&) {
    }
    return std::nullopt;
}
}  // namespace ombrix
