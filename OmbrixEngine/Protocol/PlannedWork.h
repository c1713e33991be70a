// Commands that plan first and write then. A refusal leaves the disk as it is, so the plan is made
// once without the lock, and again with it, of what is there by then.
#pragma once

#include <functional>

#include "OmbrixEngine/Changes/ChangeSet.h"
#include "OmbrixEngine/Protocol/Give.h"
#include "OmbrixEngine/Workspace/EngineWorkspace.h"
#include "OmbrixPlatform/Json.h"

namespace ombrix {

struct PlannedWork {
    ChangeSet changes;
    Json::Members data{};                ///< of the envelope
    std::function<void()> afterwards{};  ///< runs when all is written and said, if it is set
};

enum class Writing { dryRun, forReal };

/// Makes what `plan` plans, or shows it, and prints the envelope. `plan` throws `CLIError` to
/// refuse; it depends on the workspace alone, which outlives what it returns.
void runPlanned(const CLIContext& context, Writing writing,
                const std::function<PlannedWork(EngineWorkspace&)>& plan);

/// The same for a `give`: `plan` also has the answer, which is read once.
void takeAnswer(const CLIContext& context, const GiveOptions& options,
                const std::function<PlannedWork(EngineWorkspace&, const GivenAnswer&)>& plan);
}  // namespace ombrix
