// A meeting as asks and the key see it: what its file says of it without what was said there.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "OmbrixMarkdownKit/Library/TranscriptLibrary.h"

namespace ombrix {

struct AskMeeting {
    std::string id;  ///< what it is called by in its pool: the path of its file
    std::string title;
    std::string date;   ///< "YYYY-MM-DD", as text; empty when unknown
    std::string start;  ///< ISO 8601, as text, for the order within a day; empty when unknown
    std::vector<std::string> participants;
    std::string folder;  ///< below the transcripts folder: "Acme/Weekly"; empty for a file in it

    /// The meetings of a transcripts folder, in its order; see `listTranscripts`.
    static std::vector<AskMeeting> all(const TranscriptLibrary& library);

    /// The folder of `path` below `root`: "Acme" of "/r/Acme/a.md" in "/r" or "/r/". Empty for a
    /// file in `root` itself and for a path that is not below it. Both are standardised paths.
    static std::string folderOf(std::string_view path, std::string_view root);

    /// The meetings with the latest date first, of one date the latest start; ties stay in order.
    static std::vector<AskMeeting> newestFirst(std::vector<AskMeeting> meetings);

    bool operator==(const AskMeeting&) const = default;
};
}  // namespace ombrix
