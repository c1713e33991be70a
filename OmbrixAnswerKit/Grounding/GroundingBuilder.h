// Packs the meetings that a question is grounded on: newest first, an equal share of the budget for
// each, the turns around the search hits or from the top, as the intent wants it. What is over the
// budget then goes from the end: the oldest meetings, then the last turns of the one that is left.
#pragma once

#include <cstdint>
#include <map>
#include <optional>
#include <span>
#include <string>
#include <vector>

#include "OmbrixAnswerKit/Ask/AskIntentRouter.h"
#include "OmbrixAnswerKit/Grounding/AnswerContextPack.h"
#include "OmbrixMarkdownKit/Search/AnswerScope.h"

namespace ombrix::GroundingBuilder {

using Meeting = AnswerContextPack::Meeting;
using Turn = AnswerContextPack::Turn;
/// The turns of each meeting that matched the search: indexes by the meeting's id.
using HitLines = std::map<std::string, std::vector<std::int64_t>, std::less<>>;

/// The pack of `scoped`. Meetings of one date keep their order. Without an entry in `hitLines`, and
/// for intents without a radius, a meeting is read from the top. One meeting always stays, with its
/// header, even over the budget. Meetings that find no room cost nothing.
AnswerContextPack build(std::span<const IdentifiedDocument> scoped, AskIntent intent,
                        const HitLines& hitLines, std::int64_t budgetTokens);

/// The meeting with these turns. Its notes are the user's, its action items the lines of the
/// document's without bullets and blanks; without any it has none.
Meeting meeting(const std::string& id, const TranscriptDocument& document, std::vector<Turn> turns);
/// What a meeting costs without its turns, in tokens; its share of the budget pays for it first.
std::int64_t headerCost(const Meeting& meeting);

/// How many turns on each side of a hit count for the intent; nothing for one that reads from the
/// top.
std::optional<std::int64_t> radius(AskIntent intent);

/// The turns within `radius` of a hit, trimmed, in transcript order. Those nearest to a hit enter
/// first, of one distance the earlier; one that does not fit is skipped. Hits outside the document
/// are ignored; when none is left it is `fullTurns`. A radius below 0 means 0.
std::vector<Turn> turns(const TranscriptDocument& document, std::span<const std::int64_t> hits,
                        std::int64_t radius, std::int64_t budgetTokens);

/// The turns from the top, trimmed, up to the first that does not fit. Those without a speaker or
/// without text are left out.
std::vector<Turn> fullTurns(const TranscriptDocument& document, std::int64_t budgetTokens);
}  // namespace ombrix::GroundingBuilder
