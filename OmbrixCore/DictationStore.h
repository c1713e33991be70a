// The SQLite store of meetings, dictations and meeting folders. The desktop application creates,
// migrates and writes it while it runs; the tool reads it and replaces the notes of a meeting.
//
// Every operation opens a connection, does its work and closes it. Nothing is kept between calls,
// and there is no lock of our own: WAL mode lets readers and one writer work side by side. An
// operation that another writer keeps out waits for up to two seconds.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "OmbrixCore/DatabaseError.h"
#include "OmbrixCore/StorageModels.h"
#include "OmbrixPlatform/Calendar.h"

namespace ombrix {

/// Which meetings a list holds.
struct MeetingQuery {
    std::int64_t limit = 10;  ///< negative is no limit
    std::optional<std::int64_t> folderID = {};
    /// Literal text that the title, the transcript or the notes contain, ASCII case ignored. Blank
    /// is none.
    std::optional<std::string> search = {};
};

struct DictationQuery {
    std::int64_t limit = 10;  ///< negative is no limit
    std::int64_t offset = 0;
    std::optional<std::string> fromDate = {};  ///< the first timestamp, compared as text
    std::optional<std::string> toDate = {};    ///< the last one
};

struct NewDictation {
    std::string text = {};
    double durationSeconds = 0;
    std::string appContext = {};
    Instant startedAt = {};
    Instant endedAt = {};  ///< also the record's timestamp
};

struct NewMeeting {
    std::string title = {};
    std::optional<std::string> calendarEventID = {};
    Instant startTime = {};
    Instant endTime = {};
    std::string rawTranscript = {};
    std::string formattedNotes = {};
    std::optional<std::string> micAudioPath = {};
    std::optional<std::string> systemAudioPath = {};
};

/// Unless it says otherwise, an operation throws `DatabaseError` for what SQLite refuses and
/// `Files::Error` when the database's folder cannot be made. It creates the folder and an empty
/// database when they are missing, so a command that only reads asks `databaseExists` first. An
/// update or a deletion that matches no row succeeds. Texts are stored as they are given, U+0000
/// and a leading U+FEFF included.
class DictationStore {
  public:
    /// The default database of "Ombrix" in the user's home.
    DictationStore();
    explicit DictationStore(std::string url);

    const std::string databaseURL;
    const std::string& resolvedDatabaseURL() const { return databaseURL; }
    const std::string& databasePath() const { return databaseURL; }

    /// True when there is a file or a folder at the path. Opens no connection.
    bool databaseExists() const;

    /// Creates the tables and indexes that are missing and adds the column `folder_id` to meetings
    /// of an older database. Running it again changes nothing.
    void migrateIfNeeded() const;

    // ---- dictations ---------------------------------------------------------------------------

    void insert(const NewDictation& dictation) const;
    /// Newest id first. Throws `std::out_of_range` for a limit or an offset outside 32 signed bits.
    std::vector<DictationRecord> recentDictations(const DictationQuery& query) const;
    std::optional<DictationRecord> dictation(std::int64_t id) const;
    /// Deletes one dictation. A refusal by SQLite is ignored.
    void deleteDictation(std::int64_t id) const;
    void clearDictations() const;
    /// `now` and `calendar` decide what the current streak is; days are the calendar's.
    DictationStats dictationStats(Instant now, const Calendar& calendar) const;

    // ---- meetings -----------------------------------------------------------------------------

    /// The duration is from start to end, 0 when the end is not later.
    void insertMeeting(const NewMeeting& meeting) const;
    /// Newest id first, whole records. Throws `std::out_of_range` for a limit outside 32 signed
    /// bits.
    std::vector<MeetingRecord> recentMeetings(const MeetingQuery& query) const;
    /// The same rows without their texts, which are read but never copied.
    std::vector<MeetingSummary> recentMeetingSummaries(const MeetingQuery& query) const;
    std::optional<MeetingRecord> meeting(std::int64_t id) const;
    void updateMeeting(std::int64_t id, std::string_view title,
                       std::string_view formattedNotes) const;
    void updateMeetingNotes(std::int64_t id, std::string_view formattedNotes) const;
    void updateMeetingTitle(std::int64_t id, std::string_view title) const;
    void clearMeetings() const;
    MeetingStats meetingStats() const;

    // ---- folders ------------------------------------------------------------------------------

    /// The new folder's id.
    std::int64_t createFolder(std::string_view name) const;
    void renameFolder(std::int64_t id, std::string_view name) const;
    /// Takes its meetings out of the folder and deletes it. A refusal by SQLite is ignored.
    void deleteFolder(std::int64_t id) const;
    /// By their order, then by id.
    std::vector<MeetingFolder> listFolders() const;
    /// Out of every folder when there is no `folder`.
    void moveMeeting(std::int64_t id, std::optional<std::int64_t> folder) const;

    /// The runs of characters that are not white space.
    static std::int64_t countWords(std::string_view text);
};
}  // namespace ombrix
