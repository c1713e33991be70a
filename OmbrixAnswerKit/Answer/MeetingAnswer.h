// The answer of a library to a question, without a model: the sources it cites and the text over
// them. `understand` reads the question, `sources` finds the transcripts in a folder or in a list,
// `text` writes what can be said without a model.
#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <vector>

#include "OmbrixAnswerKit/Ask/AskUnderstanding.h"
#include "OmbrixMarkdownKit/Library/LibrarySearch.h"

namespace ombrix::MeetingAnswer {

/// Whose question it is and when it is asked.
struct Asker {
    std::vector<std::string> userAliases;  ///< of `userAliases`
    Instant now;
};

/// The names under which a transcript may list the user: the name, unless it is missing or empty,
/// then "Me" and "You".
std::vector<std::string> userAliases(const std::optional<std::string>& userName);

/// The transcripts to cite, at most `limit`; a limit below 1 counts as 1. A question about work or
/// promises of which no transcript has a word gets the newest transcripts in scope, without
/// snippets. The two forms give the same for the same transcripts: `documents` are in the order of
/// `TranscriptLibrary::scan`.
LibrarySearchResult sources(const TranscriptLibrary& library, const AskUnderstanding& understood,
                            const Asker& asker, std::int64_t limit);
LibrarySearchResult sources(std::span<const IdentifiedDocument> documents,
                            const AskUnderstanding& understood, const Asker& asker,
                            std::int64_t limit);

/// One of the two is there.
struct Text {
    std::optional<std::string> floor{};  ///< Markdown: a timeline or a list of commitments
    std::optional<std::string> note{};   ///< why there is no floor, for the reader
    bool operator==(const Text&) const = default;
};

/// The text over `hits`, whose documents it takes over.
Text text(std::vector<RankedTranscriptSearch::AnswerHit> hits, const AskPlan& plan,
          std::vector<std::string> userAliases);
}  // namespace ombrix::MeetingAnswer
