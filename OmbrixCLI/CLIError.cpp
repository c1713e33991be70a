#include "OmbrixCLI/CLIError.h"

#include <array>
#include <cstddef>
#include <utility>

namespace ombrix {
namespace {

struct Row {
    const char* code;
    int exitStatus;
};

/// In the order of `CLIError::Case`. Scripts test these codes and statuses.
constexpr std::array<Row, 5> rows{{
    {"invalid_input", 4},
    {"not_found", 3},
    {"database_unavailable", 5},
    {"database_error", 6},
    {"app_unreachable", 7},
}};

constexpr const Row& rowOf(CLIError::Case which) { return rows[static_cast<std::size_t>(which)]; }
}  // namespace

CLIError::CLIError(Case which, std::string message, std::optional<std::string> fix)
    : case_(which), body_{rowOf(which).code, std::move(message), std::move(fix)} {}

CLIError CLIError::invalidInput(std::string message, std::optional<std::string> fix) {
    return {Case::invalidInput, std::move(message), std::move(fix)};
}
CLIError CLIError::notFound(std::string message, std::optional<std::string> fix) {
    return {Case::notFound, std::move(message), std::move(fix)};
}
CLIError CLIError::databaseUnavailable(std::string message, std::optional<std::string> fix) {
    return {Case::databaseUnavailable, std::move(message), std::move(fix)};
}
CLIError CLIError::databaseError(std::string message, std::optional<std::string> fix) {
    return {Case::databaseError, std::move(message), std::move(fix)};
}
CLIError CLIError::appUnreachable(std::string message, std::optional<std::string> fix) {
    return {Case::appUnreachable, std::move(message), std::move(fix)};
}

int CLIError::exitStatus() const { return rowOf(case_).exitStatus; }
}  // namespace ombrix
