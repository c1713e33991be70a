// Packing meetings for a model: far more of them than the budget has room for.
#include <benchmark/benchmark.h>

#include <string>
#include <vector>

#include "OmbrixAnswerKit/Grounding/ContextBudget.h"
#include "OmbrixAnswerKit/Grounding/GroundingBuilder.h"
#include "Talk.h"

namespace {

using namespace ombrix;

std::vector<IdentifiedDocument> library(std::size_t meetings, std::size_t turns) {
    const std::string talk = Talk::ascii(turns * 50 + 300);
    TranscriptDocument document{.title = "Weekly", .participants = {"Nadia Brandt", "Bo Ek"}};
    for (std::size_t i = 0; i < turns; ++i)
        document.turns.push_back({i % 2 == 0 ? "Nadia Brandt" : "Bo Ek", talk.substr(i * 50, 250)});
    std::vector<IdentifiedDocument> library(meetings, {.id = {}, .document = document});
    for (std::size_t i = 0; i < meetings; ++i) {
        library[i].id = "/transcripts/" + std::to_string(i) + ".md";
        library[i].document.date = "2026-05-" + std::to_string(10 + i % 20);
    }
    return library;
}

void packs(benchmark::State& state, AskIntent intent, std::size_t meetings, std::size_t turns) {
    const auto scoped = library(meetings, turns);
    GroundingBuilder::HitLines hitLines;
    for (const auto& [id, document] : scoped) hitLines[id] = {20, 100, 300};
    for (auto _ : state)
        benchmark::DoNotOptimize(GroundingBuilder::build(scoped, intent, hitLines, 30'000));
}
BENCHMARK_CAPTURE(packs, fromTheTop, AskIntent::catchUp, 500, 400)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(packs, aroundHits, AskIntent::freeform, 500, 400)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(packs, oneLongMeeting, AskIntent::catchUp, 1, 20'000)
    ->Unit(benchmark::kMillisecond);

/// What cannot be saved: the text of the pack and its hash, once.
void encodesThePack(benchmark::State& state) {
    const auto pack = GroundingBuilder::build(library(500, 400), AskIntent::catchUp, {}, 30'000);
    for (auto _ : state)
        benchmark::DoNotOptimize(AnswerContextPack::computeHash(pack.version, pack.meetings));
}
BENCHMARK(encodesThePack)->Unit(benchmark::kMillisecond);
}  // namespace
