#include "OmbrixCore/Sqlite.h"

#include <sqlite3.h>

#include <cstdint>
#include <filesystem>
#include <system_error>
#include <thread>
#include <utility>

#include "OmbrixCore/DatabaseError.h"
#include "OmbrixPlatform/Files.h"
#include "OmbrixPlatform/Numbers.h"
#include "OmbrixPlatform/Paths.h"
#include "OmbrixPlatform/Text.h"
#include "OmbrixPlatform/Utf8.h"

namespace ombrix::Sqlite {
namespace {

/// Rare enough to cost nothing, and soon enough when each instruction makes a large text.
constexpr int instructionsBetweenChecks = 1000;

/// What one instruction can make of a database with a hostile schema; the time limit is only asked
/// between instructions.
constexpr std::pair<int, int> limits[] = {
    {SQLITE_LIMIT_LENGTH, 128 << 20},  // bytes of a row; a day of speech has two million
    {SQLITE_LIMIT_COLUMN, 200},
    {SQLITE_LIMIT_COMPOUND_SELECT, 50},
    {SQLITE_LIMIT_LIKE_PATTERN_LENGTH, 1000},
    {SQLITE_LIMIT_TRIGGER_DEPTH, 20},
    {SQLITE_LIMIT_ATTACHED, 0},
};

void refuseIrregularCompanions(const std::string& path) {
    for (const char* const suffix : {"-journal", "-wal", "-shm"}) {
        const std::string companion = path + suffix;
        std::error_code error;
        const auto status = std::filesystem::status(companion, error);
        if (std::filesystem::exists(status) && !std::filesystem::is_regular_file(status))
            throw DatabaseError(SQLITE_CANTOPEN, companion + " is not a regular file",
                                "open " + path);
    }
}

DatabaseError lastError(sqlite3* handle, std::string_view statement) {
    return {sqlite3_errcode(handle), sqlite3_errmsg(handle), statement};
}

/// True for a file of at most one byte, which SQLite takes for a new database.
bool isNewFile(const std::string& path) {
    std::error_code error;
    return std::filesystem::file_size(path, error) <= 1 && !error;
}

/// The path as a part of a URI: bytes that could end it there are percent-encoded.
std::string uriPath(const std::string& path) {
    std::string text;
    for (const char c : path) {
        if (Text::isAsciiAlphanumeric(c) || c == '/' || c == '.' || c == '-' || c == '_') {
            text += c;
        } else {
            Numbers::appendHex(text += '%', static_cast<std::uint8_t>(c),
                               Numbers::HexDigits::upper);
        }
    }
    return text;
}
}  // namespace

// ---- connection -------------------------------------------------------------------------------

void Connection::Close::operator()(sqlite3* handle) const { sqlite3_close(handle); }

Connection::Connection(const std::string& path, Access access, double stepSeconds)
    : stepSeconds_(stepSeconds) {
    if (const auto folder = Paths::parent(path); !folder.empty())
        Files::createDirectories(std::string(folder));
    refuseIrregularCompanions(path);
    open(path, SQLITE_OPEN_READWRITE | SQLITE_OPEN_CREATE, path);
    if (access == Access::write || !isNewFile(path)) enterWalMode(path);
}

void Connection::open(const std::string& name, int flags, const std::string& path) {
    sqlite3* handle = nullptr;
    const int result = sqlite3_open_v2(name.c_str(), &handle, flags, nullptr);
    handle_.reset(handle);  // SQLite gives a handle even when it cannot open the file
    if (result != SQLITE_OK)
        throw lastError(handle, "open " + path + (Files::isDirectory(path) ? " (a folder)" : ""));
    sqlite3_busy_handler(handle, &Connection::waitForLock, this);
    sqlite3_progress_handler(handle, instructionsBetweenChecks, &Connection::hasWorkedTooLong,
                             this);
    // A database is foreign bytes: what its schema may call is limited to what does no harm.
    sqlite3_db_config(handle, SQLITE_DBCONFIG_TRUSTED_SCHEMA, 0, nullptr);
    for (const auto& [limit, value] : limits) sqlite3_limit(handle, limit, value);
}

/// SQLite's own wait sleeps up to a tenth of a second between two attempts. A writer that locks
/// again at once then holds the lock at nearly every attempt, and two seconds were not enough. So
/// we try every half millisecond.
int Connection::waitForLock(void* self, int) {
    auto& connection = *static_cast<Connection*>(self);
    if (connection.waited_ >= busyTimeout) return 0;
    const auto start = std::chrono::steady_clock::now();
    std::this_thread::sleep_for(std::chrono::microseconds(500));
    connection.waited_ += std::chrono::steady_clock::now() - start;
    return 1;
}

/// Processor time, so that a slow disk is not taken for an endless computation.
int Connection::hasWorkedTooLong(void* self) {
    const auto& connection = *static_cast<const Connection*>(self);
    const auto spent = static_cast<double>(std::clock() - connection.stepStart_);
    return spent / CLOCKS_PER_SEC > connection.stepSeconds_ ? 1 : 0;
}

void Connection::enterWalMode(const std::string& path) {
    constexpr const char* pragma = "PRAGMA journal_mode=WAL";
    while (!tryExecute(pragma)) {
        const DatabaseError error = lastError(handle_.get(), pragma);
        // Beside a writer of a database in another journal mode SQLite refuses at once, without
        // asking the busy handler.
        if (error.code() == SQLITE_BUSY && waitForLock(this, 0) != 0) continue;
        if (error.code() != SQLITE_READONLY || sqlite3_db_readonly(handle_.get(), "main") != 1)
            throw error;
        return makeReadable(path);
    }
}

/// We may only read it. In WAL mode even that takes an index file beside it, which we cannot make
/// in a folder without write access. Without a log or a journal the database file holds everything,
/// and then it can be read as a file that does not change.
void Connection::makeReadable(const std::string& path) {
    if (tryExecute("SELECT 1 FROM sqlite_master LIMIT 1")) return;
    // Only an index file that cannot be made is mended here. The caller's statement will meet any
    // other refusal, a lock for example, again.
    const int refusal = sqlite3_errcode(handle_.get());
    if (refusal != SQLITE_CANTOPEN && refusal != SQLITE_READONLY) return;
    if (Files::exists(path + "-wal") || Files::exists(path + "-journal")) return;
    open("file:" + uriPath(path) + "?immutable=1", SQLITE_OPEN_READONLY | SQLITE_OPEN_URI, path);
}

void Connection::execute(const char* script) const {
    if (!tryExecute(script)) throw lastError(handle_.get(), script);
}

bool Connection::tryExecute(const char* script) const {
    startStep();
    return sqlite3_exec(handle_.get(), script, nullptr, nullptr, nullptr) == SQLITE_OK;
}

std::int64_t Connection::lastInsertedRowId() const {
    return sqlite3_last_insert_rowid(handle_.get());
}

// ---- statement --------------------------------------------------------------------------------

void Statement::Finalize::operator()(sqlite3_stmt* handle) const { sqlite3_finalize(handle); }

Statement::Statement(const Connection& connection, std::string_view sql)
    : connection_(connection), sql_(sql) {
    connection_.startStep();  // reading the schema runs instructions, too
    sqlite3_stmt* handle = nullptr;
    const int result = sqlite3_prepare_v2(connection_.handle_.get(), sql_.c_str(),
                                          static_cast<int>(sql_.size()) + 1, &handle, nullptr);
    handle_.reset(handle);
    requireOk(result);
}

void Statement::requireOk(int result) const {
    if (result != SQLITE_OK) throwLastError();
}

void Statement::throwLastError() const { throw lastError(connection_.handle_.get(), sql_); }

int Statement::runStep() const {
    connection_.startStep();
    return sqlite3_step(handle_.get());
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
    const int result = runStep();
    if (result == SQLITE_ROW) return true;
    if (result == SQLITE_DONE) return false;
    throwLastError();
}

void Statement::finish() {
    if (runStep() != SQLITE_DONE) throwLastError();
}

void Statement::tryFinish() { runStep(); }

bool Statement::isNull(int column) const {
    return sqlite3_column_type(handle_.get(), column) == SQLITE_NULL;
}

std::string_view Statement::rawText(int column) const {
    const unsigned char* bytes = sqlite3_column_text(handle_.get(), column);
    if (bytes == nullptr) {
        // Either NULL, or a text there was no memory to convert.
        if (sqlite3_errcode(connection_.handle_.get()) == SQLITE_NOMEM) throwLastError();
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
