// Opening for reading, at the level of the system: descriptors that close themselves, long paths,
// and regular files alone. `Files.h` is what the other layers use.
#pragma once

#include <sys/stat.h>

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <utility>

namespace ombrix::OpenFile {

/// A descriptor, closed at the end; -1 for none.
class Descriptor {
  public:
    explicit Descriptor(int fd = -1) : fd_(fd) {}
    ~Descriptor() { close(); }
    Descriptor(Descriptor&& other) noexcept : fd_(std::exchange(other.fd_, -1)) {}
    Descriptor& operator=(Descriptor&& other) noexcept {
        close();
        fd_ = std::exchange(other.fd_, -1);
        return *this;
    }

    int get() const { return fd_; }
    bool isOpen() const { return fd_ >= 0; }
    /// False when writes were lost; some file systems report that only here.
    bool close();

  private:
    int fd_;
};

/// False for a path that contains a zero byte; the system would cut it there.
inline bool isPath(std::string_view path) { return path.find('\0') == std::string_view::npos; }

/// A path as the system takes it: one too long for a call is reached from a folder opened on the
/// way. Keeps a view of the path. Both functions return -1 on failure and `errno` says why.
class Reached {
  public:
    explicit Reached(const std::string& path);
    int open(int flags) const;
    int stat(struct stat& facts) const;

  private:
    int folder() const;
    const char* name() const { return rest_.data(); }  // the end of a string, with its zero

    std::string_view rest_;
    Descriptor folder_;
    int error_ = 0;
};

/// Opens a regular file of at most `largest` bytes and tells its facts. Opening a pipe can block,
/// and opening a device can have effects, so the kind is checked before opening, and again on what
/// was opened. When the descriptor is not open, `errno` says why.
Descriptor regular(const std::string& path, std::size_t largest, struct stat& facts);

/// Opens files that were just seen to be regular, one folder after the other. Keeps the folder of
/// the last one open, so that the system need not go the whole way to the next, and does not ask
/// for the kind of a file before opening it. Paths are absolute. When a descriptor is not open,
/// `errno` says why.
class Neighbours {
  public:
    /// What is at `path`, whatever it is by now.
    Descriptor open(const std::string& path);
    /// The same if it is still regular and has at most `largest` bytes, and its facts.
    Descriptor regular(const std::string& path, std::size_t largest, struct stat& facts);

  private:
    std::string path_;
    Descriptor folder_;
};

/// Reads `size` bytes, or fewer when the file ends; nothing on an error.
std::optional<std::size_t> readUpTo(const Descriptor& file, char* into, std::size_t size);
}  // namespace ombrix::OpenFile
