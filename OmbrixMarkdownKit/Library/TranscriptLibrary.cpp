#include "OmbrixMarkdownKit/Library/TranscriptLibrary.h"

#include <algorithm>
#include <functional>
#include <utility>

#include "OmbrixMarkdownKit/Library/TranscriptReader.h"
#include "OmbrixPlatform/Files.h"
#include "OmbrixPlatform/ForkJoin.h"
#include "OmbrixPlatform/Paths.h"
#include "OmbrixPlatform/Text.h"

namespace ombrix {
namespace {

using Read = std::optional<TranscriptDocument> (TranscriptReader::*)(const std::string& path);

std::vector<IdentifiedDocument> read(std::vector<std::string> paths, Read one) {
    constexpr std::size_t filesPerWorker = 32;  // fewer are read sooner than a thread is made
    std::vector<std::optional<TranscriptDocument>> found(paths.size());
    ForkJoin::run(paths.size(), ForkJoin::workersFor(paths.size(), filesPerWorker),
                  [&](ForkJoin::Places& places) {
                      TranscriptReader reader;
                      places.take([&](std::size_t i) { found[i] = (reader.*one)(paths[i]); });
                  });
    std::vector<IdentifiedDocument> documents;
    for (std::size_t i = 0; i < paths.size(); ++i)
        if (found[i]) documents.push_back({std::move(paths[i]), std::move(*found[i])});
    sortNewestFirst(documents);
    return documents;
}
}  // namespace

std::string TranscriptLibrary::root() const { return Files::standardised(folder); }

std::vector<std::string> TranscriptLibrary::paths() const {
    std::vector<std::string> paths;
    Files::walk(root(), [&](std::string path) {
        if (!Text::equalsIgnoringCase(Paths::extension(path), "md")) return;
        if (!excludes || !excludes(path)) paths.push_back(std::move(path));
    });
    return paths;
}

std::vector<IdentifiedDocument> TranscriptLibrary::scan() const {
    return read(paths(), &TranscriptReader::document);
}

std::vector<IdentifiedDocument> TranscriptLibrary::headers() const {
    return read(paths(), &TranscriptReader::header);
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
