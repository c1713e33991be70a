// Whether what stands in the aliases file makes sense: an alias leads to the canonical key of its
// person, and by no way back to itself.
#pragma once

#include <span>
#include <string>
#include <vector>

#include "OmbrixMemoryKit/Identity/PersonAliases.h"

namespace ombrix {

/// The keys of a ring, each an alias of the next and the last one of the first, in lower case; none
/// when there is no ring. A lookup for each alias and each step of a chain.
std::vector<std::string> aliasRing(std::span<const PersonIdentity> identities);
}  // namespace ombrix
