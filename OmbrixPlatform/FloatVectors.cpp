#include "OmbrixPlatform/FloatVectors.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstring>

namespace ombrix::FloatVectors {
namespace {

/// Four floats that are added and multiplied at once. Both compilers give every processor its own
/// instructions for them.
using Lanes = float __attribute__((vector_size(16)));
constexpr std::size_t laneCount = 4;
/// Additions wait for the one before into the same sum, so several sums run side by side.
constexpr std::size_t sumCount = 4;
using Sums = std::array<Lanes, sumCount>;
constexpr std::size_t step = laneCount * sumCount;

Lanes load(const float* from) {
    Lanes lanes;
    std::memcpy(&lanes, from, sizeof lanes);
    return lanes;
}

float total(const Sums& sums) {
    const Lanes all = (sums[0] + sums[1]) + (sums[2] + sums[3]);
    return (all[0] + all[1]) + (all[2] + all[3]);
}
}  // namespace

Products dotAndSquares(std::span<const float> a, std::span<const float> b) {
    const std::size_t size = std::min(a.size(), b.size());
    Sums products{};
    Sums squares{};
    std::size_t at = 0;
    for (; at + step <= size; at += step) {
#pragma GCC unroll 4  // or the sums stay in memory
        for (std::size_t i = 0; i < sumCount; ++i) {
            const Lanes lanes = load(&b[at + i * laneCount]);
            products[i] += load(&a[at + i * laneCount]) * lanes;
            squares[i] += lanes * lanes;
        }
    }
    Products result{.dot = total(products), .squares = total(squares)};
    for (; at < size; ++at) {
        result.dot += a[at] * b[at];
        result.squares += b[at] * b[at];
    }
    return result;
}
}  // namespace ombrix::FloatVectors
