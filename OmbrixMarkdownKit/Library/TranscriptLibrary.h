// A folder of transcripts: which of its files may be transcripts, and the order they are listed in.
// Whoever needs only names asks for `paths`; `TranscriptReader` then reads a front matter or a
// whole file of them; `LibrarySearch` answers questions.
#pragma once

#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "OmbrixMarkdownKit/Search/AnswerScope.h"

namespace ombrix {

struct TranscriptLibrary {
    std::string folder;
    /// True for the standardised path of a Markdown file that never counts as a transcript,
    /// whatever it says of itself. Empty: every file may count.
    std::function<bool(std::string_view path)> excludes{};

    /// `folder` as the paths below begin: absolute and standardised.
    std::string root() const;

    /// The paths, standardised, of the files below `folder` that may be transcripts: those with the
    /// extension "md" in any case that are not excluded. Opens none. In no particular order.
    std::vector<std::string> paths() const;

    /// The transcripts in `LibraryOrder`, with their paths as ids. A file that
    /// `TranscriptReader::document` does not read is left out without a message. Holds the whole
    /// library in memory; `LibrarySearch` answers questions without that.
    std::vector<IdentifiedDocument> scan() const;

    /// The same with the frontmatter's fields alone, as `TranscriptReader::header` reads them: a
    /// small part of what `scan` reads and holds.
    std::vector<IdentifiedDocument> headers() const;
};

/// The order of a library: the latest start first, then the greater id. Two entries never tie.
struct LibraryOrder {
    std::string_view start;  ///< of `startOf`
    std::string_view id;
    /// True when this one comes first.
    bool operator<(const LibraryOrder& other) const {
        return start != other.start ? start > other.start : id > other.id;
    }
};

/// When the meeting started; its day when that is all the transcript tells.
const std::string& startOf(const TranscriptDocument& document);

/// Sorts by `LibraryOrder`.
void sortNewestFirst(std::vector<IdentifiedDocument>& documents);
}  // namespace ombrix
