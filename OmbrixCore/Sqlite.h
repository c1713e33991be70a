// SQLite's handles as values that close themselves, for the store alone. Every failure is thrown as
// a `DatabaseError` that names its statement.
#pragma once

#include <chrono>
#include <cstdint>
#include <ctime>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

struct sqlite3;
struct sqlite3_stmt;

namespace ombrix::Sqlite {

/// What a connection is for. A reader leaves a file of no bytes, which is a database without
/// tables, as it is.
enum class Access { read, write };

/// Processor time for one step. A search through a hundred thousand meetings takes a few seconds;
/// a view over an endless recursion would never end.
inline constexpr double defaultStepSeconds = 30;

/// How long a connection waits, in all, for the lock of another writer.
inline constexpr std::chrono::milliseconds busyTimeout{2000};

/// One connection, in WAL mode. It must outlive its statements.
class Connection {
  public:
    /// Refuses a database whose journal, log or index is no regular file: opening a pipe never
    /// ends. A row of more than 128 MiB, or SQL that no honest meeting needs, is an error. Makes
    /// the folder (throws `Files::Error`) and an empty database when they are missing. A database
    /// that this user may not write keeps its journal mode and can still be read, even in a folder
    /// without write access, unless it has a log or a journal that only a writer can open. A step
    /// that takes more than `stepSeconds` of processor time is interrupted.
    Connection(const std::string& path, Access access, double stepSeconds = defaultStepSeconds);
    Connection(const Connection&) = delete;
    Connection& operator=(const Connection&) = delete;

    /// Runs a script of statements that give no rows.
    void execute(const char* script) const;
    /// The same; false when SQLite refuses it.
    bool tryExecute(const char* script) const;
    std::int64_t lastInsertedRowId() const;

  private:
    friend class Statement;
    struct Close {
        void operator()(sqlite3* handle) const;
    };

    static int waitForLock(void* self, int attempt);
    static int hasWorkedTooLong(void* self);
    void open(const std::string& name, int flags, const std::string& path);
    void enterWalMode(const std::string& path);
    void makeReadable(const std::string& path);
    void startStep() const { stepStart_ = std::clock(); }

    std::chrono::steady_clock::duration waited_{0};
    double stepSeconds_;
    mutable std::clock_t stepStart_ = 0;
    std::unique_ptr<sqlite3, Close> handle_;
};

/// A prepared statement: bind each parameter in order, then step.
class Statement {
  public:
    Statement(const Connection& connection, std::string_view sql);

    /// Binds the next parameter. A text is not copied: it must live until the last step. An absent
    /// optional is NULL.
    Statement& bind(std::string_view text);
    Statement& bind(std::int64_t number);
    Statement& bind(double number);
    Statement& bind(const std::optional<std::string>& text);
    Statement& bind(std::optional<std::int64_t> number);
    // Without this a string would convert to a view and to an optional equally well.
    Statement& bind(const std::string& text) { return bind(std::string_view(text)); }

    /// True when there is a row to read, false after the last one.
    bool step();
    /// Steps a statement that gives no rows; throws unless it is done.
    void finish();
    /// Steps it once and ignores the result.
    void tryFinish();

    // Columns of the current row. Values are converted as SQLite does it: the text of a number is
    // its digits, the number of a text its leading digits.

    /// The whole text as the database has it, even with U+0000 inside; empty for NULL. These are
    /// SQLite's own bytes, valid until the next step or another reading of this column.
    std::string_view rawText(int column) const;
    /// The text as valid UTF-8; empty for NULL.
    std::string text(int column) const;
    std::optional<std::string> optionalText(int column) const;  ///< nothing for NULL
    std::int64_t int64(int column) const;
    std::optional<std::int64_t> optionalInt64(int column) const;
    std::int32_t int32(int column) const;  ///< the lower 32 bits
    double number(int column) const;

  private:
    struct Finalize {
        void operator()(sqlite3_stmt* handle) const;
    };

    void requireOk(int result) const;
    bool isNull(int column) const;

    int runStep() const;
    [[noreturn]] void throwLastError() const;

    const Connection& connection_;
    std::string sql_;
    std::unique_ptr<sqlite3_stmt, Finalize> handle_;
    int bound_ = 0;
};
}  // namespace ombrix::Sqlite
