#include "OmbrixMarkdownKit/Library/TranscriptLibrary.h"

#include <algorithm>
#include <functional>
#include <mutex>
#include <utility>

#include "OmbrixMarkdownKit/Library/TranscriptReader.h"
#include "OmbrixPlatform/Files.h"
#include "OmbrixPlatform/ForkJoin.h"
#include "OmbrixPlatform/Paths.h"
#include "OmbrixPlatform/Text.h"

namespace ombrix {

std::string TranscriptLibrary::root() const { return Files::standardised(folder); }

std::vector<std::string> TranscriptLibrary::paths() const {
    std::vector<std::string> paths;
    const auto add = [&](std::string path) {
        if (!Text::equalsIgnoringCase(Paths::extension(path), "md")) return;
        if (!excludes || !excludes(path)) paths.push_back(std::move(path));
    };
    Files::walk(root(), add, Files::Seen::regularFiles);
    return paths;
}

std::vector<IdentifiedDocument> TranscriptLibrary::scan() const {
    auto files = paths();
    std::vector<std::optional<TranscriptDocument>> found(files.size());
    ForkJoin::run(files.size(), ForkJoin::workersFor(files.size(), filesPerReader),
                  [&](ForkJoin::Places& places) {
                      TranscriptReader reader(Files::From::walk);
                      places.take([&](std::size_t i) { found[i] = reader.document(files[i]); });
                  });
    std::vector<IdentifiedDocument> documents;
    for (std::size_t i = 0; i < files.size(); ++i)
        if (found[i]) documents.push_back({std::move(files[i]), std::move(*found[i])});
    sortNewestFirst(documents);
    return documents;
}

void listTranscripts(std::vector<std::string> paths,
                     const std::function<void(ListedTranscript)>& take) {
    std::mutex guard;
    ForkJoin::run(paths.size(), ForkJoin::workersFor(paths.size(), filesPerReader),
                  [&](ForkJoin::Places& places) {
                      TranscriptReader reader(Files::From::walk);
                      places.take([&](std::size_t i) {
                          auto header = reader.header(paths[i]);
                          if (!header) return;
                          ListedTranscript listed{.path = std::move(paths[i]),
                                                  .title = std::move(header->title),
                                                  .date = std::move(header->date),
                                                  .startedAt = std::move(header->startedAt),
                                                  .participants = std::move(header->participants)};
                          const std::lock_guard lock(guard);
                          take(std::move(listed));
                      });
                  });
}

void sortNewestFirst(std::vector<IdentifiedDocument>& documents) {
    sortNewestFirst(documents, [](const IdentifiedDocument& entry) {
        return LibraryOrder{startOf(entry.document), entry.id};
    });
}
}  // namespace ombrix
