#include "OmbrixCLI/CommandTree.h"
#include "OmbrixCLI/Envelope.h"
#include "OmbrixCLI/StoreAccess.h"

namespace ombrix {
namespace {

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

void listDictations(const StoreAccess::ListOptions& options) {
    const auto readRows = [&options](const DictationStore& store) {
        Json::Array rows;
        for (const auto& record : store.recentDictations({.limit = options.limit}))
            rows.push_back(dictationListRow(record));
        return rows;
    };
    StoreAccess::emitList("ombrix-cli dictations list", options, readRows);
}

void getDictation(const GetOptions& options) {
    const CLIContext context(options.global);
    StoreAccess::requireDatabase(context);
    const auto record = DictationStore(context.databaseURL).dictation(options.id);
    if (!record) throw StoreAccess::noSuchRecord("dictation", options.id);
    emitSuccess("ombrix-cli dictations get", encode(*record), context.databaseURL);
}

void declareList(Command parent) {
    Command command = parent.subcommand("list", "List recent dictations.");
    const auto options = command.options<StoreAccess::ListOptions>();
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
