// The names of transcripts in the folders that an import writes to, during one run. Each folder is
// listed once and each transcript read at most once, however many exports there are.
#pragma once

#include <cstddef>
#include <map>
#include <optional>
#include <set>
#include <string>
#include <string_view>
#include <unordered_map>
#include <unordered_set>
#include <vector>

#include "OmbrixPlatform/Files.h"

namespace ombrix::TranscriptImportRunner {

/// Which transcript: the meeting at `index`, from 1, of `count`. An export with one is "0 of 0".
struct MeetingNumber {
    std::size_t index = 0;
    std::size_t count = 0;
};

class ImportDestinations {
  public:
    struct Place {
        std::string path;
        bool isTaken = false;  ///< by something that is not the export's
        bool exists = false;   ///< not taken: the transcript of an earlier import
    };
    /// The first of the fifty names that is free or whose file names `source` and is not claimed,
    /// else the last one, taken.
    Place place(const std::string& source, const std::string& folder, MeetingNumber number = {});

    /// The transcripts in `folder` that an earlier import of `source` with several meetings wrote
    /// and that are not claimed: those with the least count, by their index, of each the first.
    struct Numbered {
        std::size_t index = 0;
        std::size_t count = 0;
        std::string path;
    };
    std::vector<Numbered> earlierMeetings(const std::string& source, const std::string& folder);

    /// From now on `path` is taken: it belongs to an export that this run is done with.
    void claim(const std::string& path);
    /// The name is free again.
    void release(const std::string& path);

  private:
    using Names = std::set<std::string, std::less<>>;
    Names& names(const std::string& folder);
    bool belongsTo(const std::string& path, const std::string& source);
    std::vector<std::string> sourcesIn(const std::string& path);

    std::map<std::string, Names> folders_;
    /// The "imported_from:" lines of files, without their line ends.
    std::unordered_map<std::string, std::vector<std::string>> sources_;
    std::unordered_set<std::string> claimed_;
    Files::Reader reader_;
};
}  // namespace ombrix::TranscriptImportRunner
