#include "OmbrixAnswerKit/Answer/MeetingAnswer.h"

#include <algorithm>
#include <utility>

#include "OmbrixAnswerKit/Answer/ExtractiveFloor.h"

namespace ombrix::MeetingAnswer {
namespace {

using RankedTranscriptSearch::AnswerHit;
using RankedTranscriptSearch::AnswerRankOptions;

constexpr const char* noMeetingsNote =
    "No meetings in scope mention that — nothing to answer. Ombrix won't invent one.";
constexpr const char* citedSourcesNote =
    "Cited sources only — the floor renders lists for commitment/decision asks; model answers come "
    "from your Claude or Ombrix in the app.";

AnswerRankOptions rankOptions(const AskPlan& plan, const Asker& asker) {
    AnswerRankOptions options{.useIDF = true,
                              .tfSaturationK = 1.5,
                              .recencyHalfLifeDays = static_cast<double>(plan.recencyHalfLifeDays),
                              .unmatchedMassLimit = 0.5,
                              .now = asker.now};
    if (plan.participation)
        options.participation = {.userAliases = asker.userAliases, .boost = 0.6, .minTurns = 2};
    return options;
}

/// What the user has to do is in the newest meetings, whatever words the question has for it.
WithoutHits withoutHits(AskIntent intent) {
    switch (intent) {
        case AskIntent::plan:
        case AskIntent::myCommitments:
        case AskIntent::owedToMe:
            return WithoutHits::showNewest;
        default:
            return WithoutHits::showNothing;
    }
}

std::size_t atLeastOne(std::int64_t limit) {
    return static_cast<std::size_t>(std::max<std::int64_t>(limit, 1));
}

std::vector<AnswerHit> withoutMatch(std::vector<IdentifiedDocument> documents) {
    std::vector<AnswerHit> hits;
    for (auto& [id, document] : documents)
        hits.push_back({.id = std::move(id), .document = std::move(document)});
    return hits;
}

/// The extractive answer in Markdown.
std::string floorMarkdown(std::vector<AnswerHit> hits, const AskPlan& plan,
                          std::vector<std::string> userAliases) {
    std::vector<RetrievedCitation> citations;
    std::vector<std::pair<std::string, TranscriptDocument>> documents;
    for (auto& [id, document, matchedKeywords, match, relevance] : hits) {
        citations.push_back({.id = id,
                             .title = document.title,
                             .date = document.date,
                             .participants = document.participants,
                             .snippets = std::move(match.snippets)});
        documents.emplace_back(std::move(id), std::move(document));
    }
    const ExtractiveFloor floor(std::move(documents), std::move(userAliases),
                                {.snippetCap = 8, .commitmentCap = 12});
    return floor.markdown(citations, plan.shape, plan.intent);
}
}  // namespace

std::vector<std::string> userAliases(const std::optional<std::string>& userName) {
    std::vector<std::string> aliases;
    if (userName && !userName->empty()) aliases.push_back(*userName);
    aliases.emplace_back("Me");
    aliases.emplace_back("You");
    return aliases;
}

LibrarySearchResult sources(const TranscriptLibrary& library, const AskUnderstanding& understood,
                            const Asker& asker, std::int64_t limit) {
    return searchLibrary(library, understood.keywords, understood.scope,
                         rankOptions(understood.plan, asker), atLeastOne(limit),
                         withoutHits(understood.plan.intent));
}

LibrarySearchResult sources(std::span<const IdentifiedDocument> documents,
                            const AskUnderstanding& understood, const Asker& asker,
                            std::int64_t limit) {
    auto found =
        RankedTranscriptSearch::answerRank(documents, understood.parse.strippedQuestion,
                                           understood.scope, rankOptions(understood.plan, asker));
    LibrarySearchResult result{.scannedCount = found.scannedCount,
                               .totalMatched = found.totalMatched()};
    result.hits = std::move(found.hits);
    if (result.hits.empty() && withoutHits(understood.plan.intent) == WithoutHits::showNewest) {
        auto inScope = understood.scope.apply(documents);
        sortNewestFirst(inScope);
        result.hits = withoutMatch(std::move(inScope));
    }
    if (result.hits.size() > atLeastOne(limit)) result.hits.resize(atLeastOne(limit));
    return result;
}

Text text(std::vector<AnswerHit> hits, const AskPlan& plan, std::vector<std::string> userAliases) {
    if (hits.empty()) return {.note = noMeetingsNote};
    if (plan.shape == AnswerShape::prose) return {.note = citedSourcesNote};
    return {.floor = floorMarkdown(std::move(hits), plan, std::move(userAliases))};
}
}  // namespace ombrix::MeetingAnswer
