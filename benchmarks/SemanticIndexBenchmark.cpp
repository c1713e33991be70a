// The semantic index: scoring a question against every vector, beside the same products by a plain
// loop, and loading a file, beside reading it and decoding its base64. The argument is the number
// of documents, each with 60 chunks of 512 floats; 10,000 of them are 1.2 GB in memory.
#include <benchmark/benchmark.h>
#include <unistd.h>

#include <string>
#include <vector>

#include "OmbrixAnswerKit/Semantic/SemanticIndex.h"
#include "OmbrixPlatform/Base64.h"
#include "OmbrixPlatform/Files.h"
#include "Vocabulary.h"

namespace {

using namespace ombrix;

constexpr std::size_t chunks = 60;
constexpr std::size_t dimension = 512;

/// A vector for any text; the same for all.
class Fixed final : public SentenceEmbedding {
  public:
    std::size_t dimension() const override { return ::dimension; }
    std::optional<std::vector<float>> vector(std::string_view) const override {
        return std::vector<float>(::dimension, 0.25F);
    }
};

SemanticIndex index(std::int64_t documents) {
    Dice dice(3);
    SemanticIndex index;
    for (std::int64_t i = 0; i < documents; ++i) {
        SemanticIndex::Entry entry{.contentHash = std::to_string(i), .chunks = {}};
        for (std::size_t c = 0; c < chunks; ++c) {
            entry.chunks.push_back({.text = "A chunk of some words", .vector = {}});
            auto& vector = entry.chunks.back().vector;
            vector.reserve(dimension);
            for (std::size_t k = 0; k < dimension; ++k)
                vector.push_back(static_cast<float>(dice.between(0, 2000)) / 1000 - 1);
        }
        index.entries.emplace("/transcripts/" + std::to_string(i) + ".md", std::move(entry));
    }
    return index;
}

void setVectors(benchmark::State& state) {
    state.SetBytesProcessed(state.iterations() * state.range(0) *
                            static_cast<std::int64_t>(chunks * dimension * sizeof(float)));
}

void scores(benchmark::State& state) {
    const auto all = index(state.range(0));
    for (auto _ : state) benchmark::DoNotOptimize(all.scores("question", Fixed()));
    setVectors(state);
}
BENCHMARK(scores)->Arg(100)->Arg(10'000)->Unit(benchmark::kMillisecond);

/// As the compiler vectorises it when it may reorder the sum.
[[gnu::optimize("O3", "fast-math"), gnu::noinline]] float plainDot(const float* a, const float* b,
                                                                   std::size_t size) {
    float sum = 0;
    for (std::size_t i = 0; i < size; ++i) sum += a[i] * b[i];
    return sum;
}

void plainDotProducts(benchmark::State& state) {
    const auto all = index(state.range(0));
    const auto question = *Fixed().vector("question");
    for (auto _ : state)
        for (const auto& [id, entry] : all.entries)
            for (const auto& chunk : entry.chunks)
                benchmark::DoNotOptimize(
                    plainDot(question.data(), chunk.vector.data(), chunk.vector.size()));
    setVectors(state);
}
BENCHMARK(plainDotProducts)->Arg(100)->Arg(10'000)->Unit(benchmark::kMillisecond);

/// A saved index, removed with the object.
struct SavedIndex {
    std::string path = "semantic-index-benchmark-" + std::to_string(::getpid()) + ".json";
    explicit SavedIndex(std::int64_t documents) { index(documents).save(path); }
    ~SavedIndex() { Files::remove(path); }
};

void loads(benchmark::State& state) {
    const SavedIndex saved(state.range(0));
    for (auto _ : state) benchmark::DoNotOptimize(SemanticIndex::load(saved.path));
    setVectors(state);
}
BENCHMARK(loads)->Arg(1'000)->Unit(benchmark::kMillisecond);

void readsAndDecodesBase64(benchmark::State& state) {
    const SavedIndex saved(state.range(0));
    const std::string data =
        Base64::encode(std::string(dimension * sizeof(float), '\x5A'));  // of one vector
    for (auto _ : state) {
        Files::Reader file;
        benchmark::DoNotOptimize(file.read(saved.path));
        for (std::size_t left = static_cast<std::size_t>(state.range(0)) * chunks; left > 0; --left)
            benchmark::DoNotOptimize(Base64::decode(data));
    }
    setVectors(state);
}
BENCHMARK(readsAndDecodesBase64)->Arg(1'000)->Unit(benchmark::kMillisecond);
}  // namespace
