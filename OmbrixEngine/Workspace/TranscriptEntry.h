// The transcripts of the folder, as their front matters have them, and how a person names one.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "OmbrixEngine/Workspace/TranscriptsFolder.h"
#include "OmbrixMarkdownKit/Transcript/TranscriptDocument.h"
#include "OmbrixPlatform/Files.h"

namespace ombrix {

/// One transcript, as its front matter has it.
struct TranscriptEntry {
    std::string path{};           ///< inside the transcripts folder
    std::string key{};            ///< see MeetingKey.h
    TranscriptDocument header{};  ///< without its sections
    Files::Facts facts{};
};

namespace TranscriptEntries {

/// Those in the folder, the newest first; see `LibraryOrder`. Engine files, what is in the Memory
/// folder and links that lead out are none. Reads on all cores.
std::vector<TranscriptEntry> read(const TranscriptsFolder& folder, const std::string& memoryName);

/// The one that `argument` names: its path, from the folder or any other; its key; its title; or a
/// part of its title, without case and diacritics, that no other has. Throws `CLIError`, which
/// lists the transcripts when there are several.
const TranscriptEntry& named(const std::vector<TranscriptEntry>& entries,
                             const TranscriptsFolder& folder, std::string_view argument);

/// A transcript for a message: title, day, key and path.
std::string line(const TranscriptEntry& entry);
}  // namespace TranscriptEntries
}  // namespace ombrix
