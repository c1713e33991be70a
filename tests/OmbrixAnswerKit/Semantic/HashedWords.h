// An embedding for tests: each word counts in the dimension that its bytes choose.
#pragma once

#include <cstddef>
#include <optional>
#include <string_view>
#include <vector>

#include "OmbrixAnswerKit/Semantic/SentenceEmbedding.h"
#include "OmbrixPlatform/Text.h"

namespace ombrix::test {

class HashedWords final : public SentenceEmbedding {
  public:
    explicit HashedWords(std::size_t dimension) : dimension_(dimension) {}

    std::size_t dimension() const override { return dimension_; }
    /// Nothing for a text with a "?".
    std::optional<std::vector<float>> vector(std::string_view text) const override {
        if (Text::contains(text, "?")) return std::nullopt;
        std::vector<float> counts(dimension_);
        for (const auto word : Text::splitDroppingEmpty(text, " ")) {
            std::size_t sum = 0;
            for (const char c : word) sum = sum * 31 + static_cast<unsigned char>(c);
            ++counts[sum % dimension_];
        }
        return counts;
    }

  private:
    std::size_t dimension_;
};
}  // namespace ombrix::test
