#include "OmbrixEngine/Steps/FollowUps.h"

#include <algorithm>
#include <string>

#include "OmbrixMemoryKit/EnginePaths.h"
#include "OmbrixMemoryKit/Ledger/FollowUpsFile.h"
#include "OmbrixMemoryKit/Ledger/FollowUpsMerger.h"
#include "OmbrixMemoryKit/Notes/EngineProvenance.h"
#include "OmbrixMemoryKit/Region/EngineRegion.h"
#include "OmbrixPlatform/Text.h"

namespace ombrix {
namespace {

/// The model that wrote the newest record.
std::string writerOf(const std::vector<LandSidecar>& sidecars) {
    const auto newest = std::ranges::max_element(sidecars, {}, &LandSidecar::landedAt);
    return EngineProvenance::writerName(newest == sidecars.end() ? "" : newest->model);
}

bool isBlank(const std::optional<std::string>& text) {
    return !text || Text::trimmed(*text).empty();
}

std::optional<std::string> rendered(EngineWorkspace& workspace,
                                    const std::optional<std::string>& existing) {
    if (isBlank(existing) && workspace.landed().empty()) return std::nullopt;
    const auto corrections =
        Corrections::parse(Corrections::section(existing.value_or("")).value_or(""));
    const auto ledger = FollowUpsMerger::merge(workspace.landed(), corrections, workspace.today(),
                                               workspace.aliases());
    const std::string writer = writerOf(workspace.landed());
    if (existing) {
        const auto old = FollowUpsFile::parseFrontmatter(*existing);
        if (old && FollowUpsFile::render(ledger, writer, old->updated, existing) == existing)
            return existing;
    }
    return FollowUpsFile::render(ledger, writer, workspace.now(), existing);
}
}  // namespace

void planFollowUps(EngineWorkspace& workspace, ChangeSet& changes) {
    const std::string path = workspace.memoryPath(EnginePaths::followUpsFileName);
    const auto existing = workspace.folder().bytes(path);
    if (!isBlank(existing) && !EngineRegion::parse(*existing))
        workspace.warnings().push_back(path + " is left alone: its engine region is damaged.");
    changes.rewrite(path, [&workspace](const auto& text) { return rendered(workspace, text); });
}
}  // namespace ombrix
