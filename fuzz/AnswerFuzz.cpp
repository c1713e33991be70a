// A question over one meeting, from words to answer. The first line of the input is the question,
// the rest a transcript. Evidence collected from the text equals evidence collected from the parsed
// document; the promises found and the written answer are consistent.
#include <cmath>
#include <string>
#include <vector>

#include "Law.h"
#include "OmbrixAnswerKit/Answer/ExtractiveFloor.h"
#include "OmbrixAnswerKit/Ask/AskIntentRouter.h"
#include "OmbrixAnswerKit/Commitments/CommitmentExtractor.h"
#include "OmbrixMarkdownKit/Search/RankedTranscriptSearch.h"
#include "OmbrixMarkdownKit/Transcript/MarkdownTranscript.h"
#include "OmbrixMarkdownKit/Transcript/TranscriptHeader.h"
#include "OmbrixMarkdownKit/Transcript/TranscriptSections.h"
#include "OmbrixMarkdownKit/Words/QueryTokenizer.h"
#include "OmbrixPlatform/Text.h"

using namespace ombrix;
using Fuzz::law;

namespace {

const std::vector<std::string> aliases{"Nadia Brandt", "Me", "You"};

RankedTranscriptSearch::AnswerRankOptions options() {
    return {.useIDF = true,
            .tfSaturationK = 1.5,
            .recencyHalfLifeDays = 30,
            .participation =
                RankedTranscriptSearch::ParticipationBoost{
                    .userAliases = aliases, .boost = 0.6, .minTurns = 2},
            .unmatchedMassLimit = 1.0,
            .now = Instant(std::chrono::hours(24 * 20'665))};
}

void checkEvidence(std::string_view text, const TranscriptDocument& document,
                   const std::vector<std::string>& keywords) {
    const auto frame = TranscriptSections::frame(text);
    law(frame.has_value(), "what has a document has a frame");
    TranscriptDocument header;
    TranscriptHeader::read(frame->header, header);
    const KeywordMatcher matcher(keywords);
    EvidenceCollector collector(matcher, RankedTranscriptSearch::speakerQuestion(options()));
    const TranscriptSections::Sections sections(frame->body);
    DocumentEvidence evidence = collector.collect(header, sections);
    law(evidence == collector.collect(document),
        "the text and its document give the same evidence");
    forgetPlaces(evidence);
    law(evidence == collector.count(header, sections), "counted without a walk, the same");
}

void checkHits(const std::vector<RankedTranscriptSearch::AnswerHit>& hits) {
    for (const auto& hit : hits) {
        law(std::isfinite(hit.relevance) && hit.relevance >= 0, "relevance is a number");
        law(hit.matchedKeywords >= 1, "a hit has a keyword");
        law(hit.match.snippets.size() <= snippetLimit, "few snippets");
    }
}

void checkFloor(const IdentifiedDocument& meeting, const std::vector<std::string>& snippets,
                const AskPlan& plan) {
    const auto promises = CommitmentExtractor::extract(meeting.document, meeting.id, aliases);
    law(promises == CommitmentExtractor::extract(meeting.document, meeting.id, aliases),
        "extracted twice, the same");
    for (const Commitment& promise : promises) {
        law(promise.meetingID == meeting.id, "a promise knows its meeting");
        law(promise.direction != Commitment::Direction::userOwes || promise.owner == aliases[0],
            "the user's promises carry the user's name");
        law(promise.text == Text::flattened(promise.text), "a promise is one line");
        law(promise.deadline == CommitmentExtractor::deadline(promise.text),
            "the deadline is part of the promise");
    }
    const ExtractiveFloor floor({{meeting.id, meeting.document}}, aliases, {});
    const std::vector<RetrievedCitation> citations{{.id = meeting.id,
                                                    .title = meeting.document.title,
                                                    .date = meeting.document.date,
                                                    .participants = meeting.document.participants,
                                                    .snippets = snippets}};
    for (const AnswerShape shape :
         {plan.shape, AnswerShape::prose, AnswerShape::timeline, AnswerShape::commitments}) {
        const std::string answer = floor.markdown(citations, shape, plan.intent);
        law(answer == floor.markdown(citations, shape, plan.intent), "written twice, the same");
        StructuredAnswerParser::parse(answer, shape, citationIDs(citations));
    }
    law(floor.commitments(citations, plan.intent).size() <= 12, "at most 12 promises");
}
}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const auto [question, file] = Fuzz::firstLineAndRest(Fuzz::text(data, size));
    const std::string text = Text::withLineFeeds(file);
    const auto document = MarkdownTranscriptParser::parse(file);
    if (!document) return 0;

    const auto keywords = QueryTokenizer::keywords(question);
    checkEvidence(text, *document, keywords);
    const std::vector<IdentifiedDocument> meetings{{"/library/one.md", *document},
                                                   {"/library/empty.md", {}}};
    const auto hits = RankedTranscriptSearch::answerRank(meetings, question, options());
    law(hits == RankedTranscriptSearch::answerRank(meetings, question, options()),
        "ranked twice, the same");
    checkHits(hits);
    const AskPlan plan = AskIntentRouter::route(question, std::nullopt, false);
    checkFloor(meetings[0], hits.empty() ? std::vector<std::string>{} : hits[0].match.snippets,
               plan);
    return 0;
}
