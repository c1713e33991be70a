#include "OmbrixEngine/Protocol/PlannedWork.h"

#include <utility>

#include "OmbrixEngine/Protocol/Give.h"
#include "OmbrixEngine/Workspace/EngineLock.h"

namespace ombrix {

void runPlanned(const CLIContext& context, Writing writing,
                const std::function<PlannedWork(EngineWorkspace&)>& plan) {
    EngineWorkspace workspace(context);
    {
        PlannedWork work = plan(workspace);
        if (writing == Writing::dryRun)
            return emitChanges(context, workspace, work.changes, true, std::move(work.data));
    }
    const EngineLock lock(workspace.folder());
    EngineWorkspace present(context);
    PlannedWork work = plan(present);
    emitChanges(context, present, work.changes, false, std::move(work.data));
}
}  // namespace ombrix
