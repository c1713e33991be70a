#include "OmbrixEngine/Steps/Notes.h"

#include <set>
#include <utility>

#include "OmbrixCLI/PathArguments.h"
#include "OmbrixEngine/Steps/TranscriptFacts.h"
#include "OmbrixMarkdownKit/Transcript/NotesBlockWriter.h"
#include "OmbrixMarkdownKit/Transcript/TranscriptEditor.h"
#include "OmbrixMemoryKit/Notes/NotesBlockEdit.h"
#include "OmbrixPlatform/Permissions.h"

namespace ombrix {
namespace {

struct Unfinished {
    std::string meetingKey{};
    Instant landedAt{};
};

Json::Value encode(Unfinished each) {
    return Json::object({{"meetingKey", std::move(each.meetingKey)}, {"landedAt", each.landedAt}});
}

Unfinished decode(Json::As<Unfinished>, const Json::Object& in) {
    return {.meetingKey = in.required<std::string>("meetingKey"),
            .landedAt = in.required<Instant>("landedAt")};
}

struct UnfinishedList {
    std::vector<Unfinished> notes{};
};

UnfinishedList decode(Json::As<UnfinishedList>, const Json::Object& in) {
    return {.notes = in.required<std::vector<Unfinished>>("notes")};
}

/// The payload of the block; nothing for a record of an unknown route.
std::optional<std::string> payload(const LandSidecar& sidecar, const Calendar& calendar) {
    const auto route = fromRawValue<EngineProvenance::Route>(sidecar.route);
    if (!route) return std::nullopt;
    const EngineProvenance writer{.route = *route, .model = sidecar.model, .at = sidecar.landedAt};
    return NotesBlockRenderer::payload(sidecar.output, writer, calendar);
}

std::optional<std::string> withNotes(const std::optional<std::string>& transcript,
                                     const std::string& notes) {
    if (!transcript || !engineMayWriteNotes(*transcript)) return std::nullopt;
    return TranscriptEditor::setEnhancedSections(*transcript, notes);
}

void planBlock(const TranscriptsFolder& folder, ChangeSet& changes, const std::string& path,
               const std::string& notes) {
    changes.rewrite(path, [notes](const auto& existing) { return withNotes(existing, notes); });
    // Of the transcript as it then is.
    const auto mirror = [&folder, path, notes](const auto&) -> std::optional<std::string> {
        const auto text = withNotes(folder.bytes(path), notes);
        const auto block = text ? TranscriptEditor::enhancedSections(*text) : std::nullopt;
        if (!block || block->empty()) return std::nullopt;
        return std::string(*block) + "\n";
    };
    changes.rewriteCopy(path, NotesBlockWriter::mirrorURL(path), mirror);
}
}  // namespace

std::vector<std::string> UnfinishedNotes::keys(EngineWorkspace& workspace) {
    std::vector<std::string> keys;
    try {
        const auto bytes = workspace.folder().bytes(path);
        if (!bytes) return keys;
        for (auto& [key, landedAt] : Json::decode<UnfinishedList>(*bytes).notes) {
            const auto* sidecar = workspace.landed(key);
            if (sidecar != nullptr && sidecar->landedAt == landedAt) keys.push_back(std::move(key));
        }
    } catch (const Json::SyntaxError&) {  // not ours, or damaged: refresh renders what it can
    } catch (const Json::DecodingError&) {
    }
    return keys;
}

void planNotes(EngineWorkspace& workspace, ChangeSet& changes, std::vector<std::string> keys) {
    for (auto& key : UnfinishedNotes::keys(workspace)) {
        const auto* entry = workspace.transcript(key);
        if (entry == nullptr) continue;
        if (Permissions::allowWriting(workspace.folder().absolute(entry->path)))
            keys.push_back(std::move(key));
        else  // locked meanwhile, which is no reason to stop the work on another meeting
            workspace.warnings().push_back("Passed over: '" + printable(entry->path) +
                                           "' is read-only.");
    }
    Json::Array list;
    std::set<std::string_view> seen;
    for (const auto& key : keys) {
        const auto* entry = workspace.transcript(key);
        if (entry == nullptr || !seen.insert(key).second) continue;
        const auto sidecar = workspace.wholeRecord(key);
        if (!sidecar) continue;
        const auto notes = payload(*sidecar, workspace.calendar());
        if (!notes) continue;
        planBlock(workspace.folder(), changes, entry->path, *notes);
        list.push_back(encode(Unfinished{key, sidecar->landedAt}));
    }
    changes.whileUnfinished(
        std::string(UnfinishedNotes::path),
        Json::write(Json::object({{"notes", std::move(list)}}), Json::Style::file));
}
}  // namespace ombrix
