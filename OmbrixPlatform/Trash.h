// The desktop's Trash, from which a person can restore a file.
#pragma once

#include <stdexcept>
#include <string>

namespace ombrix::Trash {

/// The message names the path and the desktop's reason.
class Error : public std::runtime_error {
  public:
    using std::runtime_error::runtime_error;
};

/// Moves a file to the Trash. Throws `Error`; then the file has not been moved.
void move(const std::string& path);
}  // namespace ombrix::Trash
