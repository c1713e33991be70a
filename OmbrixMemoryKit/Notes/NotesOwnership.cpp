#include "OmbrixMemoryKit/Notes/NotesOwnership.h"

#include <utility>

#include "OmbrixMarkdownKit/Transcript/TranscriptEditor.h"

namespace ombrix {

NotesOwnership NotesOwnership::classify(std::string_view markdown) {
    if (!TranscriptEditor::enhancedSections(markdown)) return {.owner = Owner::absent};
    const auto line = TranscriptEditor::machineProvenance(markdown);
    auto provenance = line ? EngineProvenance::parse(*line) : std::nullopt;
    if (!provenance) return {.owner = Owner::foreign};
    const Owner owner = provenance->edited ? Owner::user : Owner::engine;
    return {.owner = owner, .provenance = std::move(provenance)};
}
}  // namespace ombrix
