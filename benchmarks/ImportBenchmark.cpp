// Converting exports of 50 MB, in bytes per second.
#include <benchmark/benchmark.h>

#include <string>

#include "OmbrixMarkdownKit/Import/TranscriptImport.h"
#include "OmbrixPlatform/Json.h"
#include "Talk.h"

namespace {

using namespace ombrix;

constexpr std::size_t exportSize = 50'000'000;
constexpr std::string_view speakers[] = {"Nadia Brandt", "Jonas Weir", "Łukasz Wrona"};

/// `piece(number, speaker, words)` again and again.
template <typename Piece>
std::string exportOf(std::string beginning, Piece piece, std::string_view end) {
    constexpr std::size_t sentence = 80;
    const std::string talk = Talk::ascii(1'000'000);
    for (std::size_t i = 0; beginning.size() < exportSize; ++i) {
        const std::size_t at = i * sentence % (talk.size() - sentence);
        beginning +=
            piece(std::to_string(i), std::string(speakers[i / 2 % 3]), talk.substr(at, sentence));
    }
    return beginning.append(end);
}

void convert(benchmark::State& state, const std::string& text) {
    for (auto _ : state)
        benchmark::DoNotOptimize(TranscriptImport::convertAll(text, "x", std::nullopt));
    state.SetBytesProcessed(state.iterations() * static_cast<std::int64_t>(text.size()));
}

const std::string cueTimes = "\n00:01:02.500 --> 00:01:05.750\n";

void convertsNamedCues(benchmark::State& state) {
    convert(state, exportOf(
                       "WEBVTT\n\n",
                       [](const auto& number, const auto& speaker, const auto& words) {
                           return number + cueTimes + speaker + ": " + words + "\n\n";
                       },
                       ""));
}
BENCHMARK(convertsNamedCues)->Unit(benchmark::kMillisecond);

void convertsVoices(benchmark::State& state) {
    convert(state, exportOf(
                       "WEBVTT\n\n",
                       [](const auto& number, const auto& speaker, const auto& words) {
                           return number + cueTimes + "<v " + speaker + ">" + words + "</v>\n\n";
                       },
                       ""));
}
BENCHMARK(convertsVoices)->Unit(benchmark::kMillisecond);

void convertsFireflies(benchmark::State& state) {
    convert(state, exportOf(R"({"data": {"transcript": {"title": "Weekly", "sentences": [)",
                            [](const auto& number, const auto& speaker, const auto& words) {
                                return R"({"index": )" + number + R"(, "speaker_name": ")" +
                                       speaker + R"(", "speaker_id": 1, "text": ")" + words +
                                       R"(", "start_time": 1.25, "end_time": 3.5},)";
                            },
                            R"({"text": ""}]}}})"));
}
BENCHMARK(convertsFireflies)->Unit(benchmark::kMillisecond);
}  // namespace
