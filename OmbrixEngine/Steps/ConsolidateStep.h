// Consolidating one person or thread: what a model is asked, and the memory file that its answer
// becomes.
#pragma once

#include <string>
#include <string_view>

#include "OmbrixEngine/Changes/ChangeSet.h"
#include "OmbrixEngine/Protocol/Give.h"
#include "OmbrixEngine/Steps/Entities.h"

namespace ombrix {

class ConsolidateStep {
  public:
    /// Throws `CLIError` for an entity that is not known or private, that the meetings say nothing
    /// about, or whose memory file is damaged.
    ConsolidateStep(EngineWorkspace& workspace, std::string_view argument);

    const MemoryEntity& entity() const { return entity_; }
    const ConsolidateInput& input() const { return input_; }
    const CanonicalInput& question() const { return question_; }
    /// The memory file's path, inside the transcripts folder.
    const std::string& path() const { return path_; }

    /// True when the memory file says what this answer says: the answer was given before.
    bool isWritten(const ConsolidateOutput& output) const;
    /// Plans the memory file. One that says the same keeps its time.
    void plan(ChangeSet& changes, const GivenAnswer& answer, const ConsolidateOutput& output) const;

  private:
    std::string newPath() const;

    EngineWorkspace& workspace_;
    MemoryEntity entity_;
    const MemoryFileEntry* file_ = nullptr;
    ConsolidateInput input_;
    CanonicalInput question_;
    std::string path_;
};
}  // namespace ombrix
