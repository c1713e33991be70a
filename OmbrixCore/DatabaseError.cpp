#include "OmbrixCore/DatabaseError.h"

#include <utility>

namespace ombrix {

DatabaseError::DatabaseError(int code, std::string message, std::string_view statement)
    : std::runtime_error(message + " (" + std::string(domain) + " error " + std::to_string(code) +
                         ": " + std::string(statement) + ")"),
      code_(code),
      message_(std::move(message)) {}
}  // namespace ombrix
