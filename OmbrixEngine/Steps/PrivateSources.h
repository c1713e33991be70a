// What a memory file still says of meetings that became private after it was written. The region
// names its sources by title and day, so that is how they are known.
#pragma once

#include <map>
#include <set>
#include <string>
#include <string_view>

#include "OmbrixEngine/Workspace/EngineWorkspace.h"

namespace ombrix {

class PrivateSources {
  public:
    /// Of the landed meetings that are private (`EngineWorkspace::isPrivate`). A title and a day
    /// that another meeting has, too, stand for that one.
    explicit PrivateSources(EngineWorkspace& workspace);

    /// True when the text names one of them: "[Weekly, 2026-08-18]". Linear.
    bool areIn(std::string_view text) const;
    /// The text without the lines that do.
    std::string without(std::string_view text) const;

  private:
    std::map<std::string, std::set<std::string>, std::less<>> titles_;  // by day
};
}  // namespace ombrix
