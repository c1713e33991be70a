// The line that says what a search looked at: how many meetings, and what narrowed them.
//
//   "3 of 12 matching meetings · the past 14 days · with Ann · in Clients"
//   "5 meetings in scope across your library, newest first"
//
// Every surface shows these words, and nothing else words them.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "OmbrixMarkdownKit/Search/AnswerScope.h"

namespace ombrix::AnswerScopeStatement {

struct Input {
    std::int64_t packed = 0;        ///< meetings that went into the context pack
    std::int64_t totalMatched = 0;  ///< meetings that matched the question
    std::int64_t scanned = 0;       ///< meetings in scope that were looked at
    bool browsing = false;  ///< the question names nothing to search for: all in scope is listed
    AnswerScope scope{};
    std::vector<std::string> timePhrases{};          ///< as the user wrote them
    std::optional<std::int64_t> policyWindowDays{};  ///< below 1: not told
    std::optional<std::string> policyNote{};         ///< a sentence, at the end of the line
    bool operator==(const Input&) const = default;
};

/// Of the time only one thing is told: the phrases, else the policy's window, else the scope's
/// count, else its days. "1" has its singular only where a sentence of its own has one.
std::string line(const Input& input);
}  // namespace ombrix::AnswerScopeStatement
