// Files: read whole, write atomically, walk a folder. A reader only ever opens regular files, so a
// pipe, a socket or a device that carries a promising name is refused without being opened.
#pragma once

#include <cstddef>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <system_error>

namespace ombrix::Files {

/// What the system said; the message names the path and the operation.
class Error : public std::system_error {
  public:
    Error(int code, std::string_view operation, std::string_view path);
};

bool exists(const std::string& path);
bool isDirectory(const std::string& path);

/// The current user's home by the user record, not by `$HOME`; "/" when there is none.
std::string homeDirectory();
/// The working directory; "/" when it cannot be told.
std::string workingDirectory();

/// A limit of this many bytes is none.
inline constexpr std::size_t unlimited = static_cast<std::size_t>(-1);

/// Reads many files into one buffer that grows to the largest of them and no farther.
class Reader {
  public:
    /// The bytes of a regular file, valid until the next call; nothing when it is another kind of
    /// file, holds more than `largest` bytes or cannot be read.
    std::optional<std::string_view> read(const std::string& path, std::size_t largest = unlimited);
    /// The same for the first `count` bytes, or all when the file has fewer.
    std::optional<std::string_view> beginning(const std::string& path, std::size_t count);

  private:
    std::optional<std::string_view> read(const std::string& path, std::size_t largest,
                                         std::size_t count);

    std::unique_ptr<char[]> buffer_;  // not a string: it would be filled before it is read into
    std::size_t capacity_ = 0;
};

/// The bytes of a regular file. Throws `Error` when it cannot be read or holds more than `largest`.
std::string bytes(const std::string& path, std::size_t largest = unlimited);
/// The text of a regular file; nothing when it cannot be read, holds more than `largest` bytes or
/// is not valid UTF-8.
std::optional<std::string> text(const std::string& path, std::size_t largest = unlimited);

/// Calls `visit` with the path (`folder` joined with what leads to it) of every file below `folder`
/// that is not a folder, in no order that a caller may rely on. Names that begin with "." are
/// skipped, folders among them with all they hold; a link to a folder is not entered. Folders that
/// cannot be read are passed over. Depth is bounded by the heap, not by the stack.
void walk(const std::string& folder, const std::function<void(std::string path)>& visit);

/// Creates the folder and those above it. Throws `Error`.
void createDirectories(const std::string& path);

/// Writes a temporary file beside `path`, flushes it to disk and renames it over `path`; an
/// existing file lends its permissions. On failure the old file stands, the temporary one is gone,
/// and `Error` is thrown.
void writeAtomically(const std::string& path, std::string_view bytes);

/// True when the file was there and is gone now. Never throws.
bool remove(const std::string& path);
}  // namespace ombrix::Files
