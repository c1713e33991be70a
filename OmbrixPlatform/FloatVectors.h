// Sums over vectors of 32-bit floats, several lanes at a time on any processor. All arithmetic is
// in 32 bits; the order of addition is ours, so the last digits differ from a loop in order.
#pragma once

#include <span>

namespace ombrix::FloatVectors {

struct Products {
    float dot = 0;      ///< of both vectors
    float squares = 0;  ///< of the second with itself
};

/// Both in one pass: long lists of vectors are bound by reading them from memory. What one vector
/// has more than the other does not count.
Products dotAndSquares(std::span<const float> a, std::span<const float> b);
}  // namespace ombrix::FloatVectors
