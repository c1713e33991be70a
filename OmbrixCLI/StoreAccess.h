// How the commands that read the store meet a database that is not there: a list is empty and
// warns, anything that names a record fails. No command creates one.
#pragma once

#include <string>

#include "OmbrixCLI/CLIContext.h"
#include "OmbrixCLI/CLIError.h"
#include "OmbrixCore/DictationStore.h"

namespace ombrix::StoreAccess {

inline constexpr const char* missingDatabase = "No Ombrix database exists at the resolved path.";

/// Throws `CLIError` when there is no database.
void requireDatabase(const CLIContext& context);

/// Throws `CLIError` for a limit below 1.
void requirePositiveLimit(std::int64_t limit);
}  // namespace ombrix::StoreAccess
