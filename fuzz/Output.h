// What a command prints, for targets that run commands.
#pragma once

#include <fcntl.h>
#include <sys/mman.h>
#include <unistd.h>

#include <string>

#include "Law.h"

namespace ombrix::Fuzz {

/// Takes what this process prints to standard output, for good: libFuzzer reports on standard
/// error.
class Output {
  public:
    Output() { ::dup2(file_, STDOUT_FILENO); }
    std::string take() const {
        std::string text(static_cast<std::size_t>(::lseek(file_, 0, SEEK_END)), '\0');
        const ssize_t size = ::pread(file_, text.data(), text.size(), 0);
        law(size == static_cast<ssize_t>(text.size()), "what was printed can be read");
        law(::ftruncate(file_, 0) == 0 && ::lseek(file_, 0, SEEK_SET) == 0, "and forgotten");
        return text;
    }

  private:
    int file_ = ::memfd_create("standard output", MFD_CLOEXEC);
};
}  // namespace ombrix::Fuzz
