// The sentence that says which meetings an answer drew on, and how deeply.
//
//   "Read Weekly sync, May 3, in full. Notes from 2 more."
//   "From the transcripts of A, B and 1 more."
//
// Every surface shows these words, and nothing else words them.
#pragma once

#include <cstddef>
#include <optional>
#include <set>
#include <span>
#include <string>

#include "OmbrixAnswerKit/Grounding/AnswerContextPack.h"

namespace ombrix {

/// A meeting that a note can name; identified by its path.
struct CoverageMeeting {
    std::string path;  ///< of its file; in a pack the meeting's id
    std::string title;
    std::string date;  ///< "YYYY-MM-DD"; any other text is not told
    bool operator==(const CoverageMeeting&) const = default;
};

namespace AnswerCoverageNote {

/// The most meetings that a sentence names.
inline constexpr std::size_t namedCap = 2;

/// Of the meetings that were sent, those in `readPaths` were read in full, of the others the notes.
/// Nothing when none was sent.
std::optional<std::string> line(std::span<const CoverageMeeting> sent,
                                const std::set<std::string>& readPaths);

/// What a pack gave: the transcript of a meeting with turns, else its notes or action items; a
/// meeting with neither is not told. Nothing when none is left.
std::optional<std::string> line(std::span<const AnswerContextPack::Meeting> sentPack);
}  // namespace AnswerCoverageNote
}  // namespace ombrix
