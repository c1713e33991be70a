#include "OmbrixCLI/Envelope.h"
#include "OmbrixEngine/EngineCommands.h"
#include "OmbrixEngine/Protocol/CommandText.h"
#include "OmbrixEngine/Steps/Status.h"

namespace ombrix {
namespace {

struct StatusOptions {
    bool brief = false;
    GlobalOptions global;
};

Json::Value encode(RecordState state) {
    std::optional<std::vector<std::string>> why;
    if (!state.why.empty()) why = std::move(state.why);
    return Json::object({{"state", state.kind}, {"why", std::move(why)}});
}

Json::Value encode(EngineStatus::Transcript transcript) {
    const auto& [path, key, header, facts] = *transcript.entry;
    return Json::object({{"key", key},
                         {"path", path},
                         {"title", header.title},
                         {"date", header.date},
                         {"land", encode(std::move(transcript.land))},
                         {"prepare", encode(std::move(transcript.prepare))}});
}

Json::Value encode(EngineStatus::Entity entity) {
    std::optional<std::string> file;
    if (!entity.file.empty()) file = std::move(entity.file);
    return Json::object({{"key", std::move(entity.key)},
                         {"kind", entity.kind},
                         {"file", std::move(file)},
                         {"newestFact", std::move(entity.newest)}});
}

Json::Value encode(EngineStatus::Damaged damaged) {
    return Json::object({{"path", std::move(damaged.path)}, {"why", std::move(damaged.why)}});
}

/// How many transcripts are in each state.
Json::Value counts(const std::vector<EngineStatus::Transcript>& transcripts,
                   RecordState EngineStatus::Transcript::*record) {
    std::map<std::string, std::int64_t> counts;
    for (const auto& each : transcripts) ++counts[std::string(rawValue((each.*record).kind))];
    return Json::toValue(std::move(counts));
}

template <typename Item>
Json::Array list(std::vector<Item> items) {
    Json::Array values;
    for (auto& item : items) values.push_back(encode(std::move(item)));
    return values;
}

void printStatus(const CLIContext& context, const StatusOptions& options) {
    EngineWorkspace workspace(context);
    workspace.tolerateDamagedAliases();
    workspace.trimRecords(keepWhatStatusNeeds);
    EngineStatus status = engineStatus(workspace);
    Json::Array next;
    for (auto& words : status.next) next.push_back(engineCommand(context, std::move(words)));
    const auto count = static_cast<std::int64_t>(status.transcripts.size());
    auto land = counts(status.transcripts, &EngineStatus::Transcript::land);
    auto prepare = counts(status.transcripts, &EngineStatus::Transcript::prepare);
    if (options.brief) {
        std::erase_if(status.transcripts, [](const EngineStatus::Transcript& each) {
            return !each.land.wantsAsking() && !each.prepare.wantsAsking();
        });
    }
    emitSuccess(context,
                Json::object({{"folder", workspace.folder().path()},
                              {"count", count},
                              {"land", std::move(land)},
                              {"prepare", std::move(prepare)},
                              {"transcripts", list(std::move(status.transcripts))},
                              {"entities", list(std::move(status.entities))},
                              {"damaged", list(std::move(status.damaged))},
                              {"next", std::move(next)}}),
                workspace.warnings());
}
}  // namespace

void declareStatus(Command root) {
    const Command command = root.subcommand(
        "status", "What is landed, consolidated and prepared, what is not, and what to ask next.");
    const auto options = command.options<StatusOptions>();
    command.flag("--brief", options->brief, "Leave out the transcripts that need nothing.");
    command.run(options, printStatus);
}
}  // namespace ombrix
