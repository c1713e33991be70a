// What the context of each landed meeting was when it was landed, as a number (LandHistory.h), in
// ".ombrix/engine". So a later look finds out that follow-ups, corrections or names changed since,
// without asking every question anew. A meeting that somebody else landed counts from the first
// look on.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "OmbrixEngine/Steps/LandHistory.h"
#include "OmbrixEngine/Workspace/EngineWorkspace.h"

namespace ombrix::LandContexts {

constexpr std::string_view path = ".ombrix/engine/contexts.json";

/// For each meeting, which is landed, whether its context has changed since. Remembers those it did
/// not know, unless another program writes or the folder cannot be written.
std::vector<bool> changed(EngineWorkspace& workspace, LandHistory& history,
                          const std::vector<LandHistory::Meeting>& meetings);

/// Remembers the present context of a meeting that was landed right now. The caller holds the
/// `EngineLock`.
void record(EngineWorkspace& workspace, const TranscriptEntry& entry);
}  // namespace ombrix::LandContexts
