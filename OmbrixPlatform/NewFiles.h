// Creates many files, none of which ever has its name before all of its bytes are on disk, and none
// of which replaces anything. Flushing them together costs a fraction of flushing them one by one.
// A process that is killed leaves whole files or none; on most file systems nothing else remains,
// on the others (those without unnamed files) hidden files named ".ombrix-...tmp".
#pragma once

#include <cstddef>
#include <memory>
#include <set>
#include <string>
#include <string_view>
#include <vector>

#include "OmbrixPlatform/Files.h"
#include "OmbrixPlatform/TemporaryName.h"

namespace ombrix {

class NewFiles {
  public:
    /// How many files should be waiting at most. Each keeps a descriptor open, so it is at most
    /// half of what the process may open.
    static std::size_t mostWaiting();

    struct Failure {
        std::string path;
        Files::Error error;
    };

    NewFiles() = default;
    NewFiles(const NewFiles&) = delete;
    NewFiles& operator=(const NewFiles&) = delete;
    /// What has not been committed is discarded. The names that were given are flushed to disk.
    ~NewFiles();

    /// Writes the bytes of a file that will be at `path`, whose folder exists. Throws
    /// `Files::Error`; then nothing is waiting for that path.
    void add(const std::string& path, std::string_view bytes);
    std::size_t waiting() const { return files_.size(); }
    /// Takes back the last `count` files that were added and are waiting.
    void discardLast(std::size_t count);

    /// Flushes the waiting files and then gives them their names, in the order they were added. The
    /// files that failed, each unnamed: the disk was full after all, or something has that name.
    std::vector<Failure> commit();

  private:
    struct Waiting {
        int descriptor = -1;
        std::string path;
        std::unique_ptr<TemporaryName> temporary;  ///< its name until then; null when it has none
        int error = 0;
    };
    static void discard(const Waiting& file);

    std::vector<Waiting> files_;
    std::set<std::string> folders_;  ///< those that have new names
};
}  // namespace ombrix
