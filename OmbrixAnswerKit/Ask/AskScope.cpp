#include "OmbrixAnswerKit/Ask/AskScope.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>

#include "OmbrixMarkdownKit/Search/SubstringSearch.h"

namespace ombrix::AskContext {
namespace {

bool isGiven(const std::optional<std::string>& text) { return text && !text->empty(); }
}  // namespace

bool inFolder(const AskMeeting& meeting, std::string_view folder) {
    if (folder.empty()) return true;
    if (folder == unfiledFolderName) return meeting.folder.empty();
    return !meeting.folder.empty() && AnswerScope::pathIsInFolder(meeting.folder, folder);
}

bool admits(const AnswerScope& scope, const AskMeeting& meeting) {
    if (scope.meetingIDs && !scope.meetingIDs->contains(meeting.id)) return false;
    if (isGiven(scope.participant) &&
        std::ranges::none_of(meeting.participants, [&](const std::string& name) {
            return SubstringSearch::termMatches(name, *scope.participant);
        })) {
        return false;
    }
    if (isGiven(scope.folder) && !inFolder(meeting, *scope.folder)) return false;
    if (isGiven(scope.dateFrom) && meeting.date < *scope.dateFrom) return false;
    return !isGiven(scope.dateTo) || meeting.date <= *scope.dateTo;
}

std::vector<AskMeeting> apply(const AnswerScope& scope, std::span<const AskMeeting> meetings) {
    std::vector<AskMeeting> kept;
    for (const AskMeeting& meeting : meetings) {
        if (scope.lastN && static_cast<std::int64_t>(kept.size()) >= *scope.lastN) break;
        if (admits(scope, meeting)) kept.push_back(meeting);
    }
    return kept;
}
}  // namespace ombrix::AskContext
