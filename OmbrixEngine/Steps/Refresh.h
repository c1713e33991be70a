// Every file that follows from others, computed again.
#pragma once

#include "OmbrixEngine/Changes/ChangeSet.h"
#include "OmbrixEngine/Steps/TranscriptFacts.h"
#include "OmbrixEngine/Workspace/EngineWorkspace.h"

namespace ombrix {

/// Takes out of a record what `planRefresh` does not look at.
void keepWhatRefreshNeeds(LandSidecar& sidecar);

/// Plans the follow-ups; the files of next moves; notes that an earlier run did not come to, and
/// those of an earlier landing than the record's. What is right already does not change. Both must
/// outlive `changes`.
void planRefresh(EngineWorkspace& workspace, const TranscriptFactsCache& facts, ChangeSet& changes);
}  // namespace ombrix
