#include "OmbrixCore/Sqlite.h"

#include <sqlite3.h>

#include "OmbrixCore/DictationStore.h"
#include "OmbrixPlatform/Files.h"
#include "OmbrixPlatform/Paths.h"
#include "OmbrixPlatform/Utf8.h"

namespace ombrix::Sqlite {
namespace {

DatabaseError lastError(sqlite3* handle, std::string statement) {
    return {sqlite3_errcode(handle), sqlite3_errmsg(handle), std::move(statement)};
}
}  // namespace

// ---- connection -------------------------------------------------------------------------------

void Connection::Close::operator()(sqlite3* handle) const { sqlite3_close(handle); }

Connection::Connection(const std::string& path) {
    if (const auto folder = Paths::parent(path); !folder.empty()) {
        Files::createDirectories(std::string(folder));
    }
    sqlite3* handle = nullptr;
    const int result = sqlite3_open(path.c_str(), &handle);
    handle_.reset(handle);  // SQLite gives a handle even when it cannot open the file
    if (result != SQLITE_OK) {
        throw lastError(handle, "open " + path + (Files::isDirectory(path) ? " (a folder)" : ""));
    }
    sqlite3_busy_timeout(handle, DictationStore::busyTimeoutMilliseconds);
    // A database is foreign bytes: what its schema may call is limited to what does no harm.
    sqlite3_db_config(handle, SQLITE_DBCONFIG_TRUSTED_SCHEMA, 0, nullptr);
    enterWalMode();
}

void Connection::enterWalMode() const {
    constexpr const char* pragma = "PRAGMA journal_mode=WAL";
    if (tryExecute(pragma)) return;
    // A database that we may only read stays in the mode it is in. Whether it can be read in that
    // mode, the statement behind this one tells.
    const DatabaseError error = lastError(handle_.get(), pragma);
    if (sqlite3_db_readonly(handle_.get(), "main") != 1 || error.code() != SQLITE_READONLY) {
        throw error;
    }
}

void Connection::execute(const char* script) const {
    if (!tryExecute(script)) throw lastError(handle_.get(), script);
}

bool Connection::tryExecute(const char* script) const {
    return sqlite3_exec(handle_.get(), script, nullptr, nullptr, nullptr) == SQLITE_OK;
}

std::int64_t Connection::lastInsertedRowId() const {
    return sqlite3_last_insert_rowid(handle_.get());
}

// ---- statement --------------------------------------------------------------------------------

void Statement::Finalize::operator()(sqlite3_stmt* handle) const { sqlite3_finalize(handle); }

Statement::Statement(const Connection& connection, std::string_view sql)
    : connection_(connection.handle_.get()), sql_(sql) {
    sqlite3_stmt* handle = nullptr;
    const int result = sqlite3_prepare_v2(connection_, sql_.c_str(),
                                          static_cast<int>(sql_.size()) + 1, &handle, nullptr);
    handle_.reset(handle);
    requireOk(result);
}

void Statement::requireOk(int result) const {
    if (result != SQLITE_OK) throw lastError(connection_, sql_);
}

Statement& Statement::bind(std::string_view text) {
    const char* bytes = text.data() == nullptr ? "" : text.data();  // a null pointer would be NULL
    requireOk(sqlite3_bind_text64(handle_.get(), ++bound_, bytes, text.size(), SQLITE_STATIC,
                                  SQLITE_UTF8));
    return *this;
}

Statement& Statement::bind(std::int64_t number) {
    requireOk(sqlite3_bind_int64(handle_.get(), ++bound_, number));
    return *this;
}

Statement& Statement::bind(double number) {
    requireOk(sqlite3_bind_double(handle_.get(), ++bound_, number));
    return *this;
}

Statement& Statement::bind(const std::optional<std::string>& text) {
    if (text) return bind(std::string_view(*text));
    requireOk(sqlite3_bind_null(handle_.get(), ++bound_));
    return *this;
}

Statement& Statement::bind(std::optional<std::int64_t> number) {
    if (number) return bind(*number);
    requireOk(sqlite3_bind_null(handle_.get(), ++bound_));
    return *this;
}

bool Statement::step() {
    const int result = sqlite3_step(handle_.get());
    if (result == SQLITE_ROW) return true;
    if (result == SQLITE_DONE) return false;
    throw lastError(connection_, sql_);
}

void Statement::finish() {
    if (sqlite3_step(handle_.get()) != SQLITE_DONE) throw lastError(connection_, sql_);
}

void Statement::tryFinish() { sqlite3_step(handle_.get()); }

bool Statement::isNull(int column) const {
    return sqlite3_column_type(handle_.get(), column) == SQLITE_NULL;
}

std::string_view Statement::rawText(int column) const {
    const unsigned char* bytes = sqlite3_column_text(handle_.get(), column);
    if (bytes == nullptr) {
        // Either NULL, or a text there was no memory to convert.
        if (sqlite3_errcode(connection_) == SQLITE_NOMEM) throw lastError(connection_, sql_);
        return {};
    }
    const int size = sqlite3_column_bytes(handle_.get(), column);
    return {reinterpret_cast<const char*>(bytes), static_cast<std::size_t>(size)};
}

std::string Statement::text(int column) const {
    const std::string_view raw = rawText(column);
    return Utf8::isValid(raw) ? std::string(raw) : Utf8::repaired(raw);
}

std::optional<std::string> Statement::optionalText(int column) const {
    if (isNull(column)) return std::nullopt;
    return text(column);
}

std::int64_t Statement::int64(int column) const {
    return sqlite3_column_int64(handle_.get(), column);
}

std::optional<std::int64_t> Statement::optionalInt64(int column) const {
    if (isNull(column)) return std::nullopt;
    return int64(column);
}

std::int32_t Statement::int32(int column) const {
    return sqlite3_column_int(handle_.get(), column);
}

double Statement::number(int column) const { return sqlite3_column_double(handle_.get(), column); }
}  // namespace ombrix::Sqlite
