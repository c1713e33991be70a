// The card for a call: what a model is asked about the people the user is going to meet, and the
// file in "Before" that its answer becomes.
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "OmbrixEngine/Changes/ChangeSet.h"
#include "OmbrixEngine/Protocol/Give.h"
#include "OmbrixEngine/Steps/Entities.h"

namespace ombrix {

/// What the caller says about the call.
struct UpcomingCall {
    std::string people{};  ///< names or keys, with commas between them
    std::string title{};
    std::string time{};                   ///< an instant, or the time on the machine's clock
    std::optional<std::string> thread{};  ///< else the one that these people share, if any
};

class BeforeStep {
  public:
    /// People whom the meetings do not know, and private ones, are left out with a warning. Throws
    /// `CLIError` when nobody is left, and for a title or a time that cannot be read.
    BeforeStep(EngineWorkspace& workspace, const UpcomingCall& call);

    const BeforeInput& input() const { return input_; }
    const CanonicalInput& question() const { return question_; }
    /// The card's path, inside the transcripts folder.
    const std::string& path() const { return path_; }
    /// The people that the card is about, as they are shown.
    const std::vector<std::string>& people() const { return people_; }

    /// Plans the card. One that says the same keeps its time. A file of another kind under its name
    /// is left alone.
    void plan(ChangeSet& changes, const GivenAnswer& answer, const BeforeOutput& output) const;

  private:
    std::vector<MemoryEntity> resolve(std::string_view names);
    std::optional<MemoryEntity> sharedThread(const std::vector<MemoryEntity>& people);
    BeforeEntityText shown(const MemoryEntity& entity);

    EngineWorkspace& workspace_;
    std::string title_;
    Instant start_{};
    std::vector<std::string> people_;
    std::optional<std::string> thread_;
    BeforeInput input_;
    CanonicalInput question_;
    std::string path_;
};
}  // namespace ombrix
