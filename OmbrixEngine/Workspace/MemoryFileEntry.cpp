#include "OmbrixEngine/Workspace/MemoryFileEntry.h"

#include <utility>

#include "OmbrixMemoryKit/EnginePaths.h"
#include "OmbrixMemoryKit/Identity/EntityKeys.h"
#include "OmbrixMemoryKit/Region/Frontmatter.h"
#include "OmbrixPlatform/Paths.h"
#include "OmbrixPlatform/Text.h"

namespace ombrix {
namespace {

/// The file's name without ".md".
std::string stem(std::string_view path) {
    const auto name = Paths::lastComponent(path);
    return std::string(name.substr(0, name.size() - std::string_view(".md").size()));
}
}  // namespace

MemoryFileEntry MemoryFileEntry::of(std::string path, std::string bytes) {
    const std::string text = Text::withLineFeeds(bytes);
    const auto fields = Frontmatter::Reader::of(text);
    const auto scalar = [&](std::string_view name) {
        return fields ? fields->scalar(name).value_or("") : std::string();
    };
    std::string title = scalar("title"), key = scalar("key");
    if (title.empty()) title = stem(path);
    if (key.empty()) key = EntityKeys::normalizeKey(title).value_or("");
    MemoryFileEntry entry{
        .path = std::move(path),
        .parsed = MemoryFile::parse(text),
        .key = std::move(key),
        .title = std::move(title),
        .corrections = Corrections::parse(Corrections::section(text).value_or("")),
        .declares = fields && fields->hasLine("source: " + std::string(EnginePaths::memorySource))};
    entry.text = std::move(bytes);
    return entry;
}
}  // namespace ombrix
