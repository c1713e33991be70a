#include "OmbrixEngine/Steps/Status.h"

#include <algorithm>
#include <map>
#include <ranges>
#include <utility>

#include "OmbrixEngine/Steps/LandContexts.h"
#include "OmbrixEngine/Steps/LandStep.h"
#include "OmbrixEngine/Steps/PrivateSources.h"
#include "OmbrixMemoryKit/EnginePaths.h"
#include "OmbrixMemoryKit/EngineRecipes.h"
#include "OmbrixMemoryKit/Identity/EntityKeys.h"
#include "OmbrixMemoryKit/Region/EngineRegion.h"
#include "OmbrixMemoryKit/Region/Frontmatter.h"
#include "OmbrixPlatform/Paths.h"
#include "OmbrixPlatform/Text.h"

namespace ombrix {
namespace {

using Kind = RecordState::Kind;

constexpr const char* textEdited = "the text was edited";
constexpr const char* recipeNewer = "the recipe is newer";
constexpr const char* inputChanged = "the input changed";

RecordState stateOf(std::vector<std::string> why) {
    return {.kind = why.empty() ? Kind::current : Kind::stale, .why = std::move(why)};
}

// ---- transcripts -------------------------------------------------------------------------------

RecordState landState(const TranscriptEntry& entry, const TranscriptFacts* facts,
                      const LandSidecar* sidecar, bool contextChanged) {
    if (facts == nullptr) return {Kind::excluded, {"the transcript cannot be read"}};
    if (auto why = whyNeverAsked(entry.header, facts->turns > 0))
        return {Kind::excluded, {*std::move(why)}};
    if (sidecar == nullptr) return {Kind::missing, {}};
    std::vector<std::string> why;
    if (sidecar->contentFingerprint != facts->fingerprint) why.emplace_back(textEdited);
    if (sidecar->recipeVersion != EngineRecipes::landVersion) why.emplace_back(recipeNewer);
    if (contextChanged) why.emplace_back(inputChanged);
    return stateOf(std::move(why));
}

/// A move serves what the user promised, or took on among others.
bool hasWorkForTheUser(const LandSidecar& sidecar) {
    return std::ranges::any_of(sidecar.output.commitments, [](const LandCommitment& each) {
        return each.direction != CommitmentDirection::owedToUser;
    });
}

RecordState prepareState(const TranscriptFacts* facts, const LandSidecar* sidecar,
                         const RecordState& land, const PrepareSidecar* prepared) {
    if (land.kind == Kind::excluded) return land;
    if (sidecar == nullptr || land.kind == Kind::missing)
        return {Kind::waiting, {"the meeting is not landed"}};
    if (prepared == nullptr) {
        if (!hasWorkForTheUser(*sidecar)) return {Kind::excluded, {"no commitment of the user"}};
        if (land.kind == Kind::stale) return {Kind::waiting, {"its record is stale"}};
        return {Kind::missing, {}};
    }
    std::vector<std::string> why;
    if (prepared->contentFingerprint != facts->fingerprint) why.emplace_back(textEdited);
    if (prepared->recipeVersion != EngineRecipes::prepareVersion) why.emplace_back(recipeNewer);
    if (prepared->preparedAt < sidecar->landedAt) why.emplace_back(inputChanged);
    if (!why.empty() && land.kind == Kind::stale) return {Kind::waiting, {"its record is stale"}};
    return stateOf(std::move(why));
}

void readTranscripts(EngineWorkspace& workspace, EngineStatus& status) {
    const TranscriptFactsCache cache(workspace);
    LandHistory history(workspace);
    std::vector<LandHistory::Meeting> landed;
    for (const auto& entry : workspace.transcripts()) {
        const auto* facts = cache.of(entry);
        if (facts != nullptr && workspace.landed(entry.key) != nullptr)
            landed.push_back({&entry, history.people(entry.header, facts->speakers)});
    }
    std::map<const TranscriptEntry*, bool> isChanged;
    // Without the aliases nobody knows what the questions would be.
    if (workspace.whyAliasesAreLost().empty()) {
        const auto changed = LandContexts::changed(workspace, history, landed);
        for (std::size_t i = 0; i < landed.size(); ++i) isChanged[landed[i].entry] = changed[i];
    }
    std::map<std::string_view, const PrepareSidecar*> prepared;
    for (const auto& sidecar : workspace.prepared()) prepared[sidecar.meetingKey] = &sidecar;

    for (const auto& entry : workspace.transcripts()) {
        const auto* facts = cache.of(entry);
        const auto* sidecar = workspace.landed(entry.key);
        const auto found = prepared.find(entry.key);
        auto land = workspace.transcript(entry.key) == &entry
                        ? landState(entry, facts, sidecar, isChanged[&entry])
                        : RecordState{Kind::excluded, {"another transcript is the same meeting"}};
        auto prepare =
            prepareState(facts, sidecar, land, found == prepared.end() ? nullptr : found->second);
        status.transcripts.push_back({&entry, std::move(land), std::move(prepare)});
    }
    cache.save(workspace.folder());
}

// ---- people and threads ------------------------------------------------------------------------

/// When the engine wrote the region of a file; nothing for one without a readable region.
std::optional<Instant> regionTime(std::string_view text) {
    const auto region = EngineRegion::parse(text);
    const auto line = region ? EngineRegion::parseOpenLine(region->openLine) : std::nullopt;
    return line ? line->at : std::nullopt;
}

void readEntities(EngineWorkspace& workspace, EngineStatus& status) {
    const auto& aliases = workspace.aliases();
    const auto canonical = [&](std::string_view key) {
        return Text::lowercased(aliases.canonical(key));
    };
    struct Facts {
        LandMemoryFact::Kind kind{};
        std::string newest{};
        Instant landedAt{};
    };
    std::map<std::string, Facts> found;
    for (const auto& sidecar : workspace.landed()) {
        if (workspace.isPrivate(sidecar.meetingKey)) continue;
        for (const auto& fact : sidecar.output.memory) {
            if (EntityKeys::isGenericKey(fact.entityKey)) continue;
            auto& facts = found[canonical(fact.entityKey)];
            facts.kind = fact.kind;
            facts.newest = std::max(facts.newest, sidecar.date);
            facts.landedAt = std::max(facts.landedAt, sidecar.landedAt);
        }
    }
    std::map<std::string, const MemoryFileEntry*> files;
    for (const auto& file : workspace.memoryFiles()) {
        if (!file.declares) continue;
        files[canonical(file.key)] = &file;
        if (!file.parsed) continue;
        for (const auto& alias : file.parsed->meta.aliases) files.emplace(canonical(alias), &file);
    }
    const PrivateSources privateSources(workspace);
    for (auto& [key, facts] : found) {
        if (workspace.privacy().hides(key)) continue;
        const auto file = files.find(key);
        const bool isThere = file != files.end();
        if (isThere && !file->second->parsed) continue;  // damaged, and listed as such
        const auto written = isThere ? regionTime(file->second->text) : std::nullopt;
        if (written && *written >= facts.landedAt &&
            !privateSources.areIn(EngineRegion::parse(file->second->text)->content))
            continue;
        status.entities.push_back({.key = key,
                                   .kind = facts.kind,
                                   .file = isThere ? file->second->path : "",
                                   .newest = std::move(facts.newest)});
    }
}

// ---- damaged files -----------------------------------------------------------------------------

bool declaresEngineFile(const std::string& text) { return EnginePaths::declaresEngineFile(text); }

void readDamaged(EngineWorkspace& workspace, EngineStatus& status) {
    const auto check = [&](const std::string& path, const std::string& text, bool isOurs) {
        if (isOurs && !EngineRegion::parse(text))
            status.damaged.push_back({path, "its engine region is damaged"});
    };
    if (const auto& why = workspace.whyAliasesAreLost(); !why.empty())
        status.damaged.push_back({std::string(EnginePaths::aliasesFile), why});
    const std::string followUps = workspace.memoryPath(EnginePaths::followUpsFileName);
    if (const auto text = workspace.folder().bytes(followUps))
        check(followUps, *text, !Text::trimmed(*text).empty());
    for (const auto& file : workspace.memoryFiles()) {
        check(file.path, file.text, file.declares);
        if (file.declares && !file.parsed && EngineRegion::parse(file.text))
            status.damaged.push_back({file.path, "its frontmatter is damaged"});
    }
    for (const auto folder : {std::string_view("Before"), EnginePaths::nextMovesFolder}) {
        for (const auto& path : workspace.folder().files(workspace.memoryPath(folder), ".md")) {
            if (const auto text = workspace.folder().bytes(path))
                check(path, *text, declaresEngineFile(*text));
        }
    }
}

void planNext(EngineStatus& status) {
    for (const auto& each : std::views::reverse(status.transcripts))
        if (each.land.wantsAsking()) status.next.push_back({"ask", "land", each.entry->key});
    for (const auto& entity : status.entities)
        status.next.push_back({"ask", "consolidate", entity.key});
    for (const auto& each : std::views::reverse(status.transcripts))
        if (each.prepare.wantsAsking()) status.next.push_back({"ask", "prepare", each.entry->key});
}
}  // namespace

void keepWhatStatusNeeds(LandSidecar& sidecar) {
    std::string().swap(sidecar.inputHash);  // an assignment would keep the memory
    sidecar.output = {.commitments = std::move(sidecar.output.commitments),
                      .resolutions = std::move(sidecar.output.resolutions),
                      .memory = std::move(sidecar.output.memory)};
    for (auto& each : sidecar.output.commitments) std::string().swap(each.quote);
    for (auto& each : sidecar.output.resolutions) std::string().swap(each.quote);
    for (auto& each : sidecar.output.memory) std::string().swap(each.quote);
}

EngineStatus engineStatus(EngineWorkspace& workspace) {
    EngineStatus status;
    readTranscripts(workspace, status);
    readDamaged(workspace, status);
    // Nothing can be asked then, and nobody knows who is private.
    if (!workspace.whyAliasesAreLost().empty()) return status;
    readEntities(workspace, status);
    planNext(status);
    return status;
}
}  // namespace ombrix
