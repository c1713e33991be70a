// Files: read whole, write atomically, walk a folder. Only regular files are opened for reading; a
// pipe, a socket or a device is refused without being opened, whatever its name. A file that is
// missing or forbidden is one thing; a machine that runs out of memory or descriptors, or a disk
// that fails, is another: then whatever reads whole files or lists folders throws, so that none is
// passed over for it. Paths for reading may be longer than the system takes in one call.
#pragma once

#include <chrono>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <system_error>
#include <vector>

#include "OmbrixPlatform/OpenFile.h"

namespace ombrix::Files {

/// The system's error; the message names the operation and the path.
class Error : public std::system_error {
  public:
    Error(int code, std::string_view operation, std::string_view path);
};

bool exists(const std::string& path);
bool isDirectory(const std::string& path);
/// True also for a link to a regular file.
bool isRegular(const std::string& path);
/// When the content was last changed; nothing when there is nothing at `path`.
std::optional<std::chrono::sys_seconds> modified(const std::string& path);

/// What is at a path itself: a link is not followed.
struct Facts {
    bool isRegular = false, isLink = false;
    std::uint64_t size = 0;
    std::int64_t modified = 0;  ///< nanoseconds since 1970
    bool operator==(const Facts&) const = default;
};
/// Nothing when there is nothing at `path`, and when it cannot be asked.
std::optional<Facts> facts(const std::string& path);

/// The current user's home from the user database, not `$HOME`; "/" when there is none.
std::string homeDirectory();
/// The working directory. Throws `Error` when it was removed.
std::string workingDirectory();
/// `path` absolute, without ".", ".." and repeated "/". Throws `Error` for a relative path in a
/// working directory that was removed.
std::string standardised(std::string_view path);

/// No limit for the size of a file.
inline constexpr std::size_t unlimited = static_cast<std::size_t>(-1);

/// Where a reader's paths are from.
enum class From {
    anywhere,
    /// A `walk` that saw `Seen::regularFiles`, just before. A file takes fewer calls; what took its
    /// place since may be opened, and a pipe there read.
    walk,
};

/// Reads files one after the other into one buffer, which grows to the size of the largest.
class Reader {
  public:
    explicit Reader(From from = From::anywhere) : from_(from) {}

    /// The bytes of a regular file, valid until the next call; nothing when it is another kind of
    /// file, holds more than `largest` bytes or cannot be read. Throws `Error` for a shortage of
    /// memory or descriptors and for a failing disk.
    std::optional<std::string_view> read(const std::string& path, std::size_t largest = unlimited);
    /// The same for the first `count` bytes, or all when the file has fewer.
    std::optional<std::string_view> beginning(const std::string& path, std::size_t count);

  private:
    std::optional<std::string_view> read(const std::string& path, const OpenFile::Descriptor& file,
                                         std::size_t size);

    From from_;
    OpenFile::Neighbours neighbours_;
    std::unique_ptr<char[]> buffer_;  // not a string, which would fill it with zeros first
    std::size_t capacity_ = 0;
};

/// The bytes of a regular file. Throws `Error` when it cannot be read or holds more than `largest`.
std::string bytes(const std::string& path, std::size_t largest = unlimited);
/// The text of a regular file; nothing when it cannot be read, holds more than `largest` bytes or
/// is not valid UTF-8. Throws as `Reader::read`.
std::optional<std::string> text(const std::string& path, std::size_t largest = unlimited);

/// Calls `visit` for each line of a regular file, without its line feed; a file without bytes has
/// no line, nor is there one after the last line feed. The file is read piece by piece, so only the
/// longest line needs memory. A file that cannot be read, for whatever reason, has no lines; one
/// that can be read no further ends there.
void forEachLine(const std::string& path, const std::function<void(std::string_view line)>& visit);

/// What a walk sees.
enum class Seen {
    allFiles,      ///< everything that is not a folder
    regularFiles,  ///< and links to them
};

/// Calls `visit` for every file below `folder`, in no particular order, with a
/// path that starts with `folder`. Hidden files and folders (names that start with ".") are
/// skipped, and so are links to folders, broken links and folders below that may not be read. Not
/// recursive, so deep trees do not overflow the stack. Throws `Error` when `folder` itself cannot
/// be opened, and for a shortage of memory or descriptors or a failing disk anywhere.
void walk(const std::string& folder, const std::function<void(std::string path)>& visit,
          Seen seen = Seen::allFiles);

/// The names of everything in `folder`, hidden ones too, in ascending order of their bytes. None
/// when it is missing or may not be read. Throws `Error` for a shortage of memory or descriptors
/// and for a failing disk.
std::vector<std::string> names(const std::string& folder);

/// The path without links, "." and "..": absolute, of what exists. Nothing when it does not.
std::optional<std::string> realPath(const std::string& path);

/// Creates the folder and its missing parents. Throws `Error`.
void createDirectories(const std::string& path);

/// Writes a temporary file beside `path`, flushes it to disk and renames it to `path`. The
/// permissions of an existing file are kept. Throws `Error`; then an existing file is unchanged and
/// the temporary file is removed.
void writeAtomically(const std::string& path, std::string_view bytes);

/// The same, unless `stillWanted` returns false when all is written but the name: then nothing
/// changes and the result is false. So a file that somebody else changed is not replaced.
bool writeAtomically(const std::string& path, std::string_view bytes,
                     const std::function<bool()>& stillWanted);

/// True when the file existed and was removed. Never throws.
bool remove(const std::string& path);
}  // namespace ombrix::Files
