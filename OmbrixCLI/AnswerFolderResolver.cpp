#include "OmbrixCLI/AnswerFolderResolver.h"

#include <cstdint>
#include <filesystem>
#include <system_error>
#include <utility>

#include "OmbrixCLI/CLIError.h"
#include "OmbrixMemoryKit/EnginePaths.h"
#include "OmbrixMemoryKit/Skills/SkillPaths.h"
#include "OmbrixPlatform/Files.h"
#include "OmbrixPlatform/JsonDocument.h"
#include "OmbrixPlatform/Paths.h"
#include "OmbrixPlatform/Text.h"

namespace ombrix::AnswerFolderResolver {

Config::Config(const std::string& supportDirectory) {
    constexpr std::size_t largestSize = std::size_t{1} << 30U;
    const std::string path = Paths::joined(supportDirectory, "config.json");
    try {
        content_ = Json::parse(Files::bytes(path, largestSize));
    } catch (const Files::Error&) {
    } catch (const Json::SyntaxError&) {
    }
}

std::optional<std::string> Config::string(std::string_view key) const {
    const Json::Value* value = content_.member(key);
    if (value == nullptr || value->string() == nullptr) return std::nullopt;
    return *value->string();
}

std::string defaultFolder(std::string_view home) { return Paths::joined(home, "Documents/Ombrix"); }

std::string resolve(const Config& config, std::string_view home) {
    const auto path = config.string("output_folder_display_path");
    if (!path || Text::trimmed(*path).empty()) return defaultFolder(home);
    return Paths::expandingTilde(*path, home);
}

std::string existing(const Config& config) {
    std::string folder = resolve(config, Files::homeDirectory());
    if (!Files::isDirectory(folder)) {
        throw CLIError::notFound(
            "Transcript folder not found at " + folder + ".",
            "Record a meeting in Ombrix, or pass --support-dir to point at the right data "
            "directory.");
    }
    return folder;
}

std::string memoryFolderName(const Config& config) {
    const auto name = config.string("engine_folder_name");
    const auto trimmed = Text::trimmed(name ? std::string_view(*name) : std::string_view());
    return std::string(trimmed.empty() ? EnginePaths::defaultMemoryFolderName : trimmed);
}

std::optional<std::string> userName(const Config& config) {
    const auto name = config.string("user_name");
    if (!name) return std::nullopt;
    return std::string(Text::trimmedBlanks(*name));
}

TranscriptLibrary library(std::string folder, std::string memoryFolderName) {
    return {.folder = std::move(folder),
            .excludes = [name = std::move(memoryFolderName)](std::string_view path) {
                return SkillsFolder::holds(path, name);
            }};
}

std::vector<IdentifiedDocument> scan(std::string folder, std::string memoryFolderName) {
    return library(std::move(folder), std::move(memoryFolderName)).scan();
}
}  // namespace ombrix::AnswerFolderResolver
