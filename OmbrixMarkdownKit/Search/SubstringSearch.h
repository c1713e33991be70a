// The plain ranker: every term must be somewhere in the document, as a substring, ignoring case and
// diacritics; a small integer orders the hits. `RankedTranscriptSearch` offers it under its own
// name.
#pragma once

#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "OmbrixMarkdownKit/Search/AnswerScope.h"
#include "OmbrixMarkdownKit/Search/DocumentMatch.h"
#include "OmbrixMarkdownKit/Transcript/TranscriptDocument.h"

namespace ombrix::SubstringSearch {

struct RankedHit {
    std::string id;
    TranscriptDocument document;
    DocumentMatch match;
    bool operator==(const RankedHit&) const = default;
};

/// Forwards to `QueryTokenizer::terms`; none without a query.
std::vector<std::string> terms(std::optional<std::string_view> query);

/// True when `text` contains `term`, ignoring case and diacritics.
bool termMatches(std::string_view text, std::string_view term);

/// How a document matches when every term must be in a turn, a body field, the title or a
/// participant's name; nothing when a term is nowhere. No terms match everything, with score 0.
std::optional<DocumentMatch> match(const TranscriptDocument& document,
                                   const std::vector<std::string>& terms);

/// The documents that match all terms of the query, by score, then by input order. Without a query
/// there are no hits.
std::vector<RankedHit> rank(std::span<const IdentifiedDocument> documents,
                            std::optional<std::string_view> query);
}  // namespace ombrix::SubstringSearch
