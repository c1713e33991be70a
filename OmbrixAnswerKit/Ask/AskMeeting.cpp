#include "OmbrixAnswerKit/Ask/AskMeeting.h"

#include <algorithm>
#include <utility>

#include "OmbrixPlatform/Paths.h"

namespace ombrix {

AskMeeting AskMeeting::of(const IdentifiedDocument& transcript, std::string_view root) {
    const TranscriptDocument& document = transcript.document;
    return {.id = transcript.id,
            .title = document.title,
            .date = document.date,
            .start = document.startedAt,
            .participants = document.participants,
            .folder = folderOf(transcript.id, root)};
}

std::vector<AskMeeting> AskMeeting::all(const TranscriptLibrary& library) {
    const std::string root = library.root();
    std::vector<AskMeeting> meetings;
    for (const auto& transcript : library.headers()) meetings.push_back(of(transcript, root));
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
