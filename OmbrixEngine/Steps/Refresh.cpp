#include "OmbrixEngine/Steps/Refresh.h"

#include <utility>

#include "OmbrixEngine/Steps/FollowUps.h"
#include "OmbrixEngine/Steps/NextMoves.h"
#include "OmbrixEngine/Steps/Notes.h"

namespace ombrix {

void keepWhatRefreshNeeds(LandSidecar& sidecar) {
    sidecar.participants = {};
    std::string().swap(sidecar.inputHash);  // an assignment would keep the memory
    sidecar.output = {.commitments = std::move(sidecar.output.commitments),
                      .resolutions = std::move(sidecar.output.resolutions)};
}

void planRefresh(EngineWorkspace& workspace, const TranscriptFactsCache& facts,
                 ChangeSet& changes) {
    planFollowUps(workspace, changes);
    planNextMoves(workspace, changes);
    std::vector<std::string> outdated;
    for (const auto& entry : workspace.transcripts()) {
        const auto* sidecar = workspace.landed(entry.key);
        const auto* known = facts.of(entry);
        if (sidecar != nullptr && known != nullptr && known->notesAt &&
            *known->notesAt < sidecar->landedAt)
            outdated.push_back(entry.key);
    }
    planNotes(workspace, changes, std::move(outdated));
}
}  // namespace ombrix
