// SQL on a database file, for setting a scene.
#pragma once

#include <string>

namespace ombrix::ToolTests::Sql {

/// Runs a script. Throws `std::runtime_error` with SQLite's message.
void run(const std::string& database, const std::string& script);

/// The first column of the first row, as text; empty when there is no row.
std::string value(const std::string& database, const std::string& query);
}  // namespace ombrix::ToolTests::Sql
