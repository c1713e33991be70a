// Assembles what the consolidate and the before recipe are given, from the sidecars, the ledger and
// the memory files. No address reaches a model; whom the user keeps private the caller leaves out.
#pragma once

#include <cstddef>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <unordered_set>
#include <vector>

#include "OmbrixMemoryKit/Identity/PersonAliases.h"
#include "OmbrixMemoryKit/Land/LandSidecar.h"
#include "OmbrixMemoryKit/Ledger/FollowUpsLedger.h"
#include "OmbrixMemoryKit/Memory/BeforeModels.h"
#include "OmbrixMemoryKit/Memory/ConsolidateModels.h"
#include "OmbrixMemoryKit/Memory/MemoryFiles.h"

namespace ombrix {

/// A person or a thread that the meetings know.
struct MemoryEntity {
    std::string key{};  ///< the canonical one
    /// All of them in lower case, `key` among them; an address also as a name.
    std::vector<std::string> keys{};
    LandMemoryFact::Kind kind = LandMemoryFact::Kind::person;
    std::string display{};                ///< empty when only an address is known
    std::vector<LandSidecar> meetings{};  ///< with it, the oldest first

    bool operator==(const MemoryEntity&) const = default;
};

namespace EntityInputs {

/// More candidates than this are folded into one line, see `MemoryCandidates::fold`.
constexpr std::size_t candidatesKept = 60;
/// The follow-ups that a model is told of at most.
constexpr std::size_t mostFollowUps = 40;

/// The entity of a key of any case. A key that is neither a thread's nor known to `aliases` stands
/// for a person of its own.
MemoryEntity entity(std::string_view key, const PersonAliases& aliases,
                    std::span<const LandSidecar> sidecars);

/// What the meetings say about the entity, the newest first, not folded.
std::vector<ConsolidateCandidate> candidates(const MemoryEntity& entity, std::string_view userName);

/// The open rows with any of the entities, the first `mostFollowUps`: a person's by key, a thread's
/// by the meetings in which it came up.
FollowUpRows openRows(std::span<const MemoryEntity> entities, const FollowUpsLedger& ledger);
/// A row as the recipes see it.
ConsolidateOpenFollowUp followUp(const FollowUpRow& row);

/// `found` and `rows` are those that the model may see. `existing` is the memory file as it is. The
/// hash is left empty.
ConsolidateInput consolidate(const MemoryEntity& entity, std::vector<ConsolidateCandidate> found,
                             const FollowUpRows& rows,
                             const std::optional<MemoryFile::Parsed>& existing,
                             std::string userName, std::string today);

/// The frontmatter of an entity's memory file: what the meetings say, under the given title. The
/// members of a thread are all that took part and have a name.
MemoryFileMeta meta(const MemoryEntity& entity, std::string title);

/// The entity and its memory file, as the before recipe sees them.
BeforeEntityText beforeText(const MemoryEntity& entity,
                            const std::optional<MemoryFile::Parsed>& file);
/// The keys of the meetings that all of the people were in, as views of the people's. Linear.
std::unordered_set<std::string_view> sharedMeetings(std::span<const MemoryEntity> people);
/// The newest meeting before or on `day` that all of the people were in; without one, the newest
/// that one of them was in. Nothing when there is none. Linear.
std::optional<LandSidecar> lastMeeting(std::span<const MemoryEntity> people, std::string_view day);
}  // namespace EntityInputs

/// What an answer of these recipes rests on has to be in its input. Throw `RefusedAnswer` for the
/// first item that cites nothing, or a source or a follow-up that the input does not have, and for
/// an answer about another kind of entity.
namespace EntityCitations {
void check(const ConsolidateOutput& output, const ConsolidateInput& input);
/// An opener may be without a source.
void check(const BeforeOutput& output, const BeforeInput& input);
}  // namespace EntityCitations
}  // namespace ombrix
