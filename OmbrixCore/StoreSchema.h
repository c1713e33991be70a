// The tables of the store.
#pragma once

#include "OmbrixCore/Sqlite.h"

namespace ombrix::StoreSchema {

/// Creates the tables and indexes that are missing and adds the column `folder_id` to meetings of
/// an older database. Running it again changes nothing.
void migrate(const Sqlite::Connection& connection);
}  // namespace ombrix::StoreSchema
