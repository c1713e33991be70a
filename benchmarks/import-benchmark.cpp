// import-benchmark CLI FOLDER [--rounds N]
//
// Times `import` of a folder with 5,000 small exports against `cp -r` of that folder, and a second
// run, for which everything is there already. The exports are made in FOLDER when it is missing.
#include <algorithm>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <string>
#include <vector>

#include "ProcessRun.h"
#include "Talk.h"

namespace {

using namespace ombrix;
namespace fs = std::filesystem;

constexpr int exports = 5'000, cuesAnExport = 12;

void makeExports(const fs::path& folder) {
    if (fs::exists(folder)) return;
    const fs::path partial = folder.string() + ".partial";
    const std::string talk = Talk::ascii(200'000);
    Dice dice(5);
    for (int i = 0; i < exports; ++i) {
        const fs::path team = partial / ("team-" + std::to_string(i % 20));
        fs::create_directories(team);
        std::ofstream file(team / ("2026-03-02 weekly " + std::to_string(i) + ".vtt"));
        file << "WEBVTT\n";
        for (int cue = 0; cue < cuesAnExport; ++cue)
            file << "\n00:00:01.000 --> 00:00:04.000\n<v " << (cue % 2 == 0 ? "Nadia" : "Søren")
                 << ">" << talk.substr(dice.below(talk.size() - 120), 120) << "</v>\n";
    }
    fs::rename(partial, folder);
}
}  // namespace

int main(int argc, char** argv) {
    const auto [cli, given, rounds] = ProcessRun::orderOf("import-benchmark", argc, argv, 7);
    const fs::path folder = fs::absolute(given);
    const fs::path copy = folder.string() + ".copy", transcripts = folder.string() + ".transcripts";
    makeExports(folder);
    const ProcessRun::Command import{cli, "import", folder.string(), "--folder",
                                     transcripts.string()};
    std::vector<ProcessRun::Cost> copies, firsts, seconds;
    for (int round = -1; round < rounds; ++round) {  // the first warms the caches
        fs::remove_all(copy);
        fs::remove_all(transcripts);
        fs::create_directory(transcripts);
        const auto copied = ProcessRun::run({"cp", "-r", folder.string(), copy.string()});
        const auto first = ProcessRun::run(import), second = ProcessRun::run(import);
        if (round < 0) continue;
        copies.push_back(copied);
        firsts.push_back(first);
        seconds.push_back(second);
    }
    fs::remove_all(copy);
    fs::remove_all(transcripts);
    const auto milliseconds = [](const std::vector<ProcessRun::Cost>& costs) {
        return ProcessRun::middle(costs).seconds * 1000;
    };
    const double cp = milliseconds(copies), first = milliseconds(firsts);
    std::printf(
        "import of %d small exports, median of %d rounds; the goals are at most 4 times\n"
        "cp -r, and a second run no slower than the first\n",
        exports, rounds);
    std::printf("import %8.1f ms   cp -r %8.1f ms   ratio %.2f\n", first, cp, first / cp);
    std::printf("again  %8.1f ms                       ratio %.2f to the first\n",
                milliseconds(seconds), milliseconds(seconds) / first);
}
