// Names of files that must not outlive the process: the hidden file that becomes another one, the
// request that the desktop application reads. When a person presses Ctrl-C, or the session ends,
// the files of all names that exist then are removed before the process dies of the signal.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace ombrix {

/// While it exists, a signal removes the file of this name, if there is one. Make it before the
/// file; destroying it removes nothing. Beyond 1024 names at once a signal does not know them.
class TemporaryName {
  public:
    explicit TemporaryName(std::string path);
    ~TemporaryName();
    TemporaryName(TemporaryName&& other) noexcept = delete;
    TemporaryName& operator=(TemporaryName&&) = delete;

    const std::string& path() const { return path_; }

    /// A new hidden name in `folder`: ".ombrix-", a UUID in capitals, ".tmp". Who writes the file
    /// holds its lock meanwhile (`flock`), so AbandonedFiles.h knows whose writers are dead.
    static std::string in(std::string_view folder);
    /// True for a name, without its folder, of exactly this form.
    static bool isOne(std::string_view name);

    /// Lets SIGINT, SIGTERM and SIGHUP remove the files first; a signal that the parent told the
    /// process to ignore stays ignored. For `main`.
    static void removeOnSignals();

  private:
    std::string path_;
    std::size_t slot_;
};
}  // namespace ombrix
