#include "OmbrixCLI/StoreAccess.h"

#include "OmbrixCLI/Envelope.h"

namespace ombrix::StoreAccess {
namespace {

constexpr const char* missingDatabase = "No Ombrix database exists at the resolved path.";
}  // namespace

void requireDatabase(const CLIContext& context) {
    if (DictationStore(context.databaseURL).databaseExists()) return;
    throw CLIError::databaseUnavailable(
        missingDatabase,
        "Launch Ombrix once or pass --db-path/--support-dir to point at the correct data "
        "directory.");
}

CLIError noSuchRecord(const std::string& kind, std::int64_t id) {
    return CLIError::notFound("No " + kind + " exists with id " + std::to_string(id) + ".",
                              "Run `ombrix-cli " + kind + "s list` to find a valid ID.");
}

void emitList(const CLIContext& context, std::int64_t limit,
              const std::function<Json::Array(const DictationStore&)>& readRows) {
    if (limit < 1) {
        throw CLIError::invalidInput("--limit must be greater than zero.",
                                     "Pass a positive integer such as --limit 10.");
    }
    const DictationStore store(context.databaseURL);
    if (!store.databaseExists()) return emitSuccess(context, Json::Array{}, {missingDatabase});
    emitSuccess(context, readRows(store));
}
}  // namespace ombrix::StoreAccess
