// What turns a sentence into a vector. No implementation is shipped: the caller brings one, and
// without one answers rank by words alone.
#pragma once

#include <cstddef>
#include <optional>
#include <string_view>
#include <vector>

namespace ombrix {

class SentenceEmbedding {
  public:
    virtual ~SentenceEmbedding() = default;

    /// The length of every vector.
    virtual std::size_t dimension() const = 0;
    /// Nothing when the text cannot be embedded. The same text always gives the same vector.
    virtual std::optional<std::vector<float>> vector(std::string_view text) const = 0;

  protected:
    SentenceEmbedding() = default;
    SentenceEmbedding(const SentenceEmbedding&) = default;
    SentenceEmbedding(SentenceEmbedding&&) = default;
    SentenceEmbedding& operator=(const SentenceEmbedding&) = default;
    SentenceEmbedding& operator=(SentenceEmbedding&&) = default;
};
}  // namespace ombrix
