// The transcripts folder as the only place that is read and written. Every path is relative to it
// and is checked: one that leads out, by ".." or by a link on the way, is an error and is not
// opened.
#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace ombrix {

class TranscriptsFolder {
  public:
    /// The largest file that is read whole.
    static constexpr std::size_t largestFile = std::size_t{256} << 20U;
    /// How many files of a folder pay for one worker: fewer are read sooner than a thread is made.
    static constexpr std::size_t filesPerWorker = 32;

    /// `path` may itself be a link to the folder. Throws `CLIError` when it is no folder.
    explicit TranscriptsFolder(const std::string& path);

    /// Absolute and without links.
    const std::string& path() const { return path_; }

    /// The absolute path of `relative`, which need not exist, without links. Throws `CLIError` when
    /// it leads out of the folder.
    std::string inside(std::string_view relative) const;

    /// The bytes of a file; nothing when there is none. Throws `CLIError` when it leads out, is no
    /// regular file, cannot be read or holds more than `largest` bytes.
    std::optional<std::string> bytes(std::string_view relative,
                                     std::size_t largest = largestFile) const;

    /// The relative paths of the files in a folder whose names end in `extension`, hidden ones too,
    /// in the order of their bytes; links that lead out or nowhere are left out. None without that
    /// folder. Throws `CLIError` when the folder leads out.
    std::vector<std::string> files(std::string_view relative, std::string_view extension) const;

    /// True when what is at this absolute path is in the folder, following links.
    bool holds(const std::string& absolute) const;
    /// The absolute path of a file that `files` or a walk found.
    std::string absolute(std::string_view relative) const;
    /// An absolute path below the folder as a relative one.
    std::string relative(std::string_view absolute) const;

  private:
    std::string path_;
};
}  // namespace ombrix
