#include <utility>

#include "OmbrixCLI/CommandTree.h"
#include "OmbrixCLI/Envelope.h"
#include "OmbrixCLI/NotesSource.h"
#include "OmbrixCLI/StoreAccess.h"
#include "OmbrixCore/AppStateBus.h"
#include "OmbrixPlatform/Text.h"

namespace ombrix {
namespace {

struct ListOptions {
    std::int64_t limit = 10;
    std::optional<std::int64_t> folderID;
    GlobalOptions global;
};

struct GetOptions {
    std::int64_t id = 0;
    GlobalOptions global;
};

struct UpdateNotesOptions {
    std::int64_t id = 0;
    bool fromStandardInput = false;
    std::optional<std::string> file;
    GlobalOptions global;
};

// ---- payloads ---------------------------------------------------------------------------------

Json::Value meetingListRow(const MeetingSummary& meeting) {
    return Json::object({{"id", meeting.id},
                         {"title", meeting.title},
                         {"startTime", meeting.startTime},
                         {"durationSeconds", meeting.durationSeconds},
                         {"wordCount", meeting.wordCount},
                         {"folderID", meeting.folderID},
                         {"notesState", meeting.notesState}});
}

/// Moves the record's texts: a transcript or a body of notes can be large.
Json::Value meetingDetailPayload(MeetingRecord meeting) {
    const auto notesState = meeting.notesState();
    return Json::object({{"id", meeting.id},
                         {"title", std::move(meeting.title)},
                         {"startTime", std::move(meeting.startTime)},
                         {"durationSeconds", meeting.durationSeconds},
                         {"rawTranscript", std::move(meeting.rawTranscript)},
                         {"formattedNotes", std::move(meeting.formattedNotes)},
                         {"notesState", notesState},
                         {"wordCount", meeting.wordCount},
                         {"folderID", meeting.folderID},
                         {"calendarEventID", std::move(meeting.calendarEventID)},
                         {"micAudioPath", std::move(meeting.micAudioPath)},
                         {"systemAudioPath", std::move(meeting.systemAudioPath)}});
}

// ---- work -------------------------------------------------------------------------------------

void listMeetings(const CLIContext& context, const ListOptions& options) {
    const auto readRows = [&options](const DictationStore& store) {
        const MeetingQuery query{.limit = options.limit, .folderID = options.folderID};
        Json::Array rows;
        for (const auto& meeting : store.recentMeetingSummaries(query))
            rows.push_back(meetingListRow(meeting));
        return rows;
    };
    StoreAccess::emitList(context, options.limit, readRows);
}

/// Throws `CLIError` when there is no database or no such meeting in it.
MeetingRecord requiredMeeting(const CLIContext& context, std::int64_t id) {
    StoreAccess::requireDatabase(context);
    auto meeting = DictationStore(context.databaseURL).meeting(id);
    if (!meeting) throw StoreAccess::noSuchRecord("meeting", id);
    return std::move(*meeting);
}

void getMeeting(const CLIContext& context, const GetOptions& options) {
    emitSuccess(context, meetingDetailPayload(requiredMeeting(context, options.id)));
}

std::string newNotes(const UpdateNotesOptions& options) {
    if (options.fromStandardInput) return NotesSource::fromStandardInput();
    if (options.file) return NotesSource::fromFile(*options.file);
    throw CLIError::invalidInput("No notes source was provided.", "Use --stdin or --file <path>.");
}

void updateNotes(const CLIContext& context, const UpdateNotesOptions& options) {
    requiredMeeting(context, options.id);  // before the source is read
    const std::string notes = newNotes(options);
    if (Text::trimmed(notes).empty()) {
        throw CLIError::invalidInput("Meeting notes cannot be empty.",
                                     "Provide a non-empty markdown or plain text notes body.");
    }
    DictationStore(context.databaseURL).updateMeetingNotes(options.id, notes);
    OmbrixNotifications::postDataDidChange();

    auto reloaded = DictationStore(context.databaseURL).meeting(options.id);
    if (!reloaded)
        throw CLIError::databaseError("The meeting was updated but could not be reloaded.");
    emitSuccess(context, meetingDetailPayload(std::move(*reloaded)));
}

// ---- declarations -----------------------------------------------------------------------------

void declareList(Command parent) {
    Command command = parent.subcommand("list", "List recent meetings.");
    const auto options = command.options<ListOptions>();
    command.option("--limit N", options->limit, "Maximum number of meetings to return.");
    command.option("--folder-id ID", options->folderID,
                   "Restrict results to a specific folder ID.");
    command.run(options, listMeetings);
}

void declareGet(Command parent) {
    Command command = parent.subcommand("get", "Return a full meeting record.");
    const auto options = command.options<GetOptions>();
    command.positional("id", options->id, "Meeting ID");
    command.run(options, getMeeting);
}

void declareUpdateNotes(Command parent) {
    Command command = parent.subcommand("update-notes", "Replace stored meeting notes only.");
    const auto options = command.options<UpdateNotesOptions>();
    command.positional("id", options->id, "Meeting ID");
    command.flag("--stdin", options->fromStandardInput, "Read the new notes body from stdin.");
    command.option("--file PATH", options->file, "Read the new notes body from a file.");
    command.exactlyOne({"--stdin", "--file"});
    command.run(options, updateNotes);
}
}  // namespace

void declareMeetings(Command root) {
    const Command group = root.subcommand("meetings", "Inspect and update Ombrix meetings.");
    declareList(group);
    declareGet(group);
    declareUpdateNotes(group);
}
}  // namespace ombrix
