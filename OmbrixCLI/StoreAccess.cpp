#include "OmbrixCLI/StoreAccess.h"

namespace ombrix::StoreAccess {

void requireDatabase(const CLIContext& context) {
    if (DictationStore(context.databaseURL).databaseExists()) return;
    throw CLIError::databaseUnavailable(
        missingDatabase,
        "Launch Ombrix once or pass --db-path/--support-dir to point at the correct data "
        "directory.");
}

void requirePositiveLimit(std::int64_t limit) {
    if (limit >= 1) return;
    throw CLIError::invalidInput("--limit must be greater than zero.",
                                 "Pass a positive integer such as --limit 10.");
}
}  // namespace ombrix::StoreAccess
