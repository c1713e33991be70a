#include <algorithm>
#include <iterator>

#include "OmbrixEngine/EngineCommands.h"
#include "OmbrixEngine/Protocol/Give.h"
#include "OmbrixEngine/Steps/Refresh.h"
#include "OmbrixEngine/Workspace/EngineLock.h"

namespace ombrix {
namespace {

struct RefreshOptions {
    bool dryRun = false;
    GlobalOptions global;
};

void refresh(const CLIContext& context, const RefreshOptions& options) {
    EngineWorkspace workspace(context);
    std::optional<EngineLock> lock;
    if (!options.dryRun) lock.emplace(workspace.folder());
    workspace.trimRecords(keepWhatRefreshNeeds);
    const TranscriptFactsCache facts(workspace);
    ChangeSet changes(workspace.folder());
    planRefresh(workspace, facts, changes);
    // One file of the person's does not keep the others from their due.
    const auto passedOver = changes.leaveOutObstacles();
    std::ranges::copy(passedOver, std::back_inserter(workspace.warnings()));
    Json::Members data;
    data.emplace("landed", static_cast<std::int64_t>(workspace.landed().size()));
    emitChanges(context, workspace, changes, options.dryRun, std::move(data));
    lock.reset();
    if (!options.dryRun) facts.save(workspace.folder());
    if (!passedOver.empty()) throw IncompleteWork();
}
}  // namespace

void declareRefresh(Command root) {
    const Command command = root.subcommand(
        "refresh", "Compute every derived file again from sidecars, aliases and corrections.");
    const auto options = command.options<RefreshOptions>();
    command.flag("--dry-run", options->dryRun,
                 "Show what would change as unified diffs, and write nothing.");
    command.run(options, refresh);
}
}  // namespace ombrix
