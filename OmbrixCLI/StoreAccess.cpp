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

void emitList(std::string_view command, const ListOptions& options,
              const std::function<Json::Array(const DictationStore&)>& readRows) {
    const CLIContext context(options.global);
    if (options.limit < 1) {
        throw CLIError::invalidInput("--limit must be greater than zero.",
                                     "Pass a positive integer such as --limit 10.");
    }
    const DictationStore store(context.databaseURL);
    if (!store.databaseExists())
        return emitSuccess(command, Json::Array{}, context.databaseURL, {missingDatabase});
    emitSuccess(command, readRows(store), context.databaseURL);
}
}  // namespace ombrix::StoreAccess
