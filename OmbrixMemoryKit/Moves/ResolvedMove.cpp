#include "OmbrixMemoryKit/Moves/ResolvedMove.h"

namespace ombrix {

bool ResolvedExchange::operator==(const ResolvedExchange& other) const {
    return key == other.key && *source == *other.source && turns == other.turns &&
           claimIds == other.claimIds && anchors == other.anchors && earlier == other.earlier &&
           superseded == other.superseded;
}

std::vector<const ResolvedLine*> ResolvedMove::lines() const {
    std::vector<const ResolvedLine*> result;
    for (const auto& block : blocks)
        for (const auto& line : block.lines) result.push_back(&line);
    return result;
}
}  // namespace ombrix
