// A folder of transcripts: which of its files may be transcripts, and the order they are listed in.
// Whoever needs only names asks for `paths`; `TranscriptReader` then reads a frontmatter or a whole
// file of them; `LibrarySearch` answers questions.
#pragma once

#include <algorithm>
#include <cstddef>
#include <functional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "OmbrixMarkdownKit/Search/AnswerScope.h"

namespace ombrix {

/// A transcript as a list of meetings shows it: its path and some fields of its frontmatter.
struct ListedTranscript {
    std::string path;
    std::string title;
    std::string date;
    std::string startedAt;
    std::vector<std::string> participants;
    bool operator==(const ListedTranscript&) const = default;
};

struct TranscriptLibrary {
    std::string folder;
    /// True for the standardised path of a Markdown file that never counts as a transcript,
    /// whatever it says of itself. Empty: every file may count.
    std::function<bool(std::string_view path)> excludes{};

    /// `folder` as the paths below begin: absolute and standardised.
    std::string root() const;

    /// The paths, standardised, of the files below `folder` that may be transcripts: those with the
    /// extension "md" in any case that are not excluded. Opens none. In no particular order, but
    /// the files of one folder together. A reader of `Files::From::walk` may read them.
    std::vector<std::string> paths() const;

    /// The transcripts in `LibraryOrder`, with their paths as ids. A file that
    /// `TranscriptReader::document` does not read is left out without a message. Holds the whole
    /// library in memory; `LibrarySearch` answers questions without that.
    std::vector<IdentifiedDocument> scan() const;
};

/// Calls `take` with each of the files that is a transcript, by what `TranscriptReader::header`
/// reads of it: a small part of what `scan` reads and holds. One call at a time, but on several
/// threads, in no particular order. The paths are those of `TranscriptLibrary::paths`.
void listTranscripts(std::vector<std::string> paths,
                     const std::function<void(ListedTranscript)>& take);

/// The order of a library: the latest start first, then the greater id. Two entries never tie.
struct LibraryOrder {
    std::string_view start;  ///< of `startOf`
    std::string_view id;
    /// True when this one comes first.
    bool operator<(const LibraryOrder& other) const {
        const int order = start.compare(other.start);
        return order != 0 ? order > 0 : id > other.id;
    }
};

/// When a meeting started; its day when that is all that is known.
inline const std::string& startOf(const std::string& startedAt, const std::string& date) {
    return startedAt.empty() ? date : startedAt;
}
inline const std::string& startOf(const TranscriptDocument& document) {
    return startOf(document.startedAt, document.date);
}

/// Sorts by the `LibraryOrder` that `orderOf` gives of an element, as views of it. Elements may be
/// large: each is moved once.
template <typename Element, typename OrderOf>
void sortNewestFirst(std::vector<Element>& elements, OrderOf orderOf) {
    std::vector<std::pair<LibraryOrder, std::size_t>> places;
    places.reserve(elements.size());
    for (const Element& element : elements) places.emplace_back(orderOf(element), places.size());
    std::ranges::sort(places, [](const auto& a, const auto& b) { return a.first < b.first; });
    for (std::size_t start = 0; start < places.size(); ++start) {
        if (places[start].second == start) continue;
        // Each place gets the element that belongs there, until the circle is closed.
        Element first = std::move(elements[start]);
        std::size_t at = start;
        for (std::size_t from; (from = std::exchange(places[at].second, at)) != start; at = from)
            elements[at] = std::move(elements[from]);
        elements[at] = std::move(first);
    }
}

/// The same of documents.
void sortNewestFirst(std::vector<IdentifiedDocument>& documents);
}  // namespace ombrix
