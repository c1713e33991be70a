#include "OmbrixEngine/Steps/NextMoves.h"

#include <map>
#include <set>
#include <utility>

#include "OmbrixCLI/CLIError.h"
#include "OmbrixMemoryKit/EnginePaths.h"
#include "OmbrixMemoryKit/Moves/MoveEvidence.h"
#include "OmbrixMemoryKit/Moves/MoveLibrary.h"
#include "OmbrixMemoryKit/Moves/NextMoveFile.h"
#include "OmbrixMemoryKit/Notes/EngineProvenance.h"
#include "OmbrixPlatform/Text.h"

namespace ombrix {
namespace {

struct MoveFiles {
    std::map<std::string, std::string, std::less<>> paths;  // by move id
    std::set<std::string, std::less<>> meetings;            // their keys
    std::vector<std::string> texts;
};

MoveFiles filesOf(EngineWorkspace& workspace) {
    MoveFiles files;
    const std::string folder = workspace.memoryPath(NextMoveFile::subfolder);
    for (const auto& path : workspace.folder().files(folder, ".md")) {
        auto text = workspace.folder().bytes(path);
        if (!text) continue;
        if (auto parsed = NextMoveFile::parse(*text)) {
            files.meetings.insert(std::move(parsed->meta.meetingKey));
            files.paths.emplace(std::move(parsed->meta.moveId), path);
        }
        files.texts.push_back(*std::move(text));
    }
    return files;
}

MoveLibrary::Knowledge knowledge(EngineWorkspace& workspace, const MoveFiles& files) {
    MoveLibrary::Knowledge known{.corrections = MoveLibrary::corrections(files.texts)};
    for (const auto& path : workspace.folder().files(EnginePaths::movesFolder, ".json")) {
        try {
            const auto bytes = workspace.folder().bytes(path);
            if (!bytes) continue;
            auto record = MoveStateRecord::decode(*bytes);
            std::string id = record.moveId();
            known.records.insert_or_assign(std::move(id), std::move(record));
        } catch (const Json::SyntaxError&) {  // as every reader of moves, pass over it
        } catch (const Json::DecodingError&) {
        } catch (const MoveStateRecord::DecodeError&) {
        }
    }
    return known;
}

/// The transcripts that a move may cite.
void addSources(EngineWorkspace& workspace, const MoveLibrary::MoveInState& each,
                MoveSources& sources) {
    std::set<std::string> keys = {each.move.sourceId};
    const auto add = [&keys](const std::vector<Claim>& claims) {
        for (const auto& claim : claims)
            for (const auto& ref : claim.refs) keys.insert(ref.sourceId);
    };
    add(each.move.claims);
    for (const auto& revision : each.state.revisions) add(revision.claims);
    for (const auto& key : keys) {
        const auto* entry = workspace.transcript(key);
        if (entry == nullptr || sources.contains(key)) continue;
        try {
            auto people = entry->header.participants;
            sources.emplace(key, std::make_shared<const MoveSource>(
                                     key, workspace.document(*entry), entry->header.title,
                                     entry->header.date, std::move(people)));
        } catch (const CLIError&) {  // gone meanwhile
        }
    }
}

NextMoveFile::State stateOf(const MoveState& state) {
    if (state.dismissed) return NextMoveFile::State::discarded;
    return state.obligation == Obligation::done ? NextMoveFile::State::done
                                                : NextMoveFile::State::open;
}

NextMoveFile::Meta metaOf(const ResolvedMove& move, const PrepareSidecar& sidecar) {
    return {.title = move.title,
            .kind = move.move.kind,
            .stance = move.move.stance,
            .meeting = sidecar.title,
            .meetingDate = sidecar.date,
            .meetingKey = sidecar.meetingKey,
            .moveId = move.move.id,
            .commitments = move.move.commitmentIds,
            .due = move.due ? std::optional(move.due->iso) : std::nullopt,
            .recipients = move.recipients.value_or(std::vector<std::string>()),
            .state = stateOf(move.state)};
}

/// The file anew, with its own times when nothing else changes.
ChangeSet::Make rendering(ResolvedMove move, NextMoveFile::Meta meta, std::string writer,
                          MoveMarkdown::Context reader, Instant now) {
    return [=](const std::optional<std::string>& existing) mutable -> std::optional<std::string> {
        const auto old = existing ? NextMoveFile::parse(*existing) : std::nullopt;
        if (!old) return std::nullopt;
        meta.updated = old->meta.updated;
        const std::string by = old->writer.value_or(writer);
        if (NextMoveFile::render(move, meta, reader, by, old->writtenAt.value_or(now), existing) ==
            existing)
            return existing;
        meta.updated = now;
        return NextMoveFile::render(move, meta, reader, writer, now, existing);
    };
}
}  // namespace

void planNextMoves(EngineWorkspace& workspace, ChangeSet& changes) {
    const MoveFiles files = filesOf(workspace);
    if (files.paths.empty()) return;
    const auto known = knowledge(workspace, files);
    const MoveMarkdown::Context reader{.userName = workspace.userName(),
                                       .today = workspace.today()};
    for (const auto& sidecar : workspace.prepared()) {
        if (!files.meetings.contains(sidecar.meetingKey)) continue;
        MoveSources sources;
        for (auto& each : MoveLibrary::movesOf(sidecar, known)) {
            const auto path = files.paths.find(each.move.id);
            if (path == files.paths.end()) continue;
            addSources(workspace, each, sources);
            auto move = MoveEvidence::resolve(std::move(each.move), std::move(each.state), sources);
            auto meta = metaOf(move, sidecar);
            changes.rewrite(path->second, rendering(std::move(move), std::move(meta),
                                                    EngineProvenance::writerName(sidecar.model),
                                                    reader, workspace.now()));
        }
    }
}
}  // namespace ombrix
