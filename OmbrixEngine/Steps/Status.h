// How far the engine is with a library: what was asked and answered, what has changed since, and
// what to ask next.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "OmbrixEngine/Steps/TranscriptFacts.h"
#include "OmbrixEngine/Workspace/EngineWorkspace.h"
#include "OmbrixMemoryKit/Land/LandModels.h"
#include "OmbrixPlatform/EnumNames.h"

namespace ombrix {

/// The state of one record of a meeting.
struct RecordState {
    enum class Kind {
        current,
        missing,
        stale,
        waiting,   ///< another step comes first
        excluded,  ///< nothing is ever asked
    };
    Kind kind = Kind::missing;
    std::vector<std::string> why{};  ///< of a stale, waiting or excluded one

    /// True when asking makes it current.
    bool wantsAsking() const { return kind == Kind::missing || kind == Kind::stale; }
    bool operator==(const RecordState&) const = default;
};

constexpr auto rawValues(RecordState::Kind) {
    using enum RecordState::Kind;
    return EnumNames::table<RecordState::Kind>({{current, "current"},
                                                {missing, "missing"},
                                                {stale, "stale"},
                                                {waiting, "waiting"},
                                                {excluded, "excluded"}});
}

struct EngineStatus {
    struct Transcript {
        const TranscriptEntry* entry = nullptr;
        RecordState land{}, prepare{};
    };
    /// A person or thread of whom meetings say more than its memory file.
    struct Entity {
        std::string key{};
        LandMemoryFact::Kind kind = LandMemoryFact::Kind::person;
        std::string file{};    ///< empty when there is none yet
        std::string newest{};  ///< the day of the newest meeting with a fact about it
    };
    struct Damaged {
        std::string path{}, why{};
    };

    std::vector<Transcript> transcripts{};  ///< the newest first
    std::vector<Entity> entities{};         ///< by key; private ones are left out
    std::vector<Damaged> damaged{};         ///< engine files that are left alone
    /// The words of the calls to make now, in order: meetings to land, the earliest first, then
    /// entities, then meetings to prepare.
    std::vector<std::vector<std::string>> next{};
};

/// Takes out of a record what `engineStatus` does not look at.
void keepWhatStatusNeeds(LandSidecar& sidecar);

/// Remembers what it read whole, see `TranscriptFactsCache`.
EngineStatus engineStatus(EngineWorkspace& workspace);
}  // namespace ombrix
