// All that the engine works on: the transcripts folder of `config.json`, and what is in it. Each
// part is read when it is first asked for, and once: a workspace is a snapshot for one command.
// What cannot be read is passed over, and a warning says so.
#pragma once

#include <functional>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <unordered_map>
#include <unordered_set>
#include <vector>

#include "OmbrixCLI/CLIContext.h"
#include "OmbrixEngine/Workspace/MemoryFileEntry.h"
#include "OmbrixEngine/Workspace/Privacy.h"
#include "OmbrixEngine/Workspace/TranscriptEntry.h"
#include "OmbrixEngine/Workspace/TranscriptsFolder.h"
#include "OmbrixMarkdownKit/Transcript/TranscriptDocument.h"
#include "OmbrixMemoryKit/Identity/PersonAliases.h"
#include "OmbrixMemoryKit/Land/LandSidecar.h"
#include "OmbrixMemoryKit/Ledger/FollowUpsLedger.h"
#include "OmbrixMemoryKit/Moves/PrepareSidecar.h"
#include "OmbrixMemoryKit/Region/Corrections.h"
#include "OmbrixPlatform/Calendar.h"

namespace ombrix {

class EngineWorkspace {
  public:
    /// Reads `config.json` and opens the folder. Throws `CLIError` when there is no such folder.
    explicit EngineWorkspace(const CLIContext& context);

    const TranscriptsFolder& folder() const { return folder_; }
    const std::string& userName() const { return userName_; }  ///< may be empty
    const Calendar& calendar() const { return calendar_; }
    Instant now() const { return now_; }
    const std::string& today() const { return today_; }

    /// A path in the Memory folder. Throws `CLIError` when that folder is a file, or leads out.
    std::string memoryPath(std::string_view name) const;

    /// The newest first; see `LibraryOrder`. Engine files are none.
    const std::vector<TranscriptEntry>& transcripts();
    /// The transcript that `argument` names: its path, from the folder or any other; its key; its
    /// title; or a part of its title, without case and diacritics, that no other has. Throws
    /// `CLIError`, which lists the transcripts when there are several.
    const TranscriptEntry& meeting(std::string_view argument);
    /// The whole text, and the document. Throws `CLIError` when the file is gone or no transcript.
    std::string text(const TranscriptEntry& entry) const;
    TranscriptDocument document(const TranscriptEntry& entry) const;

    /// Makes records smaller as they are read: a command over a whole library keeps what it needs.
    /// Comes before they are asked for.
    void trimRecords(std::function<void(LandSidecar&)> trim) { trim_ = std::move(trim); }
    /// True for a meeting whose transcript says "private: true"; what its record says is for no
    /// model either. True as well for a record without a transcript: the person may have marked it
    /// so before they took it away.
    bool isPrivate(std::string_view meetingKey);
    /// The records of landed meetings, the earliest meeting first; one a meeting.
    const std::vector<LandSidecar>& landed();
    /// The record of a meeting; null when it was not landed. Valid as long as the workspace.
    const LandSidecar* landed(std::string_view key);
    /// The same whole, also when records are trimmed; nothing when it cannot be read.
    std::optional<LandSidecar> wholeRecord(std::string_view key);
    /// The transcript of a meeting; null when there is none.
    const TranscriptEntry* transcript(std::string_view key);
    /// Adds a record, or replaces that of its meeting, in this workspace alone. Pointers and spans
    /// of records are no longer valid then.
    void land(LandSidecar sidecar);
    /// Those of the meetings that were before this one: the part of `landed` ahead of it.
    std::span<const LandSidecar> landedBefore(const TranscriptEntry& entry);

    /// In the order of their files; of several of one meeting the later counts.
    const std::vector<PrepareSidecar>& prepared();

    /// The aliases file alone. Throws `CLIError` when it cannot be read: it is the user's, and what
    /// is private is known by it.
    const PersonAliases& aliasesFile();
    /// For commands that only read: such a file counts as empty, and a warning says so.
    void tolerateDamagedAliases() { toleratesDamagedAliases_ = true; }
    /// Whether that happened, as a reason; empty when not.
    const std::string& whyAliasesAreLost();
    /// Replaces it, in this workspace alone. What was returned of aliases and of privacy is no
    /// longer valid then.
    void setAliasesFile(PersonAliases aliases);
    /// The same with the names under "alias:" in the corrections of memory files.
    const PersonAliases& aliases();
    const std::vector<MemoryFileEntry>& memoryFiles();
    /// The corrections in "Follow Ups.md".
    const std::vector<Correction>& corrections();
    const Privacy& privacy();
    /// Of `today`, from all sidecars.
    FollowUpsLedger ledger();
    /// Of another day and of some of the records, as a model may know it: as if private meetings,
    /// with what they said of other meetings' follow-ups, had never been.
    FollowUpsLedger publicLedger(std::span<const LandSidecar> records, std::string_view day);

    /// What was passed over.
    std::vector<std::string>& warnings() { return warnings_; }

  private:
    struct Chronology {
        std::string_view day, start, key;
        auto operator<=>(const Chronology&) const = default;
    };
    Chronology chronology(const LandSidecar& sidecar) const;
    using ByKey = std::unordered_map<std::string_view, std::size_t>;
    void readTranscripts();
    void sortLanded();
    template <typename Sidecar>
    std::vector<Sidecar> sidecarsIn(std::string_view relativeFolder);

    TranscriptsFolder folder_;
    std::string memoryName_, userName_;
    Calendar calendar_;
    Instant now_;
    std::string today_;
    std::vector<std::string> warnings_;

    std::optional<std::vector<TranscriptEntry>> transcripts_;
    ByKey byKey_;
    std::unordered_set<std::string_view> privateKeys_;
    std::optional<std::vector<LandSidecar>> landed_;
    std::vector<Chronology> chronology_;  // of `landed_`
    ByKey landedByKey_;
    std::function<void(LandSidecar&)> trim_;
    std::optional<std::vector<PrepareSidecar>> prepared_;
    std::optional<PersonAliases> aliasesFile_, aliases_;
    bool toleratesDamagedAliases_ = false;
    std::string whyAliasesAreLost_;
    std::optional<std::vector<MemoryFileEntry>> memoryFiles_;
    std::optional<std::vector<Correction>> corrections_;
    std::optional<Privacy> privacy_;
};
}  // namespace ombrix
