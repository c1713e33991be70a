// The files that one command writes, in the order in which they are written. Each is written whole
// or not at all, so a process that is killed leaves whole files; commands put the file that the
// others follow from first, and `refresh` makes the others from it.
#pragma once

#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

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
    void write(std::string path, std::string text);
    void remove(std::string path);

    /// A file that is there from before the first change until after the last: a process that is
    /// killed in between leaves it. It counts as no change.
    void whileUnfinished(std::string path, std::string text);

    /// Does it all; the paths whose content changed. A file that has its new content already is not
    /// touched. Throws `CLIError` for a file that cannot be read or written; the files before it
    /// are written then.
    std::vector<std::string> apply() const;

    struct Difference {
        std::string path, diff;
        bool operator==(const Difference&) const = default;
    };
    /// What `apply` would change, as unified diffs. Writes nothing.
    std::vector<Difference> differences() const;

  private:
    struct File {
        std::string path;
        Make make{};  ///< nothing for a file to remove
    };
    bool apply(const File& file, const std::function<void()>& beforeChange) const;

    const TranscriptsFolder& folder_;
    std::vector<File> files_;
    std::optional<File> unfinished_;
};
}  // namespace ombrix
