// Gathers what the consolidate recipe is given from the land sidecars. Keys compare in lower case.
// Sidecars of one day keep the order in which they are given. All functions are linear apart from
// sorting by day.
#pragma once

#include <cstddef>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "OmbrixMemoryKit/Land/LandSidecar.h"
#include "OmbrixMemoryKit/Memory/ConsolidateModels.h"

namespace ombrix::MemoryCandidates {

/// The memory facts of a person or a thread, the newest meeting first, in each meeting in the order
/// of the record. A certainty that is not `read` becomes `recorded`.
std::vector<ConsolidateCandidate> collect(std::string_view entityKey,
                                          std::span<const std::string> aliasKeys,
                                          std::span<const LandSidecar> sidecars);

/// What the meetings of a thread established, the newest first: in each its facts about the thread,
/// then its decisions, then its open questions. Who settled a decision is its speaker; `userName`
/// for a label in `LandInputBuilder::selfLabels`.
std::vector<ConsolidateCandidate> thread(std::string_view entityKey,
                                         std::span<const std::string> meetingKeys,
                                         std::span<const LandSidecar> sidecars,
                                         std::string_view userName);

/// All candidates when they are at most `keep`; else the first `keep`, and one that says how many
/// it stands for and since when: "earlier: 12 facts from meetings back to 2026-03-01".
std::vector<ConsolidateCandidate> fold(std::vector<ConsolidateCandidate> candidates,
                                       std::size_t keep);

/// The meetings, the oldest first, in which the person took part, owes or is owed something, or is
/// the subject of a memory fact.
std::vector<LandSidecar> meetings(std::string_view entityKey,
                                  std::span<const std::string> aliasKeys,
                                  std::span<const LandSidecar> sidecars);
/// The meetings of these keys, the oldest first.
std::vector<LandSidecar> meetings(std::span<const std::string> meetingKeys,
                                  std::span<const LandSidecar> sidecars);

/// How to show an entity: as the newest meeting spells the participant, else the words of a "name:"
/// or "thread:" key with capital initials; "-" in the latter is a blank. Nothing for other keys.
std::optional<std::string> display(std::string_view entityKey,
                                   std::span<const LandSidecar> sidecars);
}  // namespace ombrix::MemoryCandidates
