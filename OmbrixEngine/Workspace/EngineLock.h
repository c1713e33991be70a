// One program at a time writes what the engine owns: a lock on ".ombrix/engine/lock".
#pragma once

#include "OmbrixEngine/Workspace/TranscriptsFolder.h"
#include "OmbrixPlatform/FileLock.h"

namespace ombrix {

class EngineLock {
  public:
    /// Waits for two seconds while another program writes. Throws `CLIError` when it still does,
    /// and when the folder cannot be written.
    explicit EngineLock(const TranscriptsFolder& folder);
    /// Nothing when another program writes right now, or when the folder cannot be written.
    static std::optional<FileLock> tryNow(const TranscriptsFolder& folder);

  private:
    FileLock lock_;
};
}  // namespace ombrix
