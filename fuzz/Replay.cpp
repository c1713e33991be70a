// Runs one fuzz target over files, without libFuzzer:
//
//   FuzzReplay <target> <file or folder>...
//
// Ends with the first input that breaks the target, or takes longer than a minute, and names it.
#include <signal.h>
#include <unistd.h>

#include <cstdint>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <iterator>
#include <map>
#include <string>
#include <string_view>
#include <vector>

#define TARGET(name) extern "C" int name(const std::uint8_t* data, std::size_t size);
#include "targets.inc"
#undef TARGET

// Called before a sanitizer ends the process; absent in a build without sanitizers.
extern "C" __attribute__((weak)) void __sanitizer_set_death_callback(void (*callback)());

namespace {

using Entry = int (*)(const std::uint8_t*, std::size_t);

const std::map<std::string_view, Entry> targets{
#define TARGET(name) {#name, name},
#include "targets.inc"
#undef TARGET
};

std::string current;  ///< the file whose bytes the target is reading

void nameInput() {
    const std::string line = "The input is " + current + "\n";
    [[maybe_unused]] const auto written = ::write(STDERR_FILENO, line.data(), line.size());
}

void endNamingInput(int signal) {
    nameInput();
    ::signal(signal, SIG_DFL);
    ::raise(signal);
}

void replay(Entry entry, const std::filesystem::path& path) {
    constexpr unsigned longestSeconds = 60;
    std::ifstream file(path, std::ios::binary);
    const std::string bytes{std::istreambuf_iterator<char>(file), {}};
    // A copy of exactly this size, so that reading past its end is found.
    const std::vector<std::uint8_t> input(bytes.begin(), bytes.end());
    current = path.string();
    ::alarm(longestSeconds);
    entry(input.data(), input.size());
    ::alarm(0);
}
}  // namespace

int main(int argc, char* argv[]) {
    const auto target = argc < 3 ? targets.end() : targets.find(argv[1]);
    if (target == targets.end()) {
        std::cerr << "usage: FuzzReplay <target> <file or folder>...\nThe targets are";
        for (const auto& [name, entry] : targets) std::cerr << " " << name;
        std::cerr << "\n";
        return 64;
    }
    ::signal(SIGABRT, endNamingInput);
    ::signal(SIGALRM, endNamingInput);
    if (__sanitizer_set_death_callback != nullptr) __sanitizer_set_death_callback(nameInput);
    int inputs = 0;
    for (int i = 2; i < argc; ++i) {
        const std::filesystem::path given = argv[i];
        if (!std::filesystem::is_directory(given)) {
            replay(target->second, given);
            ++inputs;
            continue;
        }
        for (const auto& item : std::filesystem::recursive_directory_iterator(given)) {
            if (!item.is_regular_file()) continue;
            replay(target->second, item.path());
            ++inputs;
        }
    }
    std::cerr << inputs << " inputs, no finding\n";
    return inputs > 0 ? 0 : 1;
}
