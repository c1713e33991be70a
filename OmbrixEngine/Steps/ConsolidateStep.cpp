#include "OmbrixEngine/Steps/ConsolidateStep.h"

#include <set>
#include <utility>

#include "OmbrixCLI/PathArguments.h"
#include "OmbrixEngine/Protocol/Ask.h"
#include "OmbrixEngine/Steps/PrivateSources.h"
#include "OmbrixMemoryKit/Memory/MemoryFiles.h"
#include "OmbrixMemoryKit/Region/EngineRegion.h"
#include "OmbrixPlatform/Text.h"

namespace ombrix {
namespace {

constexpr std::string_view extension = ".md";

/// What the model may see, with titles that its answer can cite.
std::vector<ConsolidateCandidate> shownCandidates(const MemoryEntity& entity,
                                                  EngineWorkspace& workspace) {
    const auto& privacy = workspace.privacy();
    auto found = EntityInputs::candidates(entity, workspace.userName());
    std::erase_if(found, [&](const ConsolidateCandidate& each) {
        return each.who && privacy.hidesName(*each.who);
    });
    for (auto& each : found) each.meetingTitle = privacy.cleanedText(each.meetingTitle);
    return found;
}

std::int64_t countSources(const ConsolidateOutput& output) {
    std::set<std::string_view> sources;
    const auto add = [&](const auto& items) {
        for (const auto& item : items) sources.insert(item.sources.begin(), item.sources.end());
    };
    add(output.who);
    add(output.whatThisIs);
    add(output.decisions);
    add(output.open);
    return static_cast<std::int64_t>(sources.size());
}
}  // namespace

ConsolidateStep::ConsolidateStep(EngineWorkspace& workspace, std::string_view argument)
    : workspace_(workspace), entity_(Entities::named(workspace, argument)) {
    Entities::requirePublic(workspace, entity_);
    file_ = Entities::file(workspace, entity_);
    auto existing = Entities::contents(file_);
    if (file_ != nullptr && !existing) {
        throw CLIError::invalidInput(printable(file_->path) +
                                         " is damaged: it has no whole engine "
                                         "region, so it is left alone.",
                                     "Restore its two marker lines, or move the file away.");
    }
    auto found = shownCandidates(entity_, workspace);
    if (found.empty()) {
        throw CLIError::notFound(
            "The landed meetings say nothing about '" + printable(Entities::title(entity_)) + "'.",
            "ombrix-engine status lists whom they say something about.");
    }
    if (existing) existing->engineText = PrivateSources(workspace).without(existing->engineText);
    const auto rows = Entities::openRows(workspace, {&entity_, 1});
    input_ = EntityInputs::consolidate(entity_, std::move(found), rows, existing,
                                       workspace.userName(), workspace.today());
    question_ = askInput(workspace, encode(input_));
    path_ = file_ != nullptr ? file_->path : newPath();
}

/// The file named as the entity is shown, with a number when another file has that name.
std::string ConsolidateStep::newPath() const {
    const std::string name = MemoryFile::fileName(Entities::title(entity_));
    std::string path = workspace_.memoryPath(name);
    const std::string stem = path.substr(0, path.size() - extension.size());
    for (int number = 2; workspace_.folder().bytes(path); ++number)
        path = stem + " " + std::to_string(number) + std::string(extension);
    return path;
}

bool ConsolidateStep::isWritten(const ConsolidateOutput& output) const {
    const auto existing = Entities::contents(file_);
    return existing && existing->engineText == MemoryFile::regionContent(output);
}

void ConsolidateStep::plan(ChangeSet& changes, const GivenAnswer& answer,
                           const ConsolidateOutput& output) const {
    auto meta = EntityInputs::meta(entity_, Entities::title(entity_));
    if (file_ != nullptr && file_->parsed) meta.series = file_->parsed->meta.series;
    const auto render = [=, writer = EngineProvenance::writerName(answer.model),
                         now = workspace_.now(), sources = countSources(output)](
                            const std::optional<std::string>& existing) {
        const auto at = [&](Instant instant) {
            return MemoryFile::render(meta, output, writer, instant, sources, existing);
        };
        if (const auto region = EngineRegion::parse(existing.value_or("")))
            if (const auto open = EngineRegion::parseOpenLine(region->openLine); open && open->at)
                if (auto same = at(*open->at); same == existing) return same;
        return at(now);
    };
    changes.rewrite(path_, render);
}
}  // namespace ombrix
