// What the commands that read the store have in common. Without a database a list is empty, with a
// warning, and a command that names a record fails. No command creates a database.
#pragma once

#include <cstdint>
#include <functional>
#include <string>

#include "OmbrixCLI/CLIContext.h"
#include "OmbrixCLI/CLIError.h"
#include "OmbrixCore/DictationStore.h"
#include "OmbrixPlatform/Json.h"

namespace ombrix::StoreAccess {

/// Throws `CLIError` when there is no database.
void requireDatabase(const CLIContext& context);

/// The failure of a command whose id is no record's: `kind` is "meeting" or "dictation".
CLIError noSuchRecord(const std::string& kind, std::int64_t id);

/// Prints what `readRows` reads from the store; it is not called without a database. Throws
/// `CLIError` for a limit below 1.
void emitList(const CLIContext& context, std::int64_t limit,
              const std::function<Json::Array(const DictationStore&)>& readRows);
}  // namespace ombrix::StoreAccess
