// The next moves in a transcripts folder: reads the sidecars, state records, next-move files and
// transcripts, which `MoveLibrary` joins. Reads nothing outside the folder, changes nothing, and
// passes over every file that it cannot read.
#pragma once

#include <functional>
#include <map>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "OmbrixMemoryKit/Moves/MoveLibrary.h"
#include "OmbrixPlatform/Files.h"

namespace ombrix {

class MovesReader {
  public:
    /// Reads all but the transcripts. The Memory folder is a name inside `folder`.
    MovesReader(std::string folder, std::string_view memoryFolder);

    /// Calls `visit` for each move, in the order of `MoveLibrary::resolve`, until it returns false.
    /// Reads a meeting's transcript when its moves come, so that memory holds a few transcripts and
    /// not the library. A reader gives its moves once.
    void eachMove(
        MoveLibrary::Detail detail,
        const std::function<bool(MoveLibrary::MoveInState move, const MoveSources&)>& visit);

    /// All moves of a folder, in that order.
    static std::vector<ResolvedMove> resolved(std::string folder, std::string_view memoryFolder);

  private:
    /// Where a meeting's transcript is, as one sidecar has it.
    struct Place {
        std::string relativePath, title, date;
    };
    void readSidecars();
    void readRecords();
    void readCorrections(std::string_view memoryFolder);
    /// Makes sure that the meeting is in `sources_`, if its transcript can be read.
    void load(const std::string& meetingKey);
    std::shared_ptr<const MoveSource> source(const std::string& meetingKey, const Place& place);

    std::string folder_;
    std::string realFolder_;  ///< without links; empty when there is no such folder
    Files::Reader files_;
    std::vector<PrepareSidecar> sidecars_;
    std::map<std::string, std::vector<Place>, std::less<>> places_;  ///< in the order of the files
    MoveLibrary::Knowledge known_;
    MoveSources sources_;  ///< those read last
};
}  // namespace ombrix
