// The notes that a land record becomes in its transcript. They are the last that landing writes, so
// a list in ".ombrix/engine" names the meetings whose notes are still to be written: a process that
// is killed leaves it, and `refresh` or the next landing does what is left. Notes that the person
// deleted stay deleted.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "OmbrixEngine/Changes/ChangeSet.h"
#include "OmbrixEngine/Workspace/EngineWorkspace.h"

namespace ombrix {

namespace UnfinishedNotes {

constexpr std::string_view path = ".ombrix/engine/unfinished.json";

/// The keys of the meetings whose notes an earlier run did not come to, if they were not landed
/// again since.
std::vector<std::string> keys(EngineWorkspace& workspace);
}  // namespace UnfinishedNotes

/// Plans the notes blocks of these landed meetings and their mirrors, where the engine may write,
/// together with those that are unfinished.
void planNotes(EngineWorkspace& workspace, ChangeSet& changes, std::vector<std::string> keys);
}  // namespace ombrix
