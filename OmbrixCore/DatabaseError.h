// The one error of the store for what SQLite refuses.
#pragma once

#include <stdexcept>
#include <string>
#include <string_view>

namespace ombrix {

/// What SQLite said. `what()` is for a person: the message, the code and the statement.
class DatabaseError : public std::runtime_error {
  public:
    static constexpr std::string_view domain = "OmbrixDB";

    /// `statement` is the SQL, or "open " and the path.
    DatabaseError(int code, std::string message, std::string_view statement);

    int code() const { return code_; }                       ///< `sqlite3_errcode`
    const std::string& message() const { return message_; }  ///< `sqlite3_errmsg`

  private:
    int code_;
    std::string message_;
};
}  // namespace ombrix
