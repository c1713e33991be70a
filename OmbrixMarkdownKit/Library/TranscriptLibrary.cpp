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

/// What `one` gives of each path with a reader of its worker, in the order of the paths.
template <typename Record>
std::vector<Record> readAll(std::vector<std::string> paths,
                            std::optional<Record> (*one)(TranscriptReader&, std::string&& path)) {
    constexpr std::size_t filesPerWorker = 32;  // fewer are read sooner than a thread is made
    std::vector<std::optional<Record>> found(paths.size());
    ForkJoin::run(
        paths.size(), ForkJoin::workersFor(paths.size(), filesPerWorker),
        [&](ForkJoin::Places& places) {
            TranscriptReader reader(Files::From::walk);
            places.take([&](std::size_t i) { found[i] = one(reader, std::move(paths[i])); });
        });
    std::vector<Record> records;
    records.reserve(paths.size());
    for (auto& record : found)
        if (record) records.push_back(std::move(*record));
    return records;
}

std::optional<IdentifiedDocument> documentAt(TranscriptReader& reader, std::string&& path) {
    auto document = reader.document(path);
    if (!document) return std::nullopt;
    return IdentifiedDocument{std::move(path), std::move(*document)};
}

std::optional<ListedTranscript> listedAt(TranscriptReader& reader, std::string&& path) {
    auto header = reader.header(path);
    if (!header) return std::nullopt;
    return ListedTranscript{.path = std::move(path),
                            .title = std::move(header->title),
                            .date = std::move(header->date),
                            .startedAt = std::move(header->startedAt),
                            .participants = std::move(header->participants)};
}

/// When a meeting started; its day when that is all that is known.
const std::string& startOf(const std::string& startedAt, const std::string& date) {
    return startedAt.empty() ? date : startedAt;
}
}  // namespace

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
    auto documents = readAll(paths(), documentAt);
    sortNewestFirst(documents);
    return documents;
}

std::vector<ListedTranscript> TranscriptLibrary::list() const {
    auto listed = readAll(paths(), listedAt);
    sortNewestFirst(listed, [](const ListedTranscript& transcript) {
        return LibraryOrder{startOf(transcript.startedAt, transcript.date), transcript.path};
    });
    return listed;
}

const std::string& startOf(const TranscriptDocument& document) {
    return startOf(document.startedAt, document.date);
}

void sortNewestFirst(std::vector<IdentifiedDocument>& documents) {
    sortNewestFirst(documents, [](const IdentifiedDocument& entry) {
        return LibraryOrder{startOf(entry.document), entry.id};
    });
}
}  // namespace ombrix
