// The files of next moves that the person has in the Memory folder, brought up to date: what a move
// says by its newest sidecar, its state by its record and the corrections in the files, and what
// was said by the transcript as it is now. Files are made by whoever shows moves; none is made
// here.
#pragma once

#include "OmbrixEngine/Changes/ChangeSet.h"
#include "OmbrixEngine/Workspace/EngineWorkspace.h"

namespace ombrix {

/// Plans the files whose move still has a sidecar. A file that says the same, save for its times,
/// stays as it is; one whose region is damaged is left alone. Reads the transcripts of those moves.
void planNextMoves(EngineWorkspace& workspace, ChangeSet& changes);
}  // namespace ombrix
