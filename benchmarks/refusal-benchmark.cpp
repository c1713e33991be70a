// refusal-benchmark FOLDER... [--files N]
//
// Reads N files (5,000 by default) of documentation, sources, data and logs below the folders,
// which are no exports, and takes the processor time of refusing those that the readers of known
// formats refuse: by these readers alone, and with the readers of shapes that need proof after
// them. The goal is at most 1.5 times. Names each file in which the latter find a meeting, and
// fails when there is one.
#include <algorithm>
#include <array>
#include <cstdio>
#include <cstdlib>
#include <ctime>
#include <string>
#include <vector>

#include "OmbrixMarkdownKit/Import/AnyExport.h"
#include "OmbrixMarkdownKit/Import/LineEnds.h"
#include "OmbrixMarkdownKit/Transcript/OmbrixTranscriptMarker.h"
#include "OmbrixPlatform/Files.h"
#include "OmbrixPlatform/Paths.h"
#include "OmbrixPlatform/Text.h"

namespace {

using namespace ombrix;
using namespace TranscriptImport;

constexpr std::size_t largestFile = 1'000'000;
constexpr int rounds = 7;

/// What people keep beside exports, and what the machine has most of.
bool isWanted(std::string_view path) {
    constexpr auto extensions = std::to_array<std::string_view>(
        {"",    "c",    "cmake", "conf", "cpp",  "css",  "csv",      "h",   "hpp", "html", "in",
         "ini", "java", "js",    "json", "log",  "m4",   "markdown", "md",  "org", "pl",   "pm",
         "po",  "pod",  "py",    "rst",  "sgml", "sh",   "sql",      "srt", "tcl", "tex",  "txt",
         "vim", "vtt",  "xml",   "yaml", "yml",  "diff", "lua",      "tsv", "dic", "el"});
    return std::ranges::find(extensions, Text::lowercased(Paths::extension(path))) !=
           extensions.end();
}

struct File {
    std::string path, text;
};

/// Every n-th file, so that all folders have their share.
std::vector<File> filesBelow(const std::vector<std::string>& folders, std::size_t most) {
    std::vector<std::string> paths;
    for (const auto& folder : folders) {
        try {
            Files::walk(folder, [&](std::string path) {
                if (isWanted(path)) paths.push_back(std::move(path));
            });
        } catch (const Files::Error& error) {
            std::fprintf(stderr, "%s\n", error.what());
        }
    }
    std::ranges::sort(paths);
    std::vector<File> files;
    std::size_t left = most;
    for (std::size_t i = 0; i < paths.size() && left > 0; ++i) {
        if (left < paths.size() - i && i * most / paths.size() == (i + 1) * most / paths.size())
            continue;
        const auto text = Files::text(paths[i], largestFile);
        if (!text || text->empty()) continue;
        std::string storage;
        files.push_back({paths[i], std::string(withPlainLineEnds(*text, storage))});
        --left;
    }
    return files;
}

bool isSpoken(const std::optional<Export>& found) { return found && !found->meetings.empty(); }

template <typename Work>
double milliseconds(const std::vector<File>& files, Work work) {
    const std::clock_t start = std::clock();
    std::size_t spoken = 0;
    for (const File& file : files) {
        if (OmbrixTranscriptMarker::declares(file.text)) ++spoken;
        if (isSpoken(work(file.text))) ++spoken;
    }
    const std::clock_t end = std::clock();
    if (spoken > files.size()) std::abort();  // never; `spoken` has to be used
    return static_cast<double>(end - start) * 1e3 / CLOCKS_PER_SEC;
}
}  // namespace

int main(int argc, char** argv) {
    std::vector<std::string> folders(argv + 1, argv + argc);
    std::size_t most = 5'000;
    if (folders.size() > 2 && folders[folders.size() - 2] == "--files") {
        most = std::strtoull(folders.back().c_str(), nullptr, 10);
        folders.resize(folders.size() - 2);
    }
    if (folders.empty() || most == 0) {
        std::fputs("usage: refusal-benchmark FOLDER... [--files N]\n", stderr);
        return 64;
    }
    std::vector<File> files = filesBelow(folders, most);
    const std::size_t all = files.size();
    std::erase_if(files, [](const File& file) {
        return OmbrixTranscriptMarker::declares(file.text) || isSpoken(readExport(file.text));
    });
    std::size_t bytes = 0, falseFriends = 0;
    for (const File& file : files) {
        bytes += file.text.size();
        const auto found = readAnyExport(file.text, std::nullopt);
        if (!isSpoken(found)) continue;
        ++falseFriends;
        const auto& turns = found->meetings.front().turns;
        std::printf("taken for an export: %s (%s: %.60s)\n", file.path.c_str(),
                    turns.front().speaker.c_str(), turns.front().text.c_str());
    }
    std::vector<double> alone, together;
    for (int round = -1; round < rounds; ++round) {  // the first warms the caches
        const double one = milliseconds(files, [](const auto& text) { return readExport(text); });
        const double both =
            milliseconds(files, [](const auto& text) { return readAnyExport(text, std::nullopt); });
        if (round < 0) continue;
        alone.push_back(one);
        together.push_back(both);
    }
    std::ranges::sort(alone);
    std::ranges::sort(together);
    std::printf(
        "%zu files, of which the known formats refuse %zu (%.1f MB); the goal is 1.5 times\n"
        "known formats alone %8.1f ms   with the others %8.1f ms   ratio %.2f\n",
        all, files.size(), static_cast<double>(bytes) / 1e6, alone[rounds / 2],
        together[rounds / 2], together[rounds / 2] / alone[rounds / 2]);
    return falseFriends == 0 ? 0 : 1;
}
