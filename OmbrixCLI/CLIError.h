// The failures that a command reports to its caller as JSON. Every other failure becomes text on
// standard error.
#pragma once

#include <exception>
#include <optional>
#include <string>

namespace ombrix {

/// The `error` of a failure envelope.
struct ErrorBody {
    std::string code;
    std::string message;             ///< what went wrong, with which value
    std::optional<std::string> fix;  ///< what to do about it
    bool operator==(const ErrorBody&) const = default;
};

class CLIError : public std::exception {
  public:
    enum class Case { invalidInput, notFound, databaseUnavailable, databaseError, appUnreachable };

    CLIError(Case which, std::string message, std::optional<std::string> fix = std::nullopt);

    static CLIError invalidInput(std::string message, std::optional<std::string> fix = {});
    static CLIError notFound(std::string message, std::optional<std::string> fix = {});
    static CLIError databaseUnavailable(std::string message, std::optional<std::string> fix = {});
    static CLIError databaseError(std::string message, std::optional<std::string> fix = {});
    static CLIError appUnreachable(std::string message, std::optional<std::string> fix = {});

    /// The code is "invalid_input", "not_found", "database_unavailable", "database_error" or
    /// "app_unreachable".
    const ErrorBody& errorBody() const { return body_; }
    /// 4, 3, 5, 6 and 7 in the order of the cases.
    int exitStatus() const;
    const char* what() const noexcept override { return body_.message.c_str(); }

  private:
    Case case_;
    ErrorBody body_;
};

/// A command did what it could and printed its envelope, whose warnings name what it passed over.
/// It throws this as its last act; the program then ends with `exitStatus`.
class IncompleteWork : public std::exception {
  public:
    static constexpr int exitStatus = 2;
    const char* what() const noexcept override { return "The warnings name what was passed over."; }
};
}  // namespace ombrix
