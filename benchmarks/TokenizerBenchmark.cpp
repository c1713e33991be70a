// Splitting text into words, the hot path of every question, in bytes per second.
#include <benchmark/benchmark.h>

#include "OmbrixMarkdownKit/Words/QueryTokenizer.h"
#include "OmbrixMarkdownKit/Words/WordScanner.h"
#include "Talk.h"

namespace {

using namespace ombrix;

/// Reads the words one by one, as a search does, without storing them.
void scan(benchmark::State& state, const std::string& text) {
    for (auto _ : state) {
        WordScanner scanner(text);
        WordScanner::Token token;
        while (scanner.next(token)) benchmark::DoNotOptimize(token.stem);
    }
    state.SetBytesProcessed(state.iterations() * static_cast<std::int64_t>(text.size()));
}

/// Stores the words in a list.
void tokenize(benchmark::State& state, const std::string& text) {
    for (auto _ : state) benchmark::DoNotOptimize(QueryTokenizer::tokens(text));
    state.SetBytesProcessed(state.iterations() * static_cast<std::int64_t>(text.size()));
}

void words(benchmark::State& state, const std::string& text) {
    for (auto _ : state) benchmark::DoNotOptimize(QueryTokenizer::words(text));
    state.SetBytesProcessed(state.iterations() * static_cast<std::int64_t>(text.size()));
}

BENCHMARK_CAPTURE(scan, ascii, Talk::ascii(100'000));
BENCHMARK_CAPTURE(scan, mixed, Talk::mixed(100'000));
BENCHMARK_CAPTURE(tokenize, ascii, Talk::ascii(100'000));
BENCHMARK_CAPTURE(tokenize, mixed, Talk::mixed(100'000));
BENCHMARK_CAPTURE(words, ascii, Talk::ascii(100'000));
BENCHMARK_CAPTURE(words, mixed, Talk::mixed(100'000));

void keywordsOfAQuestion(benchmark::State& state) {
    for (auto _ : state) {
        benchmark::DoNotOptimize(
            QueryTokenizer::keywords("what did we decide about pricing with \"Vale Thorn\"?"));
    }
}
BENCHMARK(keywordsOfAQuestion);
}  // namespace
