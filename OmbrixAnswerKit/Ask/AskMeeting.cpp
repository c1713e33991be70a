#include "OmbrixAnswerKit/Ask/AskMeeting.h"

#include <algorithm>
#include <utility>

#include "OmbrixPlatform/Paths.h"

namespace ombrix {

std::vector<AskMeeting> AskMeeting::all(const TranscriptLibrary& library) {
    const std::string root = library.root();
    auto paths = library.paths();
    std::vector<AskMeeting> meetings;
    meetings.reserve(paths.size());
    listTranscripts(std::move(paths), [&](ListedTranscript transcript) {
        std::string folder = folderOf(transcript.path, root);
        meetings.push_back({.id = std::move(transcript.path),
                            .title = std::move(transcript.title),
                            .date = std::move(transcript.date),
                            .start = std::move(transcript.startedAt),
                            .participants = std::move(transcript.participants),
                            .folder = std::move(folder)});
    });
    sortNewestFirst(meetings, [](const AskMeeting& meeting) {
        return LibraryOrder{startOf(meeting.start, meeting.date), meeting.id};
    });
    return meetings;
}

std::string AskMeeting::folderOf(std::string_view path, std::string_view root) {
    if (root.ends_with('/')) root.remove_suffix(1);
    if (!path.starts_with(root) || !path.substr(root.size()).starts_with('/')) return {};
    const auto below = path.substr(root.size() + 1);
    return std::string(Paths::parent(below));
}

std::vector<AskMeeting> AskMeeting::newestFirst(std::vector<AskMeeting> meetings) {
    std::ranges::stable_sort(meetings, [](const AskMeeting& a, const AskMeeting& b) {
        return a.date != b.date ? a.date > b.date : a.start > b.start;
    });
    return meetings;
}
}  // namespace ombrix
