// Writing, at the level of the system. `Files.h` is what the other layers use for files.
#pragma once

#include <sys/types.h>

#include <string>
#include <string_view>

namespace ombrix::FileWriting {

/// The permissions to create a file with; the process's umask takes its part of them.
inline constexpr mode_t readWriteByUmask = 0666;

/// Writes all of `bytes`; 0, or the system's error. Waits when a pipe is full, even if its reader
/// made it non-blocking.
int writeAll(int descriptor, std::string_view bytes);

/// Flushes the names in a folder to disk, as far as the file system can; "" is the working
/// directory.
void flushFolder(const std::string& folder);
}  // namespace ombrix::FileWriting
