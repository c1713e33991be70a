// A database as another program sees it: any SQL, no store in between. What fails throws.
#pragma once

#include <sqlite3.h>

#include <stdexcept>
#include <string>

namespace ombrix::test {

class RawDatabase {
  public:
    explicit RawDatabase(const std::string& path) {
        if (sqlite3_open(path.c_str(), &handle_) != SQLITE_OK)
            throw std::runtime_error("cannot open " + path);
        sqlite3_busy_timeout(handle_, 10000);
    }
    ~RawDatabase() { sqlite3_close(handle_); }
    RawDatabase(const RawDatabase&) = delete;
    RawDatabase& operator=(const RawDatabase&) = delete;

    void run(const std::string& sql) { rows(sql); }
    /// All values of all rows, "|" between columns, a line feed between rows; NULL is "NULL".
    std::string rows(const std::string& sql) {
        std::string text;
        const auto append = [](void* out, int count, char** values, char**) {
            auto& all = *static_cast<std::string*>(out);
            if (!all.empty()) all += '\n';
            for (int i = 0; i < count; ++i)
                all += (i ? "|" : "") + std::string(values[i] ? values[i] : "NULL");
            return 0;
        };
        if (sqlite3_exec(handle_, sql.c_str(), append, &text, nullptr) != SQLITE_OK)
            throw std::runtime_error(sqlite3_errmsg(handle_) + (": " + sql));
        return text;
    }

  private:
    sqlite3* handle_ = nullptr;
};
}  // namespace ombrix::test
