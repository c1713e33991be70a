#include "OmbrixCLI/CommandTree.h"
#include "OmbrixCLI/Envelope.h"
#include "OmbrixCLI/StoreAccess.h"

namespace ombrix {
namespace {

struct ListOptions {
    std::int64_t limit = 10;
    GlobalOptions global;
};

struct GetOptions {
    std::int64_t id = 0;
    GlobalOptions global;
};

Json::Value dictationListRow(const DictationRecord& record) {
    return Json::object({{"id", record.id},
                         {"timestamp", record.timestamp},
                         {"durationSeconds", record.durationSeconds},
                         {"wordCount", record.wordCount},
                         {"appContext", record.appContext}});
}

Json::Value dictationDetailPayload(const DictationRecord& record) { return encode(record); }

void listDictations(const ListOptions& options) {
    constexpr std::string_view command = "ombrix-cli dictations list";
    const CLIContext context(options.global);
    StoreAccess::requirePositiveLimit(options.limit);
    if (!DictationStore(context.databaseURL).databaseExists()) {
        return emitSuccess(command, Json::Array{}, context.databaseURL,
                           {StoreAccess::missingDatabase});
    }
    Json::Array rows;
    DictationQuery query;
    query.limit = options.limit;
    const DictationStore store(context.databaseURL);
    for (const auto& record : store.recentDictations(query)) {
        rows.push_back(dictationListRow(record));
    }
    emitSuccess(command, std::move(rows), context.databaseURL);
}

void getDictation(const GetOptions& options) {
    const CLIContext context(options.global);
    StoreAccess::requireDatabase(context);
    const auto record = DictationStore(context.databaseURL).dictation(options.id);
    if (!record) {
        throw CLIError::notFound("No dictation exists with id " + std::to_string(options.id) + ".",
                                 "Run `ombrix-cli dictations list` to find a valid ID.");
    }
    emitSuccess("ombrix-cli dictations get", dictationDetailPayload(*record), context.databaseURL);
}

void declareList(Command parent) {
    Command command = parent.subcommand("list", "List recent dictations.");
    const auto options = command.options<ListOptions>();
    command.option("--limit", options->limit, "Maximum number of dictations to return.");
    command.globalOptions(options->global);
    command.run([options] { listDictations(*options); });
}

void declareGet(Command parent) {
    Command command = parent.subcommand("get", "Return a full dictation record.");
    const auto options = command.options<GetOptions>();
    command.positional("id", options->id, "Dictation ID");
    command.globalOptions(options->global);
    command.run([options] { getDictation(*options); });
}
}  // namespace

void declareDictations(Command root) {
    const Command group = root.subcommand("dictations", "Inspect Ombrix dictations.");
    declareList(group);
    declareGet(group);
}
}  // namespace ombrix
