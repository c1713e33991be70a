// Landing one meeting: what a model is asked, and what is written of its answer. A long transcript
// is asked in chunks, then once more over their records; the records of chunks are kept in
// ".ombrix/engine/chunks", so that a crash costs none of them.
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "OmbrixEngine/Changes/ChangeSet.h"
#include "OmbrixEngine/Protocol/Give.h"
#include "OmbrixEngine/Steps/LandHistory.h"
#include "OmbrixEngine/Workspace/EngineWorkspace.h"

namespace ombrix {

/// Why a model is never asked about a transcript: it is private, not transcribed yet, without turns
/// or without a day. Nothing when it is asked.
std::optional<std::string> whyNeverAsked(const TranscriptDocument& header, bool hasTurns);

class LandStep {
  public:
    static constexpr std::string_view chunksFolder = ".ombrix/engine/chunks";

    /// Reads the transcript. Throws `CLIError` for one that is never asked about.
    LandStep(EngineWorkspace& workspace, const TranscriptEntry& entry);

    struct Question {
        CanonicalInput input{};
        std::optional<LandChunk> chunk{};  ///< the record is one of a chunk
    };
    /// The first chunk without a record, or the last question: the one whose record is kept.
    const Question& next() const;
    /// The question with this hash; null when the present transcript, corrections and ledger give
    /// no such question.
    const Question* find(std::string_view inputHash) const;
    /// How many chunks the transcript has; 1 when it is asked whole.
    std::size_t chunkCount() const { return chunkCount_; }
    /// The last question is over the records of the chunks.
    bool reduces() const { return chunkCount_ > 1; }

    /// Throws `RefusedAnswer` for a record that resolves a follow-up which the input does not have.
    void check(const LandOutput& output) const;
    /// What is odd about a record that was accepted, see AnswerDoubts.h.
    std::vector<std::string> doubts(const LandOutput& output) const;

    /// Plans to keep the record of a chunk.
    void planChunk(ChangeSet& changes, const Question& question, const GivenAnswer& answer,
                   const LandOutput& output) const;
    /// Plans all that follows from the record of the meeting: the sidecar, the follow-ups, the
    /// notes. The workspace has the record from now on. An equal record that is there keeps its
    /// time. The sidecar's path.
    std::string plan(ChangeSet& changes, const GivenAnswer& answer, LandOutput output);

  private:
    struct Chunk;
    std::vector<Chunk> storedChunks() const;
    std::string chunksPath() const;
    LandInput input(LandHistory::Context context,
                    std::optional<std::vector<TranscriptDocument::Turn>> turns,
                    std::optional<LandChunk> chunk) const;

    EngineWorkspace& workspace_;
    const TranscriptEntry& entry_;
    TranscriptDocument document_;  // as it is on disk
    TranscriptDocument shown_;     // without what no model is told
    std::string fingerprint_;
    std::vector<std::string> followUpIDs_;  // of the input
    std::size_t chunkCount_ = 1;
    std::vector<Question> questions_;
    std::size_t next_ = 0;
};
}  // namespace ombrix
