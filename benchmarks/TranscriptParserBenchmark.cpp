// Parsing a transcript, in bytes per second: a meeting of an hour and one of 100,000 turns.
#include <benchmark/benchmark.h>

#include "OmbrixMarkdownKit/Transcript/MarkdownTranscript.h"
#include "OmbrixMarkdownKit/Transcript/OmbrixTranscriptMarker.h"
#include "Talk.h"

namespace {

using namespace ombrix;

void parse(benchmark::State& state) {
    const std::string text = Talk::transcript(static_cast<std::size_t>(state.range(0)));
    for (auto _ : state) benchmark::DoNotOptimize(MarkdownTranscriptParser::parse(text));
    state.SetBytesProcessed(state.iterations() * static_cast<std::int64_t>(text.size()));
}
BENCHMARK(parse)->Arg(200)->Arg(100'000)->Unit(benchmark::kMicrosecond);

// The worst case: a file that is not a transcript is read to its end.
void declaresNothing(benchmark::State& state) {
    const std::string text = Talk::ascii(static_cast<std::size_t>(state.range(0)));
    for (auto _ : state) benchmark::DoNotOptimize(OmbrixTranscriptMarker::declares(text));
    state.SetBytesProcessed(state.iterations() * static_cast<std::int64_t>(text.size()));
}
BENCHMARK(declaresNothing)->Arg(50'000);
}  // namespace
