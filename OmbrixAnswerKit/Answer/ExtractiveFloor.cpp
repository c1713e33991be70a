#include "OmbrixAnswerKit/Answer/ExtractiveFloor.h"

#include <algorithm>
#include <cstddef>
#include <iterator>
#include <set>
#include <utility>

#include "OmbrixAnswerKit/Shape/StructuredAnswer.h"
#include "OmbrixPlatform/Text.h"

namespace ombrix {
namespace {

using Citations = std::vector<RetrievedCitation>;

std::size_t sizeOf(std::int64_t cap) {
    return static_cast<std::size_t>(std::max<std::int64_t>(cap, 0));
}

std::string bracket(std::size_t number) { return " [" + std::to_string(number) + "]"; }

AskPlan planOf(std::string_view question) {
    return AskIntentRouter::route(question, std::nullopt, /*hasTypedScope=*/false);
}

void requireCitations(const Citations& citations) {
    if (citations.empty()) throw AnswerSynthesisError(AnswerSynthesisError::Reason::emptyInput);
}

/// How many different meetings the commitments come from.
std::size_t meetingCount(const std::vector<Commitment>& commitments) {
    std::set<std::string_view> ids;
    for (const auto& commitment : commitments) ids.insert(commitment.meetingID);
    return ids.size();
}
}  // namespace

ExtractiveFloor::ExtractiveFloor(std::vector<std::pair<std::string, TranscriptDocument>> documents,
                                 std::vector<std::string> userAliases, Caps caps)
    : userAliases_(std::move(userAliases)), caps_(caps) {
    for (auto& [id, document] : documents)
        documents_.try_emplace(std::move(id), std::move(document));
}

SynthesizedAnswer ExtractiveFloor::synthesize(std::string_view question,
                                              const Citations& citations) const {
    requireCitations(citations);
    const AskPlan plan = planOf(question);
    return {.text = markdown(citations, plan.shape, plan.intent),
            .citationIDs = citationIDs(citations)};
}

StructuredAnswer ExtractiveFloor::synthesize(std::string_view question, const Citations& citations,
                                             AnswerShape shape) const {
    requireCitations(citations);
    return StructuredAnswerParser::parse(markdown(citations, shape, planOf(question).intent), shape,
                                         citationIDs(citations));
}

std::string ExtractiveFloor::markdown(const Citations& citations, AnswerShape shape,
                                      AskIntent intent) const {
    switch (shape) {
        case AnswerShape::prose:
            break;
        case AnswerShape::timeline:
            return timeline(citations);
        case AnswerShape::commitments:
            if (!documents_.empty()) return commitmentList(citations, intent);
    }
    return snippetList(citations);
}

std::string ExtractiveFloor::snippetList(const Citations& citations) const {
    constexpr std::size_t linesOfOneSource = 2;
    const std::size_t cap = sizeOf(caps_.snippetCap);
    std::vector<std::string> lines;
    for (std::size_t place = 0; place < citations.size() && lines.size() < cap; ++place) {
        const auto& snippets = citations[place].snippets;
        const std::size_t count = std::min({snippets.size(), linesOfOneSource, cap - lines.size()});
        for (std::size_t n = 0; n < count; ++n)
            lines.push_back("- " + Text::flattened(snippets[n]) + bracket(place + 1));
    }
    return Text::joined(lines, "\n");
}

std::string ExtractiveFloor::timeline(const Citations& citations) const {
    std::vector<std::size_t> places;
    for (std::size_t place = 0; place < citations.size(); ++place)
        if (!citations[place].snippets.empty()) places.push_back(place);
    std::ranges::stable_sort(
        places, {}, [&](std::size_t place) -> std::string_view { return citations[place].date; });

    std::string text = "## Timeline";
    if (places.empty()) text += "\n(none)";
    places.resize(std::min(places.size(), sizeOf(caps_.snippetCap)));
    for (const std::size_t place : places) {
        const auto& citation = citations[place];
        text += "\n- " + (citation.date.empty() ? "undated" : citation.date) + " — " +
                citation.snippets.front() + bracket(place + 1);
    }
    return text;
}

std::string ExtractiveFloor::commitmentList(const Citations& citations, AskIntent intent) const {
    const auto found = commitments(citations, intent);
    std::map<std::string_view, std::size_t> numbers;  // the first place of each id, from 1
    for (std::size_t place = 0; place < citations.size(); ++place)
        numbers.try_emplace(citations[place].id, place + 1);

    std::vector<std::string> lines;
    if (auto summary = CommitmentExtractor::summary(
            std::ssize(found), static_cast<std::int64_t>(meetingCount(found)))) {
        lines.push_back(std::move(*summary));
    }
    lines.push_back("## Commitments");
    for (const auto& commitment : found) {
        const auto number = numbers.find(commitment.meetingID);
        lines.push_back("- " + commitment.owner.value_or("unowned") + " — " + commitment.text +
                        bracket(number == numbers.end() ? 1 : number->second));
    }
    if (found.empty()) lines.push_back("(none)");
    return Text::joined(lines, "\n");
}

std::vector<Commitment> ExtractiveFloor::commitments(const Citations& citations,
                                                     AskIntent intent) const {
    std::vector<CommitmentExtractor::Finding> all;
    for (const auto& citation : citations) {
        const auto document = documents_.find(citation.id);
        if (document == documents_.end()) continue;
        const auto found = CommitmentExtractor::find(document->second, citation.id, userAliases_);
        // What is cut from its own document's list would be cut from the whole list, too.
        std::ranges::copy(
            CommitmentExtractor::select(found, direction(intent), caps_.commitmentCap),
            std::back_inserter(all));
    }
    std::vector<Commitment> listed;
    for (const auto& finding :
         CommitmentExtractor::select(all, direction(intent), caps_.commitmentCap)) {
        listed.push_back(CommitmentExtractor::written(finding));
    }
    return listed;
}

std::optional<Commitment::Direction> ExtractiveFloor::direction(AskIntent intent) {
    switch (intent) {
        case AskIntent::plan:
        case AskIntent::myCommitments:
            return Commitment::Direction::userOwes;
        case AskIntent::owedToMe:
            return Commitment::Direction::owedToUser;
        case AskIntent::decisions:
        case AskIntent::catchUp:
        case AskIntent::freeform:
        case AskIntent::openEnded:
            break;
    }
    return std::nullopt;
}
}  // namespace ombrix
