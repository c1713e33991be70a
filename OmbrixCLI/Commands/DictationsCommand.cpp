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

void listDictations(const CLIContext& context, const ListOptions& options) {
    const auto readRows = [&options](const DictationStore& store) {
        Json::Array rows;
        for (const auto& record : store.recentDictations({.limit = options.limit}))
            rows.push_back(dictationListRow(record));
        return rows;
    };
    StoreAccess::emitList(context, options.limit, readRows);
}

void getDictation(const CLIContext& context, const GetOptions& options) {
    StoreAccess::requireDatabase(context);
    const auto record = DictationStore(context.databaseURL).dictation(options.id);
    if (!record) throw StoreAccess::noSuchRecord("dictation", options.id);
    emitSuccess(context, encode(*record));
}

void declareList(Command parent) {
    Command command = parent.subcommand("list", "List recent dictations.");
    const auto options = command.options<ListOptions>();
    command.option("--limit N", options->limit, "Maximum number of dictations to return.");
    command.run(options, listDictations);
}

void declareGet(Command parent) {
    Command command = parent.subcommand("get", "Return a full dictation record.");
    const auto options = command.options<GetOptions>();
    command.positional("id", options->id, "Dictation ID");
    command.run(options, getDictation);
}
}  // namespace

void declareDictations(Command root) {
    const Command group = root.subcommand("dictations", "Inspect Ombrix dictations.");
    declareList(group);
    declareGet(group);
}
}  // namespace ombrix
