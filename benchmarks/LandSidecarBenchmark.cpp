// Reading the sidecars of 10,000 landed meetings, with 12 commitments and 3 resolutions each, as
// every command about follow-ups does.
#include <benchmark/benchmark.h>

#include <string>
#include <vector>

#include "OmbrixMemoryKit/Land/LandSidecar.h"

namespace ombrix {
namespace {

LandSidecar landed(int number) {
    const std::string text = std::to_string(number);
    LandSidecar sidecar{.meetingKey = "m-" + text,
                        .contentFingerprint = "8899aabbccddeeff",
                        .relativePath = "Weekly/Product weekly " + text + ".md",
                        .title = "Product weekly " + text,
                        .date = "2026-07-27",
                        .participants = {"Ana Ruiz", "Ben Okafor", "Zoë Falk"},
                        .landedAt = Instant(std::chrono::seconds(1'785'000'000 + number)),
                        .route = "claudeCode",
                        .model = "claude-sonnet-4-5",
                        .recipeVersion = "land/v2",
                        .inputHash = "sha256:" + std::string(64, 'a')};
    sidecar.output.summary = "They settled the price by the sensor and left the start open.";
    sidecar.output.notes = {{"Pricing", {"Priced by the sensor.", "The start is still open."}}};
    sidecar.output.decisions = {{"Price by the sensor", "We go by the sensor then.", "Ana Ruiz"}};
    for (int i = 0; i < 12; ++i) {
        const bool hasDue = i % 2 == 0;
        sidecar.output.commitments.push_back(
            {.direction = hasDue ? CommitmentDirection::userOwes : CommitmentDirection::owedToUser,
             .who = "Ana Ruiz",
             .whoKey = "name:ana ruiz",
             .what = "Send the revised price list of week " + std::to_string(i),
             .quote = "So I'll send you the revised list by Friday, promised. Is there anything "
                      "else that you need, \"as before\"?",
             .speaker = "Me",
             .dueRaw = "by Friday",
             .due = hasDue ? std::optional<std::string>("2026-07-31") : std::nullopt,
             .certainty = Certainty::recorded});
    }
    for (int i = 0; i < 3; ++i)
        sidecar.output.resolutions.push_back({.id = "c-0a1b2c3" + std::to_string(i),
                                              .status = LandResolution::Status::done,
                                              .quote = "The list went out on Monday."});
    return sidecar;
}

void decodesSidecars(benchmark::State& state) {
    std::vector<std::string> files;
    std::int64_t bytes = 0;
    for (int i = 0; i < state.range(0); ++i) {
        files.push_back(landed(i).encode());
        bytes += static_cast<std::int64_t>(files.back().size());
    }
    for (auto _ : state)
        for (const auto& file : files) benchmark::DoNotOptimize(LandSidecar::decode(file));
    state.SetBytesProcessed(state.iterations() * bytes);
}
BENCHMARK(decodesSidecars)->Arg(1'000)->Arg(10'000)->Unit(benchmark::kMillisecond);
}  // namespace
}  // namespace ombrix
