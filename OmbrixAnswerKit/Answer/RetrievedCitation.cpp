#include "OmbrixAnswerKit/Answer/RetrievedCitation.h"

namespace ombrix {

std::vector<std::string> citationIDs(const std::vector<RetrievedCitation>& citations) {
    std::vector<std::string> ids;
    ids.reserve(citations.size());
    for (const auto& citation : citations) ids.push_back(citation.id);
    return ids;
}
}  // namespace ombrix
