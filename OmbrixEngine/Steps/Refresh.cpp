#include "OmbrixEngine/Steps/Refresh.h"

#include <utility>

#include "OmbrixEngine/Steps/FollowUps.h"
#include "OmbrixEngine/Steps/LandStep.h"
#include "OmbrixEngine/Steps/NextMoves.h"
#include "OmbrixEngine/Steps/Notes.h"
#include "OmbrixMemoryKit/EnginePaths.h"
#include "OmbrixMemoryKit/Memory/BeforeFile.h"
#include "OmbrixPlatform/Paths.h"

namespace ombrix {

void keepWhatRefreshNeeds(LandSidecar& sidecar) {
    sidecar.participants = {};
    std::string().swap(sidecar.inputHash);  // an assignment would keep the memory
    sidecar.output = {.commitments = std::move(sidecar.output.commitments),
                      .resolutions = std::move(sidecar.output.resolutions)};
}

void planRefresh(EngineWorkspace& workspace, const TranscriptFactsCache& facts,
                 ChangeSet& changes) {
    workspace.aliasesFile();  // a damaged one stops all, also what does not rest on it
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
    for (const auto& entry : workspace.transcripts())
        changes.tidy(std::string(Paths::parent(entry.path)));
    for (const auto folder : {EnginePaths::landFolder, EnginePaths::prepareFolder,
                              EnginePaths::engineFolder, LandStep::chunksFolder})
        changes.tidy(std::string(folder));
    for (const auto folder : {EnginePaths::nextMovesFolder, BeforeFile::subfolder})
        changes.tidy(workspace.memoryPath(folder));
}
}  // namespace ombrix
