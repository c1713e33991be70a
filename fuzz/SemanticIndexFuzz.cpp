// The file of the semantic index. What was read is written and reads back the same, and every score
// is near a cosine: the squares of the tiniest floats have few digits.
//
// libFuzzer: -dict=fuzz/json.dict
#include <algorithm>
#include <cstdint>

#include "Law.h"
#include "OmbrixAnswerKit/Semantic/SemanticIndex.h"

using namespace ombrix;
using Fuzz::law;

namespace {

/// Asks with vectors of 1 to 4 numbers, by the length of the text.
class ByLength final : public SentenceEmbedding {
  public:
    std::size_t dimension() const override { return 4; }
    std::optional<std::vector<float>> vector(std::string_view text) const override {
        return std::vector<float>(text.size(), 0.5F);
    }
};
}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    SemanticIndex index;
    try {
        index = Json::decode<SemanticIndex>(Fuzz::text(data, size));
    } catch (const Json::SyntaxError&) {
        return 0;
    } catch (const Json::DecodingError&) {
        return 0;
    }
    // By their text: a vector can hold what is no number and equals nothing.
    const std::string written = Json::write(encode(index), Json::Style::canonical);
    const auto again = Json::decode<SemanticIndex>(written);
    law(Json::write(encode(again), Json::Style::canonical) == written, "an index reads back");
    for (const auto* question : {"1", "22", "333", "4444"})
        for (const auto& [id, score] : index.scores(question, ByLength()))
            law(index.entries.contains(id) && score.score > -1 && score.score < 2,
                "a score is a cosine");
    index.prune({});
    law(index.chunkCount() == 0, "nothing is kept");
    return 0;
}
