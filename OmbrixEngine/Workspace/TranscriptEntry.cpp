#include "OmbrixEngine/Workspace/TranscriptEntry.h"

#include <algorithm>
#include <functional>
#include <optional>
#include <utility>

#include "OmbrixCLI/AnswerFolderResolver.h"
#include "OmbrixCLI/CLIError.h"
#include "OmbrixCLI/PathArguments.h"
#include "OmbrixMarkdownKit/Library/TranscriptLibrary.h"
#include "OmbrixMarkdownKit/Library/TranscriptReader.h"
#include "OmbrixMemoryKit/EnginePaths.h"
#include "OmbrixMemoryKit/Identity/MeetingKey.h"
#include "OmbrixPlatform/ForkJoin.h"
#include "OmbrixPlatform/Text.h"

namespace ombrix::TranscriptEntries {
namespace {

/// `date`, or the day of `startedAt` when there is none.
TranscriptEntry entryOf(std::string path, TranscriptDocument header, const Files::Facts& facts) {
    std::string key = MeetingKey::make(header.spendID, header.startedAt, header.date, header.title);
    return {std::move(path), std::move(key), std::move(header), facts};
}

CLIError several(std::string_view argument, const std::vector<const TranscriptEntry*>& found) {
    constexpr std::size_t mostShown = 10;
    std::string message =
        std::to_string(found.size()) + " transcripts match '" + printable(argument) + "': ";
    for (std::size_t i = 0; i < std::min(found.size(), mostShown); ++i)
        message += (i == 0 ? "" : "; ") + line(*found[i]);
    if (found.size() > mostShown) message += "; and others";
    return CLIError::invalidInput(message + ".", "Name one of them by its key or its path.");
}
}  // namespace

std::string line(const TranscriptEntry& entry) {
    return "\"" + printable(entry.header.title) + "\" (" + entry.header.date + ", " + entry.key +
           ", " + printable(entry.path) + ")";
}

std::vector<TranscriptEntry> read(const TranscriptsFolder& folder, const std::string& memoryName) {
    const TranscriptLibrary library = AnswerFolderResolver::library(folder.path(), memoryName);
    const std::vector<std::string> paths = library.paths();
    std::vector<std::optional<TranscriptEntry>> found(paths.size());
    ForkJoin::run(
        paths.size(), ForkJoin::workersFor(paths.size(), TranscriptsFolder::filesPerWorker),
        [&](ForkJoin::Places& places) {
            TranscriptReader reader(Files::From::walk);
            places.take([&](std::size_t i) {
                const auto facts = Files::facts(paths[i]);
                if (!facts || (facts->isLink && !folder.holds(paths[i]))) return;
                auto header = reader.header(paths[i]);
                if (!header || std::ranges::find(EnginePaths::engineSources, header->source) !=
                                   EnginePaths::engineSources.end())
                    return;
                found[i] = entryOf(folder.relative(paths[i]), std::move(*header), *facts);
            });
        });
    std::vector<TranscriptEntry> entries;
    for (auto& entry : found)
        if (entry) entries.push_back(std::move(*entry));
    sortNewestFirst(entries, [](const TranscriptEntry& entry) {
        return LibraryOrder{startOf(entry.header), entry.path};
    });
    return entries;
}

const TranscriptEntry& named(const std::vector<TranscriptEntry>& entries,
                             const TranscriptsFolder& folder, std::string_view argument) {
    using Test = std::function<bool(const TranscriptEntry&)>;
    const std::string given(argument);
    std::string path = given;
    // From the working directory, too.
    if (const auto real = Files::realPath(given); real && *real != folder.path())
        if (folder.holds(*real)) path = folder.relative(*real);
    const std::string folded = Text::folded(Text::trimmed(argument));
    const std::vector<Test> tests = {
        [&](const auto& entry) { return entry.path == path || entry.path == path + ".md"; },
        [&](const auto& entry) { return entry.key == given; },
        [&](const auto& entry) { return Text::folded(entry.header.title) == folded; },
        [&](const auto& entry) { return Text::contains(Text::folded(entry.header.title), folded); },
    };
    if (!folded.empty()) {
        for (const auto& test : tests) {
            std::vector<const TranscriptEntry*> found;
            for (const auto& entry : entries)
                if (test(entry)) found.push_back(&entry);
            if (found.size() == 1) return *found.front();
            if (found.size() > 1) throw several(argument, found);
        }
    }
    throw CLIError::notFound("No transcript is called '" + printable(argument) + "'.",
                             "ombrix-engine status lists them with their keys and paths.");
}
}  // namespace ombrix::TranscriptEntries
