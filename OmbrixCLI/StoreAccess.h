// What the commands that read the store have in common. A database that is not there makes a list
// empty, with a warning, and fails anything that names a record. No command creates one.
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

/// The failure of a command that was given the id of no record: `kind` is "meeting" or "dictation".
CLIError noSuchRecord(const std::string& kind, std::int64_t id);

/// Prints what `readRows` reads from the store; without a database it is not called. Throws
/// `CLIError` for a limit below 1.
void emitList(const CLIContext& context, std::int64_t limit,
              const std::function<Json::Array(const DictationStore&)>& readRows);
}  // namespace ombrix::StoreAccess
