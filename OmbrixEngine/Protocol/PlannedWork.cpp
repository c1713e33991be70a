#include "OmbrixEngine/Protocol/PlannedWork.h"

#include <utility>

#include "OmbrixEngine/Workspace/EngineLock.h"

namespace ombrix {

void runPlanned(const CLIContext& context, Writing writing,
                const std::function<PlannedWork(EngineWorkspace&)>& plan) {
    EngineWorkspace workspace(context);
    {
        PlannedWork work = plan(workspace);
        if (writing == Writing::dryRun)
            return emitChanges(context, workspace, work.changes, true, std::move(work.data));
        work.changes.requireNoObstacle();
    }
    const EngineLock lock(workspace.folder());
    EngineWorkspace present(context);
    PlannedWork work = plan(present);
    emitChanges(context, present, work.changes, false, std::move(work.data));
    if (work.afterwards) work.afterwards();
}

void takeAnswer(const CLIContext& context, const GiveOptions& options,
                const std::function<PlannedWork(EngineWorkspace&, const GivenAnswer&)>& plan) {
    const GivenAnswer answer = readAnswer(options);
    runPlanned(context, options.dryRun ? Writing::dryRun : Writing::forReal,
               [&](EngineWorkspace& workspace) { return plan(workspace, answer); });
}
}  // namespace ombrix
