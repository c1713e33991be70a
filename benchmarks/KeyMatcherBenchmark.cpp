// Matching a surface against 10,000 recent meetings of eight participants each.
#include <benchmark/benchmark.h>

#include <string>
#include <vector>

#include "LibraryWords.h"
#include "OmbrixAnswerKit/Key/KeyMatcher.h"
#include "Vocabulary.h"

namespace ombrix {
namespace {

/// Names as a pool repeats them, or a new name for every participant.
enum class Names { recurring, distinct };

std::vector<AskMeeting> poolOf(Names names) {
    Dice dice(1);
    std::vector<AskMeeting> pool;
    for (int i = 0; i < 10'000; ++i) {
        AskMeeting meeting{.id = "/library/" + std::to_string(i) + ".md",
                           .title = std::string(dice.of(LibraryWords::titles)) + ", " +
                                    std::string(dice.of(LibraryWords::topics)),
                           .date = "2026-07-" + std::to_string(10 + i % 20),
                           .folder = i % 3 == 0 ? "Customers" : ""};
        for (int person = 0; person < 8; ++person) {
            std::string name = std::string(dice.of(LibraryWords::firstNames)) + " ";
            if (names == Names::distinct)
                for (int n = 8 * i + person; n > 0; n /= 26)
                    name += static_cast<char>('a' + n % 26);
            name += dice.of(LibraryWords::lastNames);
            if (person % 4 == 3) name += " <" + std::to_string(i % 50) + "@lumen.co.uk>";
            meeting.participants.push_back(std::move(name));
        }
        pool.push_back(std::move(meeting));
    }
    return pool;
}

void world(benchmark::State& state, Names names) {
    const auto pool = poolOf(names);
    const KeyMatcher::Surface surface{
        .windowTitle = std::string(LibraryWords::firstNames[0]) + " (DM) - pricing workshop",
        .fieldText = "send the numbers of the pilot",
        .nearText = "To: " + std::string(LibraryWords::firstNames[1]) + " Somebody"};
    for (auto _ : state)
        benchmark::DoNotOptimize(
            KeyMatcher::world(surface, pool, {}, "Nadia Brandt", {}, "2026-07-31"));
}
BENCHMARK_CAPTURE(world, recurringNames, Names::recurring)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(world, distinctNames, Names::distinct)->Unit(benchmark::kMillisecond);
}  // namespace
}  // namespace ombrix
