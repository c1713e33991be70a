// answer-benchmark CLI LIBRARY [--rounds N]
//
// Times whole commands against other tools that do comparable work: `answer` over a big library
// against ripgrep searching for the same words in the same files, and commands that need no library
// against the start of git. LIBRARY comes from make-library.
#include <unistd.h>

#include <array>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <string>
#include <vector>

#include "ProcessRun.h"

namespace {

using namespace ombrix;
using ProcessRun::Command;
using ProcessRun::Cost;

// Words that occur in most meetings, in every tenth and in every hundredth.
constexpr std::array<const char*, 3> words{"customer", "pricing", "Osterby"};
constexpr const char* question = "what pricing did the customer Osterby want";
constexpr const char* ofOneMonth = "what pricing did the customer Osterby want in June 2026";

/// A support directory that names the library; removed at the end.
class SupportDirectory {
  public:
    explicit SupportDirectory(const std::filesystem::path& library) {
        std::string pattern = std::filesystem::temp_directory_path() / "answer-benchmark-XXXXXX";
        if (mkdtemp(pattern.data()) == nullptr) std::exit(1);
        path_ = pattern;
        std::ofstream(path_ + "/config.json") << "{\"output_folder_display_path\": " << library
                                              << ", \"user_name\": \"Nadia Brandt\"}";
    }
    SupportDirectory(const SupportDirectory&) = delete;
    SupportDirectory& operator=(const SupportDirectory&) = delete;
    ~SupportDirectory() {
        std::error_code ignored;
        std::filesystem::remove_all(path_, ignored);
    }
    const std::string& path() const { return path_; }

  private:
    std::string path_;
};

/// How many files contain each word, counted by ripgrep.
void printWords(const std::string& library) {
    std::uintmax_t files = 0, bytes = 0;
    for (const auto& entry : std::filesystem::recursive_directory_iterator(library)) {
        if (!entry.is_regular_file()) continue;
        ++files;
        bytes += entry.file_size();
    }
    std::printf("library: %ju files, %.0f MB\nwords:  ", files, static_cast<double>(bytes) / 1e6);
    for (const char* word : words) {
        const std::string command =
            "rg -i -l -e " + std::string(word) + " '" + library + "' | wc -l";
        long holding = 0;
        if (FILE* pipe = popen(command.c_str(), "r")) {
            if (std::fscanf(pipe, "%ld", &holding) != 1) holding = 0;
            pclose(pipe);
        }
        std::printf(" %s (%ld files)", word, holding);
    }
    std::printf("\n\n");
}

void printRow(const char* name, const Cost& cost, const Cost& other) {
    std::printf("%-44s %9.2f ms %8.1f MB   ratio %.2f\n", name, cost.seconds * 1000,
                cost.peakMegabytes, cost.seconds / other.seconds);
}

void answers(const std::string& cli, const std::string& library, int rounds) {
    const SupportDirectory support(library);
    const auto ask = [&](const char* text) {
        return Command{cli, "answer", text, "--support-dir", support.path(), "--now", "2026-07-31"};
    };
    Command search{"rg", "-j1", "-i", "-c"};
    for (const char* word : words) search.insert(search.end(), {"-e", word});
    search.push_back(library);

    const auto costs = ProcessRun::sideBySide({search, ask(question), ask(ofOneMonth)}, rounds);
    std::printf("answer, warm, median of %d rounds; the goal is a ratio of at most 3 and 150 MB\n",
                rounds);
    printRow("rg -j1 -i -c, three words", costs[0], costs[0]);
    printRow("answer, three keywords", costs[1], costs[0]);
    printRow("answer, three keywords in June 2026", costs[2], costs[0]);
}

/// `key simulate` reads the frontmatters alone.
void presses(const std::string& cli, const std::string& library, int rounds) {
    const SupportDirectory support(library);
    const auto costs = ProcessRun::sideBySide(
        {{cli, "answer", question, "--support-dir", support.path(), "--now", "2026-07-31"},
         {cli, "key", "simulate", "--title", "Osterby pricing (DM)", "--support-dir",
          support.path(), "--now", "2026-07-31"}},
        rounds);
    std::printf("\nkey simulate, warm, median of %d rounds; the goal is a ratio of at most 0.2\n",
                rounds);
    printRow("answer, three keywords", costs[0], costs[0]);
    printRow("key simulate", costs[1], costs[0]);
}

void starts(const std::string& cli, int rounds) {
    const auto costs = ProcessRun::sideBySide(
        {{"git", "--version"}, {cli, "spec"}, {cli, "info", "--support-dir", "/nonexistent"}},
        rounds);
    std::printf("\nstart to exit, median of %d rounds; the goal is a ratio of at most 4\n", rounds);
    printRow("git --version", costs[0], costs[0]);
    printRow("spec", costs[1], costs[0]);
    printRow("info", costs[2], costs[0]);
}
}  // namespace

int main(int argc, char** argv) {
    const std::vector<std::string> arguments(argv + 1, argv + argc);
    int rounds = 11;
    if (arguments.size() == 4 && arguments[2] == "--rounds") rounds = std::atoi(argv[4]);
    if ((arguments.size() != 2 && arguments.size() != 4) || rounds < 1) {
        std::fputs("usage: answer-benchmark CLI LIBRARY [--rounds N]\n", stderr);
        return 64;
    }
    const std::string library = std::filesystem::absolute(arguments[1]);
    printWords(library);
    answers(arguments[0], library, rounds);
    presses(arguments[0], library, rounds);
    starts(arguments[0], 20 * rounds);
}
