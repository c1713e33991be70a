#include "OmbrixAnswerKit/Grounding/AnswerCoverageNote.h"

#include <vector>

#include "OmbrixAnswerKit/Ask/ShortDate.h"

namespace ombrix::AnswerCoverageNote {
namespace {

using Meetings = std::span<const CoverageMeeting>;

/// The short date when there is one meeting and it has one.
std::optional<std::string> onlyDate(Meetings meetings) {
    return meetings.size() == 1 ? shortDate(meetings.front().date) : std::nullopt;
}

/// "A, May 3", "A and B", "A, B and 3 more".
std::string phrase(Meetings meetings) {
    std::string names = meetings.front().title;
    if (const auto date = onlyDate(meetings)) return names + ", " + *date;
    if (meetings.size() == 1) return names;
    if (meetings.size() == 2) return names + " and " + meetings[1].title;
    for (const auto& meeting : meetings.subspan(1, namedCap - 1)) names += ", " + meeting.title;
    return names + " and " + std::to_string(meetings.size() - namedCap) + " more";
}

/// A date is set off on both sides.
std::string readClause(Meetings read) {
    return "Read " + phrase(read) + (onlyDate(read) ? ", in full." : " in full.");
}

/// " Notes from 2 more."; empty for none.
std::string notesTail(std::size_t count) {
    return count == 0 ? std::string() : " Notes from " + std::to_string(count) + " more.";
}

std::string notesOnly(Meetings meetings) { return "From the notes of " + phrase(meetings) + "."; }
}  // namespace

std::optional<std::string> line(std::span<const CoverageMeeting> sent,
                                const std::set<std::string>& readPaths) {
    std::vector<CoverageMeeting> read, rest;
    for (const auto& meeting : sent)
        (readPaths.contains(meeting.path) ? read : rest).push_back(meeting);
    if (sent.empty()) return std::nullopt;
    if (read.empty()) return notesOnly(rest);
    return readClause(read) + notesTail(rest.size());
}

std::optional<std::string> line(std::span<const AnswerContextPack::Meeting> sentPack) {
    std::vector<CoverageMeeting> transcripts, notes;
    for (const auto& meeting : sentPack) {
        if (meeting.turns.empty() && !meeting.notes && !meeting.actionItems) continue;
        (meeting.turns.empty() ? notes : transcripts)
            .push_back({.path = meeting.id, .title = meeting.title, .date = meeting.date});
    }
    if (transcripts.empty() && notes.empty()) return std::nullopt;
    if (transcripts.empty()) return notesOnly(notes);
    const auto* const opening =
        transcripts.size() == 1 ? "From the transcript of " : "From the transcripts of ";
    return opening + phrase(transcripts) + "." + notesTail(notes.size());
}
}  // namespace ombrix::AnswerCoverageNote
