// The sentence vectors of each transcript, by which a question finds meetings that say the same in
// other words. A cache, in a file that can be rebuilt at any time:
//
//   {"entries":{"/t/Weekly.md":{"chunks":[{"data":"AACAPwAAAAA=","text":"Weekly. With Ann."}],
//    "contentHash":"11400714819323198485"}}}
//
// "data" is base64 of the vector's 32-bit floats, little-endian.
#pragma once

#include <cstddef>
#include <functional>
#include <map>
#include <optional>
#include <set>
#include <string>
#include <string_view>
#include <vector>

#include "OmbrixAnswerKit/Semantic/SentenceEmbedding.h"
#include "OmbrixMarkdownKit/Transcript/TranscriptDocument.h"
#include "OmbrixPlatform/JsonDecoding.h"

namespace ombrix {

/// How close a document is to a question.
struct SemanticDocScore {
    double score = 0;       ///< the cosine of the best chunk, above -1
    std::string bestChunk;  ///< its text
    bool operator==(const SemanticDocScore&) const = default;
};

/// By document id.
using SemanticScores = std::map<std::string, SemanticDocScore, std::less<>>;

struct SemanticIndex {
    struct Chunk {
        std::string text;
        std::vector<float> vector;
        bool operator==(const Chunk&) const = default;
    };
    struct Entry {
        std::string contentHash;    ///< of what was embedded
        std::vector<Chunk> chunks;  ///< in the order of the text
        bool operator==(const Entry&) const = default;
    };

    std::map<std::string, Entry, std::less<>> entries;  ///< by document id

    std::size_t chunkCount() const;

    /// What is embedded of a document: its title and participants, then its turns without their
    /// speakers. A chunk holds at most 3 turns and 80 words; a longer turn is a chunk of its own.
    static std::vector<std::string> chunkTexts(const TranscriptDocument& document);
    /// A number that changes with the title, the participants and the turns, and with nothing else.
    static std::string contentHash(const TranscriptDocument& document);

    /// Embeds a document that is new or changed; true when its entry changed. A chunk that cannot
    /// be embedded is left out; a document without any has an entry without chunks, so that it is
    /// not tried again.
    bool update(const std::string& docID, const TranscriptDocument& document,
                const SentenceEmbedding& embedding);
    /// Removes the documents that are not among `ids`.
    void prune(const std::set<std::string>& ids);

    /// Each document by its chunk closest to the question, of equal ones the first. Chunks of
    /// another length than the question's vector and those without a direction do not count, so
    /// after a change of model old entries have no score. Empty when the question has no vector.
    /// Reads every vector once; that is what it costs.
    SemanticScores scores(std::string_view question, const SentenceEmbedding& embedding) const;

    /// The index in a file; nothing when it cannot be read, for whatever reason, or is damaged
    /// anywhere. Never throws. While it runs it needs some four times the bytes of the file.
    static std::optional<SemanticIndex> load(const std::string& path);
    /// Replaces the file atomically and makes its folder. A failure is silent: the old file stays.
    void save(const std::string& path) const;

    bool operator==(const SemanticIndex&) const = default;
};

/// The text that is saved, and what `load` reads. Throws `Json::DecodingError`.
Json::Value encode(const SemanticIndex::Chunk& chunk);
Json::Value encode(const SemanticIndex::Entry& entry);
Json::Value encode(const SemanticIndex& index);
SemanticIndex::Chunk decode(Json::As<SemanticIndex::Chunk>, const Json::Object& in);
SemanticIndex::Entry decode(Json::As<SemanticIndex::Entry>, const Json::Object& in);
SemanticIndex decode(Json::As<SemanticIndex>, const Json::Object& in);
}  // namespace ombrix
