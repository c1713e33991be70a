// The files that one command writes, in the order in which they are written. Each is written whole
// or not at all, so a process that is killed leaves whole files; commands put the file that the
// others follow from first, and `refresh` makes the others from it. What stands in the way of a
// file is looked for before the first one is written.
#pragma once

#include <functional>
#include <optional>
#include <set>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "OmbrixCLI/CLIError.h"
#include "OmbrixEngine/Workspace/TranscriptsFolder.h"

namespace ombrix {

class ChangeSet {
  public:
    explicit ChangeSet(const TranscriptsFolder& folder) : folder_(folder) {}

    /// The new text of a file whose bytes are `existing`, or nothing when there is no file. Nothing
    /// leaves the file alone. Called again when somebody else changes the file in between, so it
    /// depends on nothing else that changes.
    using Make =
        std::function<std::optional<std::string>(const std::optional<std::string>& existing)>;

    /// Paths are inside the transcripts folder.
    void rewrite(std::string path, Make make);
    /// The same for a file that is a copy of `original`: it is left out together with that one.
    void rewriteCopy(std::string_view original, std::string path, Make make);
    void write(std::string path, std::string text);
    void remove(std::string path);

    /// A file that is there from before the first change until after the last: a process that is
    /// killed in between leaves it. It counts as no change.
    void whileUnfinished(std::string path, std::string text);

    /// Throws `CLIError` when a file that would change cannot be written: it leads out of the
    /// folder, is no regular file, or it or its folder is read-only.
    void requireNoObstacle() const;
    /// Leaves such files out instead; a sentence for each.
    std::vector<std::string> leaveOutObstacles();

    /// Does it all; the paths whose content changed. A file that has its new content already is not
    /// touched. In the folders of the files it removes what processes left that were killed there
    /// more than an hour ago. Throws as `requireNoObstacle` before anything is written; also
    /// `CLIError` when writing fails, and the files before that are written then.
    std::vector<std::string> apply() const;
    /// Removes such files in one more folder.
    void tidy(std::string folder) { folders_.insert(std::move(folder)); }

    struct Difference {
        std::string path, diff;
        bool operator==(const Difference&) const = default;
    };
    /// What `apply` would change, as unified diffs. Writes nothing. Throws as `requireNoObstacle`.
    std::vector<Difference> differences() const;

  private:
    struct File {
        std::string path;
        Make make{};  ///< nothing for a file to remove
        std::string original{};
    };
    std::optional<CLIError> obstacle(const File& file) const;
    bool apply(const File& file, const std::function<void()>& beforeChange) const;
    void removeAbandonedFiles() const;

    const TranscriptsFolder& folder_;
    std::vector<File> files_;
    std::optional<File> unfinished_;
    std::set<std::string, std::less<>> folders_;
};
}  // namespace ombrix
