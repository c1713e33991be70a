// answer-benchmark CLI LIBRARY VARIANTS [--rounds N]
//
// Times whole commands against other tools that do comparable work: `answer` over a big library
// against ripgrep searching for the same words in the same files, and commands that need no library
// against the start of git. LIBRARY is any folder of transcripts. VARIANTS holds a folder for each
// spelling ("plain", "quotes", "accents") and each language, made by make-library.
#include <unistd.h>

#include <array>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <memory>
#include <string>
#include <vector>

#include "Languages.h"
#include "ProcessRun.h"

namespace {

using namespace ombrix;
using ProcessRun::Command;
using ProcessRun::Cost;

// Words of the topics of make-library that begin as many others do; also of real meetings.
constexpr std::array<const char*, 3> words{"belief", "structur", "net"};
constexpr const char* question = "structure of the belief net";
constexpr const char* ofOneMonth = "structure of the belief net in June 2026";
constexpr const char* ofEightWords =
    "budget for the remote control design and the market research of young people";

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

/// The bytes of all files in a folder, and how many there are.
struct Extent {
    explicit Extent(const std::string& folder) {
        for (const auto& entry : std::filesystem::recursive_directory_iterator(folder)) {
            if (!entry.is_regular_file()) continue;
            ++files;
            bytes += static_cast<double>(entry.file_size());
        }
    }
    std::size_t files = 0;
    double bytes = 0;
};

/// How many files contain each word, counted by ripgrep.
void printWords(const std::string& library) {
    const Extent extent(library);
    std::printf("library: %zu files, %.0f MB\nwords:  ", extent.files, extent.bytes / 1e6);
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
    std::printf("\n");
}

void printTitle(const char* title, int rounds) {
    std::printf("\n%s; warm, median of %d rounds\n", title, rounds);
}

void printRow(const char* name, const Cost& cost, const Cost& other) {
    std::printf("%-44s %9.2f ms %8.1f MB   ratio %.2f\n", name, cost.seconds * 1000,
                cost.peakMegabytes, cost.seconds / other.seconds);
}

Command ask(const std::string& cli, const SupportDirectory& support, const std::string& text) {
    return {cli, "answer", text, "--support-dir", support.path(), "--now", "2026-07-31"};
}

/// The command on one core, where it has one worker.
Command onOneCore(Command command) {
    command.insert(command.begin(), {"taskset", "-c", "0"});
    return command;
}

void answers(const std::string& cli, const std::string& library, int rounds) {
    const SupportDirectory support(library);
    Command search{"rg", "-i", "-c"};
    for (const char* word : words) search.insert(search.end(), {"-e", word});
    search.push_back(library);
    Command searchOfOne = search;
    searchOfOne.insert(searchOfOne.begin() + 1, "-j1");

    const auto costs = ProcessRun::sideBySide(
        {search, ask(cli, support, question), onOneCore(searchOfOne),
         onOneCore(ask(cli, support, question)), ask(cli, support, ofOneMonth)},
        rounds);
    printTitle("all cores; the goal is a ratio of at most 2 and 64 MB", rounds);
    printRow("rg -i -c, three words", costs[0], costs[0]);
    printRow("answer, three keywords", costs[1], costs[0]);
    printRow("answer, three keywords in June 2026", costs[4], costs[0]);
    printTitle("one core; the goal is a ratio of at most 2", rounds);
    printRow("rg -j1 -i -c, three words", costs[2], costs[2]);
    printRow("answer, three keywords", costs[3], costs[2]);

    const auto longer = ProcessRun::sideBySide(
        {ask(cli, support, question), ask(cli, support, ofEightWords)}, rounds);
    printTitle("a longer question; the goal is a ratio of at most 2", rounds);
    printRow("answer, three keywords", longer[0], longer[0]);
    printRow("answer, eight keywords", longer[1], longer[0]);
}

void fewFiles(const std::string& cli, const std::string& library, int rounds) {
    const SupportDirectory support(library);
    const auto costs = ProcessRun::sideBySide(
        {{"rg", "-i", "-c", "-e", words[0], "-e", words[1], "-e", words[2], library},
         ask(cli, support, question)},
        rounds);
    printTitle("100 files", rounds);
    printRow("rg -i -c, three words", costs[0], costs[0]);
    printRow("answer, three keywords", costs[1], costs[0]);
}

/// One library and the question that it is asked.
struct Variant {
    std::string folder;
    std::string question;
};

/// Asks each variant and compares the time for a byte with that of the first.
void variants(const std::string& cli, const std::string& parent, const std::vector<Variant>& asked,
              int rounds) {
    std::vector<std::unique_ptr<SupportDirectory>> supports;
    std::vector<Command> commands;
    for (const auto& [folder, text] : asked) {
        supports.push_back(std::make_unique<SupportDirectory>(parent + "/" + folder));
        commands.push_back(ask(cli, *supports.back(), text));
    }
    auto costs = ProcessRun::sideBySide(commands, rounds);
    for (std::size_t i = 0; i < asked.size(); ++i) {
        const std::string& folder = asked[i].folder;
        costs[i].seconds *= 100e6 / Extent(parent + "/" + folder).bytes;
        printRow((folder + ", 100 MB").c_str(), costs[i], costs[0]);
    }
}

void spellings(const std::string& cli, const std::string& parent, int rounds) {
    printTitle("spellings; the goals are ratios of at most 1.15 and 1.5", rounds);
    variants(cli, parent, {{"plain", question}, {"quotes", question}, {"accents", question}},
             rounds);
}

void languages(const std::string& cli, const std::string& parent, int rounds) {
    printTitle("languages; the goals are ratios of at most 2, of Japanese 6", rounds);
    std::vector<Variant> asked;
    for (const auto& language : Languages::all()) {
        std::string text;
        for (const auto word : language.keywords) text.append(word).append(" ");
        asked.push_back({std::string(language.name), text});
    }
    variants(cli, parent, asked, rounds);
}

/// `key simulate` reads the frontmatters alone.
void presses(const std::string& cli, const std::string& library, int rounds) {
    const SupportDirectory support(library);
    const auto costs =
        ProcessRun::sideBySide({ask(cli, support, question),
                                {cli, "key", "simulate", "--title", "Osterby pricing (DM)",
                                 "--support-dir", support.path(), "--now", "2026-07-31"}},
                               rounds);
    printTitle("key simulate; the goal is a ratio of at most 0.2", rounds);
    printRow("answer, three keywords", costs[0], costs[0]);
    printRow("key simulate", costs[1], costs[0]);
}

void starts(const std::string& cli, int rounds) {
    const auto costs = ProcessRun::sideBySide(
        {{"git", "--version"}, {cli, "spec"}, {cli, "info", "--support-dir", "/nonexistent"}},
        rounds);
    printTitle("start to exit; the goal is a ratio of at most 1.5", rounds);
    printRow("git --version", costs[0], costs[0]);
    printRow("spec", costs[1], costs[0]);
    printRow("info", costs[2], costs[0]);
}
}  // namespace

int main(int argc, char** argv) {
    const std::vector<std::string> arguments(argv + 1, argv + argc);
    int rounds = 11;
    if (arguments.size() == 5 && arguments[3] == "--rounds") rounds = std::atoi(argv[5]);
    if ((arguments.size() != 3 && arguments.size() != 5) || rounds < 1) {
        std::fputs("usage: answer-benchmark CLI LIBRARY VARIANTS [--rounds N]\n", stderr);
        return 64;
    }
    const std::string& cli = arguments[0];
    const std::string library = std::filesystem::absolute(arguments[1]);
    const std::string parent = std::filesystem::absolute(arguments[2]);
    printWords(library);
    answers(cli, library, rounds);
    fewFiles(cli, parent + "/few", 5 * rounds);
    spellings(cli, parent, rounds);
    languages(cli, parent, rounds);
    presses(cli, library, rounds);
    starts(cli, 20 * rounds);
}
