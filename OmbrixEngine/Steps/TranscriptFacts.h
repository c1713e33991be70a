// What the engine must know of a transcript's whole text: its fingerprint, who speaks, whose the
// notes are. Reading a library takes long, so the facts are kept in ".ombrix/engine", each with the
// size and the time of the file that it is of. A file that was changed has others, and is read
// again. Deleting the cache costs time and nothing else.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "OmbrixEngine/Workspace/EngineWorkspace.h"
#include "OmbrixMemoryKit/Notes/NotesOwnership.h"
#include "OmbrixPlatform/JsonDecoding.h"

namespace ombrix {

struct TranscriptFacts {
    std::string fingerprint{};            ///< see ContentFingerprint.h
    std::vector<std::string> speakers{};  ///< the labels of its turns, each once
    std::int64_t turns = 0;
    bool hasOwnNotes = false;          ///< the engine may not write notes
    std::optional<Instant> notesAt{};  ///< when the engine wrote the notes that are there
    bool operator==(const TranscriptFacts&) const = default;

    /// Of a transcript's text and the document it is.
    static TranscriptFacts of(std::string_view text, const TranscriptDocument& document);
};

/// True when the engine may write notes into the transcript: there are none and no section of the
/// person's stands where they go, or they are its own and nothing else stands in their block.
bool engineMayWriteNotes(std::string_view text);

class TranscriptFactsCache {
  public:
    static constexpr std::string_view path = ".ombrix/engine/transcripts.json";

    /// The facts of all transcripts of the workspace; reads those that are new or changed, on all
    /// cores. A transcript that cannot be read has none.
    explicit TranscriptFactsCache(EngineWorkspace& workspace);

    /// Nothing for a transcript that could not be read.
    const TranscriptFacts* of(const TranscriptEntry& entry) const;
    /// How many transcripts were read whole.
    std::size_t readCount() const { return readCount_; }
    /// Writes the cache when it changed, unless another program writes or the folder cannot be
    /// written.
    void save(const TranscriptsFolder& folder) const;

    struct Row {
        std::int64_t size = 0, modified = 0;
        TranscriptFacts facts{};
    };

  private:
    std::unordered_map<std::string, Row> rows_;  // by path
    std::size_t readCount_ = 0;
    bool isChanged_ = false;
    std::int64_t trustedBefore_ = 0;
};

Json::Value encode(TranscriptFactsCache::Row row);
TranscriptFactsCache::Row decode(Json::As<TranscriptFactsCache::Row>, const Json::Object& in);
}  // namespace ombrix
