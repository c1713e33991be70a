// "Follow Ups.md" from the records of the workspace.
#pragma once

#include "OmbrixEngine/Changes/ChangeSet.h"
#include "OmbrixEngine/Workspace/EngineWorkspace.h"

namespace ombrix {

/// Plans the file anew: the ledger of today from all sidecars, the aliases, and the corrections in
/// the file as it is when it is written. A file that says the same, save for its time, stays as it
/// is. One whose region is damaged is left alone, with a warning. `workspace` must outlive
/// `changes`.
void planFollowUps(EngineWorkspace& workspace, ChangeSet& changes);
}  // namespace ombrix
