// Reading and counting a log of a million presses, as `key stats` does.
#include <benchmark/benchmark.h>
#include <unistd.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <string>

#include "OmbrixCore/KeyPressLog.h"

namespace ombrix {
namespace {

std::string lineOf(int number) {
    const KeyPressSummary summary{
        .bundleID = "com.example.application" + std::to_string(number % 12),
        .kind = number % 9 == 0 ? "pull" : "instruction",
        .outcome = number % 4 == 0 ? "dismissed" : "inserted",
        .path = "field",
        .partialRead = number % 7 == 0,
        .toMark = 0.031,
        .toMeetingNamed = 0.2 + number % 100 / 400.0,
        .toFirstDraft = 1.5 + number % 1000 / 300.0,
        .toInserted = 4.25,
        .at = Instant(std::chrono::seconds(1'780'000'000 + number)),
        .source = "meeting",
        .offered = true};
    return Json::write(encode(summary), Json::Style::canonical) + "\n";
}

void countsPresses(benchmark::State& state) {
    std::string path = std::filesystem::temp_directory_path() / "key-press-log-XXXXXX";
    ::close(mkstemp(path.data()));
    {
        std::ofstream log(path, std::ios::binary);
        for (int i = 0; i < 1'000'000; ++i) log << lineOf(i);
    }
    for (auto _ : state) {
        KeyPressLog::Tally tally;
        KeyPressLog::forEach(path, [&](const KeyPressSummary& summary) { tally.add(summary); });
        benchmark::DoNotOptimize(tally.stats());
    }
    state.SetBytesProcessed(state.iterations() *
                            static_cast<std::int64_t>(std::filesystem::file_size(path)));
    std::filesystem::remove(path);
}
BENCHMARK(countsPresses)->Unit(benchmark::kMillisecond);
}  // namespace
}  // namespace ombrix
