// Preparing one landed meeting: what a model is asked, and the sidecar that its answer becomes,
// which `ombrix-cli moves` reads.
#pragma once

#include <string>

#include "OmbrixEngine/Changes/ChangeSet.h"
#include "OmbrixEngine/Protocol/Give.h"
#include "OmbrixEngine/Workspace/EngineWorkspace.h"
#include "OmbrixMemoryKit/Moves/PrepareInput.h"

namespace ombrix {

class PrepareStep {
  public:
    /// `landCommand` asks for the record that this step needs. Throws `CLIError` for a meeting that
    /// is never asked about, is not landed, or whose transcript was edited since.
    PrepareStep(EngineWorkspace& workspace, const TranscriptEntry& entry,
                const std::string& landCommand);

    const PrepareInput& input() const { return input_; }
    const CanonicalInput& question() const { return question_; }

    /// Throws `RefusedAnswer` for an answer that cites turns that were not sent, or serves
    /// commitments that are not the user's.
    void check(const PrepareOutput& output) const;
    /// Plans the sidecar, under the name that the meeting's sidecar has now. An equal one keeps its
    /// time. The path.
    std::string plan(ChangeSet& changes, const GivenAnswer& answer, PrepareOutput output) const;

  private:
    EngineWorkspace& workspace_;
    const TranscriptEntry& entry_;
    std::string title_, date_, fingerprint_;
    PrepareInput input_;
    CanonicalInput question_;
};
}  // namespace ombrix
