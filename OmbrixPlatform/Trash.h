// The desktop's own trash, from which a person can bring a file back.
#pragma once

#include <stdexcept>
#include <string>

namespace ombrix::Trash {

/// What the desktop said; the message names the path.
class Error : public std::runtime_error {
  public:
    using std::runtime_error::runtime_error;
};

/// Moves a file there. Throws `Error`; the file is then where it was.
void move(const std::string& path);
}  // namespace ombrix::Trash
