#include "OmbrixMarkdownKit/Import/TxtTwinTidy.h"

#include <algorithm>
#include <unordered_set>

#include "OmbrixPlatform/Files.h"
#include "OmbrixPlatform/Paths.h"
#include "OmbrixPlatform/Text.h"
#include "OmbrixPlatform/Trash.h"
#include "OmbrixPlatform/Utf8.h"

namespace ombrix::TxtTwinTidy {
namespace {

std::string_view withoutExtension(std::string_view path, std::string_view extension) {
    return path.substr(0, path.size() - extension.size() - 1);
}
}  // namespace

std::vector<std::string> plan(const std::string& folder, const Progress& progress) {
    std::unordered_set<std::string> stems;
    std::vector<std::string> candidates;
    Files::walk(folder, [&](std::string path) {
        const auto extension = Paths::extension(path);
        if (extension == "md") stems.emplace(withoutExtension(path, extension));
        if (extension == "txt") candidates.push_back(std::move(path));
    });
    std::erase_if(candidates, [&](const std::string& path) {
        return !stems.contains(std::string(withoutExtension(path, "txt")));
    });
    std::ranges::sort(candidates);
    std::vector<std::string> twins;
    Files::Reader reader;
    for (std::size_t i = 0; i < candidates.size(); ++i) {
        const auto content = reader.read(candidates[i]);
        if (content && Utf8::isValid(*content) && isOmbrixTwin(*content))
            twins.push_back(candidates[i]);
        if (progress) progress(i + 1, candidates.size());
    }
    return twins;
}

bool isOmbrixTwin(std::string_view content) { return Text::contains(content, ombrixMarker); }

std::int64_t trash(const std::vector<std::string>& paths, const Progress& progress) {
    std::int64_t moved = 0;
    for (std::size_t i = 0; i < paths.size(); ++i) {
        try {
            Trash::move(paths[i]);
            ++moved;
        } catch (const Trash::Error&) {  // the others go on
        }
        if (progress) progress(i + 1, paths.size());
    }
    return moved;
}
}  // namespace ombrix::TxtTwinTidy
