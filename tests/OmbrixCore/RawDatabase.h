// A database as another program sees it: any SQL, no store in between.
#pragma once

#include <gtest/gtest.h>
#include <sqlite3.h>

#include <string>

namespace ombrix::test {

class RawDatabase {
  public:
    explicit RawDatabase(const std::string& path) {
        EXPECT_EQ(sqlite3_open(path.c_str(), &handle_), SQLITE_OK);
        sqlite3_busy_timeout(handle_, 10000);
    }
    ~RawDatabase() { sqlite3_close(handle_); }
    RawDatabase(const RawDatabase&) = delete;
    RawDatabase& operator=(const RawDatabase&) = delete;

    void run(const std::string& sql) {
        EXPECT_EQ(sqlite3_exec(handle_, sql.c_str(), nullptr, nullptr, nullptr), SQLITE_OK)
            << sqlite3_errmsg(handle_) << ": " << sql;
    }
    /// All values of all rows, "|" between columns, a line feed behind rows; NULL is "NULL".
    std::string rows(const std::string& sql) {
        std::string text;
        const auto append = [](void* out, int count, char** values, char**) {
            for (int i = 0; i < count; ++i) {
                *static_cast<std::string*>(out) +=
                    (i ? "|" : "") + std::string(values[i] ? values[i] : "NULL");
            }
            *static_cast<std::string*>(out) += '\n';
            return 0;
        };
        EXPECT_EQ(sqlite3_exec(handle_, sql.c_str(), append, &text, nullptr), SQLITE_OK)
            << sqlite3_errmsg(handle_) << ": " << sql;
        return text;
    }

  private:
    sqlite3* handle_ = nullptr;
};
}  // namespace ombrix::test
