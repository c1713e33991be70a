// A lock between processes, held on an empty file. It ends with the object and with the process, so
// a process that is killed leaves no lock.
#pragma once

#include <chrono>
#include <optional>
#include <string>

namespace ombrix {

class FileLock {
  public:
    /// Takes the lock of the file at `path`, which is made when it is missing; waits for at most
    /// `patience` while another process holds it, and then gives nothing. Throws `Files::Error`
    /// when the file cannot be made or opened; a link at `path` is not followed.
    static std::optional<FileLock> take(const std::string& path,
                                        std::chrono::milliseconds patience);
    ~FileLock();
    FileLock(FileLock&& other) noexcept;
    FileLock& operator=(FileLock&&) = delete;

  private:
    explicit FileLock(int descriptor) : descriptor_(descriptor) {}
    int descriptor_;
};
}  // namespace ombrix
