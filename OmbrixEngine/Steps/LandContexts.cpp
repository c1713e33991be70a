#include "OmbrixEngine/Steps/LandContexts.h"

#include <map>
#include <utility>

#include "OmbrixCLI/CLIError.h"
#include "OmbrixEngine/Steps/TranscriptFacts.h"
#include "OmbrixEngine/Workspace/EngineLock.h"
#include "OmbrixPlatform/Files.h"
#include "OmbrixPlatform/Paths.h"

namespace ombrix::LandContexts {
namespace {

struct Known {
    Instant landedAt{};
    std::string digest{};
    bool operator==(const Known&) const = default;
};
using KnownByKey = std::map<std::string, Known, std::less<>>;

Json::Value encode(const Known& known) {
    return Json::object({{"landedAt", known.landedAt}, {"digest", known.digest}});
}

Known decode(Json::As<Known>, const Json::Object& in) {
    return {.landedAt = in.required<Instant>("landedAt"),
            .digest = in.required<std::string>("digest")};
}

KnownByKey read(const TranscriptsFolder& folder) {
    try {
        if (const auto bytes = folder.bytes(path)) return Json::decode<KnownByKey>(*bytes);
    } catch (const CLIError&) {
    } catch (const Json::SyntaxError&) {
    } catch (const Json::DecodingError&) {
    }
    return {};
}

/// A library that cannot be written only forgets.
void write(const TranscriptsFolder& folder, const KnownByKey& known) {
    Json::Members members;
    for (const auto& [key, each] : known) members.emplace(key, encode(each));
    try {
        const std::string target = folder.inside(path);
        Files::createDirectories(std::string(Paths::parent(target)));
        Files::writeAtomically(target, Json::write(std::move(members), Json::Style::canonical));
    } catch (const Files::Error&) {
    } catch (const CLIError&) {
    }
}

std::vector<Known> present(EngineWorkspace& workspace, LandHistory& history,
                           const std::vector<LandHistory::Meeting>& meetings) {
    const auto digests = history.digests(meetings);
    std::vector<Known> now;
    for (std::size_t i = 0; i < meetings.size(); ++i)
        now.push_back(
            {workspace.landed(meetings[i].entry->key)->landedAt, std::to_string(digests[i])});
    return now;
}
}  // namespace

std::vector<bool> changed(EngineWorkspace& workspace, LandHistory& history,
                          const std::vector<LandHistory::Meeting>& meetings) {
    const auto now = present(workspace, history, meetings);
    const KnownByKey known = read(workspace.folder());
    KnownByKey next;
    std::vector<bool> result(meetings.size());
    for (std::size_t i = 0; i < meetings.size(); ++i) {
        const auto& key = meetings[i].entry->key;
        const auto old = known.find(key);
        const bool isOfThisLanding = old != known.end() && old->second.landedAt == now[i].landedAt;
        result[i] = isOfThisLanding && old->second.digest != now[i].digest;
        next.emplace(key, isOfThisLanding ? old->second : now[i]);
    }
    if (next != known)
        if (const auto lock = EngineLock::tryNow(workspace.folder()))
            write(workspace.folder(), next);
    return result;
}

void record(EngineWorkspace& workspace, const TranscriptEntry& entry) {
    LandHistory history(workspace);
    const auto document = workspace.document(entry);
    const auto facts = TranscriptFacts::of("", document);
    const auto now =
        present(workspace, history, {{&entry, history.people(document, facts.speakers)}});
    KnownByKey known = read(workspace.folder());
    if (const auto old = known.find(entry.key); old != known.end() && old->second == now.front())
        return;
    known.insert_or_assign(entry.key, now.front());
    write(workspace.folder(), known);
}
}  // namespace ombrix::LandContexts
