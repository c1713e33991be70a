#include "Sql.h"

#include <sqlite3.h>

#include <memory>
#include <stdexcept>

namespace ombrix::ToolTests::Sql {
namespace {

struct Close {
    void operator()(sqlite3* connection) const { sqlite3_close(connection); }
};
using Connection = std::unique_ptr<sqlite3, Close>;

Connection open(const std::string& database) {
    sqlite3* connection = nullptr;
    const int result = sqlite3_open(database.c_str(), &connection);
    Connection owned(connection);
    if (result != SQLITE_OK) throw std::runtime_error("cannot open " + database);
    sqlite3_busy_timeout(connection, 10'000);
    return owned;
}

int takeFirst(void* into, int columns, char** values, char**) {
    auto& text = *static_cast<std::string*>(into);
    if (text.empty() && columns > 0 && values[0] != nullptr) text = values[0];
    return 0;
}

void execute(sqlite3* connection, const std::string& sql, std::string* first) {
    char* message = nullptr;
    if (sqlite3_exec(connection, sql.c_str(), first == nullptr ? nullptr : takeFirst, first,
                     &message) == SQLITE_OK) {
        return;
    }
    const std::string problem = message == nullptr ? "SQL failed" : message;
    sqlite3_free(message);
    throw std::runtime_error(problem + ": " + sql);
}
}  // namespace

void run(const std::string& database, const std::string& script) {
    execute(open(database).get(), script, nullptr);
}

std::string value(const std::string& database, const std::string& query) {
    std::string first;
    execute(open(database).get(), query, &first);
    return first;
}
}  // namespace ombrix::ToolTests::Sql
