// Runs programs for the benchmarks of whole commands and measures their time and memory.
#pragma once

#include <fcntl.h>
#include <spawn.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <chrono>
#include <cstddef>
#include <cstdio>
#include <cstdlib>
#include <string>
#include <utility>
#include <vector>

extern char** environ;

namespace ombrix::ProcessRun {

using Command = std::vector<std::string>;

struct Cost {
    double seconds = 0;        ///< from start to exit, by the wall clock
    double peakMegabytes = 0;  ///< maximum resident memory
};

/// Runs a command, discarding its output, and waits for it. Exits this process if the command
/// cannot be started or fails, since the cost of a failure says nothing.
inline Cost run(const Command& command) {
    std::vector<char*> arguments;
    for (const std::string& word : command) arguments.push_back(const_cast<char*>(word.c_str()));
    arguments.push_back(nullptr);
    posix_spawn_file_actions_t actions;
    posix_spawn_file_actions_init(&actions);
    posix_spawn_file_actions_addopen(&actions, STDOUT_FILENO, "/dev/null", O_WRONLY, 0);

    const auto start = std::chrono::steady_clock::now();
    pid_t process = 0;
    const int failed =
        posix_spawnp(&process, arguments[0], &actions, nullptr, arguments.data(), environ);
    posix_spawn_file_actions_destroy(&actions);
    int status = 0;
    rusage usage{};
    if (failed != 0 || wait4(process, &status, 0, &usage) != process || status != 0) {
        std::fprintf(stderr, "failed:");
        for (const std::string& word : command) std::fprintf(stderr, " %s", word.c_str());
        std::fprintf(stderr, "\n");
        std::exit(1);
    }
    const std::chrono::duration<double> time = std::chrono::steady_clock::now() - start;
    return {.seconds = time.count(),
            .peakMegabytes = static_cast<double>(usage.ru_maxrss) * 1024 / 1e6};
}

/// The command line of a benchmark: PROGRAM FOLDER [--rounds N].
struct Order {
    std::string program, folder;
    int rounds = 0;
};

/// Without "--rounds" there are `rounds`. Says how to call the benchmark `name` and exits for any
/// other line.
inline Order orderOf(const char* name, int argc, char** argv, int rounds) {
    const bool isGiven = argc == 5 && std::string(argv[3]) == "--rounds";
    if (isGiven) rounds = std::atoi(argv[4]);
    if ((argc != 3 && !isGiven) || rounds < 1) {
        std::fprintf(stderr, "usage: %s CLI FOLDER [--rounds N]\n", name);
        std::exit(64);
    }
    return {.program = argv[1], .folder = argv[2], .rounds = rounds};
}

/// The median time and the highest memory peak of the runs.
inline Cost middle(std::vector<Cost> costs) {
    std::ranges::sort(costs, {}, &Cost::seconds);
    const double peak = std::ranges::max(costs, {}, &Cost::peakMegabytes).peakMegabytes;
    return {.seconds = costs[costs.size() / 2].seconds, .peakMegabytes = peak};
}

/// The cost of each command. The commands take turns, so that changes in the machine's speed affect
/// all of them alike. The first round warms the caches and is not counted.
inline std::vector<Cost> sideBySide(const std::vector<Command>& commands, int rounds) {
    std::vector<std::vector<Cost>> costs(commands.size());
    for (int round = -1; round < rounds; ++round) {
        for (std::size_t i = 0; i < commands.size(); ++i) {
            const Cost cost = run(commands[i]);
            if (round >= 0) costs[i].push_back(cost);
        }
    }
    std::vector<Cost> middles;
    for (auto& each : costs) middles.push_back(middle(std::move(each)));
    return middles;
}
}  // namespace ombrix::ProcessRun
