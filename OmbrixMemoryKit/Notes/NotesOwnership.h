// Whose the notes in a transcript are. The engine writes into them only while nobody else has.
#pragma once

#include <optional>
#include <string_view>

#include "OmbrixMemoryKit/Notes/EngineProvenance.h"

namespace ombrix {

struct NotesOwnership {
    enum class Owner {
        engine,   ///< written by the engine and not edited since
        user,     ///< written by the engine and edited
        absent,   ///< there are no notes
        foreign,  ///< of unknown origin: their machine line is missing or cannot be read
    };
    Owner owner = Owner::absent;
    std::optional<EngineProvenance> provenance{};  ///< for `engine` and `user`

    /// What the machine block of a transcript's text says.
    static NotesOwnership classify(std::string_view markdown);
    /// Notes of unknown origin are treated like the person's own.
    bool engineMayWrite() const { return owner == Owner::engine || owner == Owner::absent; }

    bool operator==(const NotesOwnership&) const = default;
};
}  // namespace ombrix
