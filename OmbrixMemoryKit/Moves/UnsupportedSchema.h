// A file names another schema than the one that its reader knows.
#pragma once

#include <stdexcept>
#include <string>
#include <utility>

namespace ombrix {

class UnsupportedSchema : public std::runtime_error {
  public:
    explicit UnsupportedSchema(std::string found)
        : std::runtime_error("unsupported schema \"" + found + "\""), found_(std::move(found)) {}
    const std::string& found() const { return found_; }

  private:
    std::string found_;
};
}  // namespace ombrix
