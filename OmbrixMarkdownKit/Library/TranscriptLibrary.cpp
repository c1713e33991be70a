#include "OmbrixMarkdownKit/Library/TranscriptLibrary.h"

#include <algorithm>
#include <functional>
#include <utility>

#include "OmbrixMarkdownKit/Library/TranscriptReader.h"
#include "OmbrixPlatform/Files.h"
#include "OmbrixPlatform/Paths.h"
#include "OmbrixPlatform/Text.h"

namespace ombrix {

std::vector<std::string> TranscriptLibrary::paths() const {
    std::vector<std::string> paths;
    const std::string root = Paths::standardised(folder, Files::workingDirectory());
    Files::walk(root, [&](std::string path) {
        if (!Text::equalsIgnoringCase(Paths::extension(path), "md")) return;
        if (!excludes || !excludes(path)) paths.push_back(std::move(path));
    });
    return paths;
}

std::vector<IdentifiedDocument> TranscriptLibrary::scan() const {
    std::vector<IdentifiedDocument> documents;
    TranscriptReader reader;
    for (auto& path : paths()) {
        if (auto document = reader.document(path))
            documents.push_back({std::move(path), std::move(*document)});
    }
    sortNewestFirst(documents);
    return documents;
}

const std::string& startOf(const TranscriptDocument& document) {
    return document.startedAt.empty() ? document.date : document.startedAt;
}

void sortNewestFirst(std::vector<IdentifiedDocument>& documents) {
    std::ranges::sort(documents, std::less<>(), [](const IdentifiedDocument& entry) {
        return LibraryOrder{startOf(entry.document), entry.id};
    });
}
}  // namespace ombrix
