// A source of an answer: a meeting that was retrieved for the question, and its best lines.
#pragma once

#include <string>
#include <vector>

namespace ombrix {

/// A source as a synthesizer gets it. Its number is its place in the list, counted from 1.
struct RetrievedCitation {
    std::string id{};     ///< the key under which its document is found
    std::string title{};  ///< of the meeting
    std::string date{};   ///< of the meeting, as text; empty when unknown
    std::vector<std::string> participants{};
    std::vector<std::string> snippets{};  ///< ranked, best first
    bool operator==(const RetrievedCitation&) const = default;
};

/// The ids of the citations, in their order.
std::vector<std::string> citationIDs(const std::vector<RetrievedCitation>& citations);
}  // namespace ombrix
