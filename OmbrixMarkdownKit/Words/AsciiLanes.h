// Sixteen bytes at a time, for loops that must not branch on every letter. Without SSE2 the same
// functions work byte by byte.
#pragma once

#include <cstddef>
#include <cstdint>

#if defined(__SSE2__)
#include <emmintrin.h>
#endif

#include "OmbrixPlatform/Words.h"

namespace ombrix::AsciiLanes {

constexpr std::size_t width = 16;
constexpr std::size_t blockWidth = 64;
constexpr char caseBit = 0x20;

#if defined(__SSE2__)

namespace Detail {
inline __m128i load(const char* bytes) {
    return _mm_loadu_si128(reinterpret_cast<const __m128i*>(bytes));
}
inline __m128i within(__m128i bytes, char first, char last) {
    const __m128i distance = _mm_sub_epi8(bytes, _mm_set1_epi8(first));
    const __m128i most = _mm_set1_epi8(static_cast<char>(last - first));
    return _mm_cmpeq_epi8(_mm_min_epu8(distance, most), distance);
}
}  // namespace Detail

/// Bit n is set when byte n is an ASCII letter or digit.
inline std::uint32_t alphanumeric(const char* bytes) {
    const __m128i raw = Detail::load(bytes);
    const __m128i lower = _mm_or_si128(raw, _mm_set1_epi8(caseBit));
    return static_cast<std::uint32_t>(_mm_movemask_epi8(
        _mm_or_si128(Detail::within(lower, 'a', 'z'), Detail::within(raw, '0', '9'))));
}

/// Bit n is set when byte n is not ASCII.
inline std::uint32_t notAscii(const char* bytes) {
    return static_cast<std::uint32_t>(_mm_movemask_epi8(Detail::load(bytes)));
}

/// Copies sixteen bytes; letters become lower case, digits stay, the copies of other bytes mean
/// nothing.
inline void copyLowercased(const char* from, char* to) {
    _mm_storeu_si128(reinterpret_cast<__m128i*>(to),
                     _mm_or_si128(Detail::load(from), _mm_set1_epi8(caseBit)));
}

#else

inline std::uint32_t alphanumeric(const char* bytes) {
    std::uint32_t mask = 0;
    for (std::size_t i = 0; i < width; ++i)
        mask |= static_cast<std::uint32_t>(Text::isAsciiAlphanumeric(bytes[i]) ? 1 : 0) << i;
    return mask;
}

inline std::uint32_t notAscii(const char* bytes) {
    std::uint32_t mask = 0;
    for (std::size_t i = 0; i < width; ++i)
        mask |= static_cast<std::uint32_t>(Text::isAscii(bytes[i]) ? 0 : 1) << i;
    return mask;
}

inline void copyLowercased(const char* from, char* to) {
    for (std::size_t i = 0; i < width; ++i) to[i] = static_cast<char>(from[i] | caseBit);
}

#endif
}  // namespace ombrix::AsciiLanes
