// Ranking: collecting the evidence of one file, and scoring the evidence of many.
#include <benchmark/benchmark.h>

#include <string>
#include <vector>

#include "OmbrixMarkdownKit/Search/RankedTranscriptSearch.h"
#include "OmbrixMarkdownKit/Transcript/MarkdownTranscript.h"
#include "OmbrixMarkdownKit/Transcript/TranscriptHeader.h"
#include "OmbrixMarkdownKit/Transcript/TranscriptSections.h"
#include "OmbrixMarkdownKit/Words/QueryTokenizer.h"
#include "Talk.h"

namespace {

using namespace ombrix;

RankedTranscriptSearch::AnswerRankOptions options() {
    RankedTranscriptSearch::AnswerRankOptions options;
    options.recencyHalfLifeDays = 30;
    options.unmatchedMassLimit = 0.5;
    options.participation = {.userAliases = {"Nadia Brandt"}, .boost = 0.6, .minTurns = 2};
    options.now = Instant(std::chrono::hours(24 * 20'665));
    return options;
}

const std::vector<std::string>& keywords() {
    static const auto words =
        QueryTokenizer::keywords("what did we decide on pricing with Osterby");
    return words;
}

void evidenceOfAFile(benchmark::State& state) {
    const std::string text = Talk::transcript(200);
    const KeywordMatcher matcher(keywords());
    EvidenceCollector collector(matcher, RankedTranscriptSearch::speakerQuestion(options()));
    for (auto _ : state) {
        const auto frame = TranscriptSections::frame(text);
        TranscriptDocument header;
        TranscriptHeader::read(frame->header, header);
        benchmark::DoNotOptimize(
            collector.collect(header, TranscriptSections::Sections(frame->body)));
    }
    state.SetBytesProcessed(state.iterations() * static_cast<std::int64_t>(text.size()));
}
BENCHMARK(evidenceOfAFile)->Unit(benchmark::kMicrosecond);

void scoreOfALibrary(benchmark::State& state) {
    const auto documents = static_cast<std::size_t>(state.range(0));
    const std::string text = Talk::transcript(50);
    const auto document = MarkdownTranscriptParser::parse(text);
    const KeywordMatcher matcher(keywords());
    EvidenceCollector collector(matcher, RankedTranscriptSearch::speakerQuestion(options()));
    std::vector<DocumentEvidence> evidence(documents, collector.collect(*document));
    for (std::size_t i = 0; i < documents; ++i)
        evidence[i].date = "2026-0" + std::to_string(1 + i % 7) + "-10";
    for (auto _ : state) {
        benchmark::DoNotOptimize(
            RankedTranscriptSearch::score(evidence, documents, keywords().size(), options()));
    }
    state.SetItemsProcessed(state.iterations() * state.range(0));
}
BENCHMARK(scoreOfALibrary)->Arg(10'000)->Unit(benchmark::kMicrosecond);

void answerRankOfDocuments(benchmark::State& state) {
    const std::string text = Talk::transcript(200);
    const std::vector<IdentifiedDocument> library(
        20, {.id = "a.md", .document = *MarkdownTranscriptParser::parse(text)});
    for (auto _ : state) {
        benchmark::DoNotOptimize(RankedTranscriptSearch::answerRank(
            library, "what did we decide on pricing with Osterby", options()));
    }
    state.SetBytesProcessed(state.iterations() * static_cast<std::int64_t>(20 * text.size()));
}
BENCHMARK(answerRankOfDocuments)->Unit(benchmark::kMicrosecond);
}  // namespace
