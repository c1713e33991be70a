#include "OmbrixAnswerKit/Semantic/SemanticIndex.h"

#include <bit>
#include <cmath>
#include <cstring>
#include <exception>
#include <span>
#include <utility>

#include "OmbrixPlatform/Base64.h"
#include "OmbrixPlatform/Digest.h"
#include "OmbrixPlatform/Files.h"
#include "OmbrixPlatform/FloatVectors.h"
#include "OmbrixPlatform/Paths.h"
#include "OmbrixPlatform/Text.h"

namespace ombrix {
namespace {

// ---- chunks -----------------------------------------------------------------------------------

constexpr std::size_t mostTurns = 3;   // in a chunk
constexpr std::size_t mostWords = 80;  // in a chunk of several turns

/// Collects turns until a chunk is full.
class Chunker {
  public:
    explicit Chunker(std::vector<std::string>& chunks) : chunks_(chunks) {}

    void add(std::string_view turn) {
        const std::size_t words = Text::splitDroppingEmpty(turn, " ").size();
        if (turns_.size() == mostTurns || words_ + words > mostWords) flush();
        turns_.push_back(turn);
        words_ += words;
    }
    void flush() {
        if (!turns_.empty()) chunks_.push_back(Text::joined(turns_, " "));
        turns_.clear();
        words_ = 0;
    }

  private:
    std::vector<std::string>& chunks_;
    std::vector<std::string_view> turns_;
    std::size_t words_ = 0;
};

/// The chunk of `entry` closest to the question; nothing when none counts.
std::optional<SemanticDocScore> best(const SemanticIndex::Entry& entry,
                                     std::span<const float> question, float norm) {
    const SemanticIndex::Chunk* closest = nullptr;
    float highest = -1;
    for (const auto& chunk : entry.chunks) {
        if (chunk.vector.size() != question.size()) continue;
        const auto [dot, squares] = FloatVectors::dotAndSquares(question, chunk.vector);
        const float norms = norm * std::sqrt(squares);
        if (!(norms > 0)) continue;
        const float cosine = dot / norms;
        if (!(cosine > highest)) continue;
        highest = cosine;
        closest = &chunk;
    }
    if (closest == nullptr) return std::nullopt;
    return SemanticDocScore{.score = highest, .bestChunk = closest->text};
}

// ---- vectors in the file ----------------------------------------------------------------------

static_assert(std::endian::native == std::endian::little, "vectors are stored as in memory");

std::string base64(const std::vector<float>& vector) {
    return Base64::encode({reinterpret_cast<const char*>(vector.data()),  //
                           vector.size() * sizeof(float)});
}

struct StoredVector {
    std::vector<float> floats;
};

/// Reads the text where it is: an index has hundreds of thousands of vectors.
StoredVector decode(Json::As<StoredVector>, const Json::Element& in) {
    const auto text = in.node().string();
    if (!text) in.fail("not a string");
    const auto bytes = Base64::decode(*text);
    if (!bytes) in.fail("not base64");
    if (bytes->size() % sizeof(float) != 0) in.fail("not whole 32-bit floats");
    StoredVector vector{.floats = std::vector<float>(bytes->size() / sizeof(float))};
    if (!bytes->empty()) std::memcpy(vector.floats.data(), bytes->data(), bytes->size());
    return vector;
}
}  // namespace

// ---- the index --------------------------------------------------------------------------------

std::size_t SemanticIndex::chunkCount() const {
    std::size_t count = 0;
    for (const auto& [id, entry] : entries) count += entry.chunks.size();
    return count;
}

std::vector<std::string> SemanticIndex::chunkTexts(const TranscriptDocument& document) {
    std::vector<std::string> chunks = {document.title + ". With " +
                                       Text::joined(document.participants, ", ") + "."};
    Chunker chunker(chunks);
    for (const auto& turn : document.turns) chunker.add(turn.text);
    chunker.flush();
    return chunks;
}

std::string SemanticIndex::contentHash(const TranscriptDocument& document) {
    Digest::Fnv1a64 hash;
    const auto add = [&](std::string_view text) {
        hash.add(text);
        hash.add("\n");
    };
    add(document.title);
    for (const auto& participant : document.participants) add(participant);
    for (const auto& turn : document.turns) {
        add(turn.speaker);
        add(turn.text);
    }
    return std::to_string(hash.value());
}

bool SemanticIndex::update(const std::string& docID, const TranscriptDocument& document,
                           const SentenceEmbedding& embedding) {
    Entry entry{.contentHash = contentHash(document), .chunks = {}};
    const auto found = entries.find(docID);
    if (found != entries.end() && found->second.contentHash == entry.contentHash) return false;
    for (auto& text : chunkTexts(document))
        if (auto vector = embedding.vector(text))
            entry.chunks.push_back({.text = std::move(text), .vector = std::move(*vector)});
    entries.insert_or_assign(docID, std::move(entry));
    return true;
}

void SemanticIndex::prune(const std::set<std::string>& ids) {
    std::erase_if(entries, [&](const auto& entry) { return !ids.contains(entry.first); });
}

SemanticScores SemanticIndex::scores(std::string_view question,
                                     const SentenceEmbedding& embedding) const {
    const auto vector = embedding.vector(question);
    if (!vector) return {};
    const float norm = std::sqrt(FloatVectors::dotAndSquares(*vector, *vector).squares);
    if (!(norm > 0)) return {};
    SemanticScores scores;
    for (const auto& [id, entry] : entries)
        if (auto score = best(entry, *vector, norm))
            scores.emplace_hint(scores.end(), id, std::move(*score));
    return scores;
}

std::optional<SemanticIndex> SemanticIndex::load(const std::string& path) {
    try {
        Files::Reader file;
        const auto text = file.read(path);
        if (!text) return std::nullopt;
        return Json::decode<SemanticIndex>(*text);
    } catch (const std::exception&) {
        return std::nullopt;  // the caller builds a new one
    }
}

void SemanticIndex::save(const std::string& path) const {
    try {
        const auto folder = Paths::parent(path);
        if (!folder.empty()) Files::createDirectories(std::string(folder));
        Files::writeAtomically(path, Json::write(encode(*this), Json::Style::canonical));
    } catch (const std::exception&) {  // the next run builds what could not be kept
    }
}

Json::Value encode(const SemanticIndex::Chunk& chunk) {
    return Json::object({{"text", chunk.text}, {"data", base64(chunk.vector)}});
}

SemanticIndex::Chunk decode(Json::As<SemanticIndex::Chunk>, const Json::Object& in) {
    return {.text = in.required<std::string>("text"),
            .vector = in.required<StoredVector>("data").floats};
}

Json::Value encode(const SemanticIndex::Entry& entry) {
    return Json::object({{"contentHash", entry.contentHash}, {"chunks", entry.chunks}});
}

SemanticIndex::Entry decode(Json::As<SemanticIndex::Entry>, const Json::Object& in) {
    return {.contentHash = in.required<std::string>("contentHash"),
            .chunks = in.required<std::vector<SemanticIndex::Chunk>>("chunks")};
}

Json::Value encode(const SemanticIndex& index) {
    return Json::object({{"entries", index.entries}});
}

SemanticIndex decode(Json::As<SemanticIndex>, const Json::Object& in) {
    return {.entries =
                in.required<std::map<std::string, SemanticIndex::Entry, std::less<>>>("entries")};
}
}  // namespace ombrix
