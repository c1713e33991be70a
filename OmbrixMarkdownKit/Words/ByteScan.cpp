#include "OmbrixMarkdownKit/Words/ByteScan.h"

#include <algorithm>
#include <array>
#include <bit>
#include <cstdint>
#include <cstring>

#include "OmbrixMarkdownKit/Words/AsciiLanes.h"
#include "OmbrixPlatform/Text.h"

namespace ombrix::ByteScan {
namespace {

constexpr std::size_t blockSize = 64;
constexpr char caseBit = AsciiLanes::caseBit;

/// Properties of 64 bytes as 64 bits: bit n is about byte n.
#if defined(__SSE2__)
class Block {
  public:
    explicit Block(const char* bytes) {
        for (std::size_t i = 0; i < lanes; ++i) {
            raw_[i] = _mm_loadu_si128(reinterpret_cast<const __m128i*>(bytes) + i);
            lower_[i] = _mm_or_si128(raw_[i], _mm_set1_epi8(caseBit));
        }
    }

    /// The bytes equal to `lower`, a lower-case ASCII letter or a digit, ignoring case. A control
    /// character can be taken for a digit.
    std::uint64_t equal(char lower) const {
        const __m128i wanted = _mm_set1_epi8(static_cast<char>(lower | caseBit));
        return mask([&](std::size_t i) { return _mm_cmpeq_epi8(lower_[i], wanted); });
    }
    std::uint64_t alphanumeric() const {
        return mask([&](std::size_t i) {
            return _mm_or_si128(AsciiLanes::Detail::within(lower_[i], 'a', 'z'),
                                AsciiLanes::Detail::within(raw_[i], '0', '9'));
        });
    }
    /// The first bytes of characters that are not ASCII.
    std::uint64_t leads() const {
        const __m128i lastInside = _mm_set1_epi8(static_cast<char>(0xBF));
        return mask([&](std::size_t i) {
            return _mm_and_si128(_mm_cmpgt_epi8(raw_[i], lastInside), raw_[i]);
        });
    }

  private:
    static constexpr std::size_t lanes = blockSize / sizeof(__m128i);

    template <typename Lane>
    static std::uint64_t mask(Lane lane) {
        std::uint64_t bits = 0;
        for (std::size_t i = 0; i < lanes; ++i) {
            const auto part = static_cast<std::uint16_t>(_mm_movemask_epi8(lane(i)));
            bits |= static_cast<std::uint64_t>(part) << (i * sizeof(__m128i));
        }
        return bits;
    }

    __m128i raw_[lanes];
    __m128i lower_[lanes];
};
#else
class Block {
  public:
    explicit Block(const char* bytes) { std::memcpy(bytes_.data(), bytes, blockSize); }

    std::uint64_t equal(char lower) const {
        return mask([&](char c) { return (c | caseBit) == (lower | caseBit); });
    }
    std::uint64_t alphanumeric() const { return mask(Text::isAsciiAlphanumeric); }
    std::uint64_t leads() const {
        return mask([](char c) { return static_cast<unsigned char>(c) >= 0xC0; });
    }

  private:
    template <typename Test>
    std::uint64_t mask(Test test) const {
        std::uint64_t bits = 0;
        for (std::size_t i = 0; i < blockSize; ++i)
            bits |= static_cast<std::uint64_t>(test(bytes_[i]) ? 1 : 0) << i;
        return bits;
    }
    std::array<char, blockSize> bytes_;
};
#endif

/// The bits `count` bytes later. What follows the block is not known yet, so the last bits are set.
constexpr std::uint64_t shiftedDown(std::uint64_t bits, unsigned count) {
    return (bits >> count) | ~(~std::uint64_t{0} >> count);
}

/// The first place from `from` on that has its bit in `marks(block, at)` and for which
/// `confirm(place)` is true; the size when there is none. The last block is padded with zeros.
template <typename Marks, typename Confirm>
std::size_t firstPlace(std::string_view text, std::size_t from, Marks marks, Confirm confirm) {
    for (std::size_t at = from; at < text.size(); at += blockSize) {
        const std::size_t left = text.size() - at;
        std::array<char, blockSize> rest{};
        const char* bytes = text.data() + at;
        if (left < blockSize) {
            std::memcpy(rest.data(), bytes, left);
            bytes = rest.data();
        }
        std::uint64_t bits = marks(Block(bytes), at);
        if (left < blockSize) bits &= (std::uint64_t{1} << left) - 1;
        for (; bits != 0; bits &= bits - 1) {
            const std::size_t place = at + static_cast<std::size_t>(std::countr_zero(bits));
            if (confirm(place)) return place;
        }
    }
    return text.size();
}
}  // namespace

std::size_t findOneForm(std::string_view text, std::size_t from) {
    return firstPlace(
        text, from,
        [](const Block& block, std::size_t) {
            return block.equal('1') | (block.equal('o') & shiftedDown(block.equal('n'), 1) &
                                       shiftedDown(block.equal('e'), 2));
        },
        [&](std::size_t at) {
            return text[at] == '1' || Text::startsWithIgnoringAsciiCase(text.substr(at), "one");
        });
}

WordStarts::WordStarts(std::vector<std::string> prefixes) : beginnings_(std::move(prefixes)) {
    for (const auto& prefix : beginnings_.prefixes()) {
        if (Text::isAscii(prefix[0]))
            pairs_.emplace_back(prefix[0], prefix.size() > 1 ? prefix[1] : '\0');
    }
    std::ranges::sort(pairs_);
    pairs_.erase(std::ranges::unique(pairs_).begin(), pairs_.end());
}

std::size_t WordStarts::next(std::string_view text, std::size_t from) const {
    if (beginnings_.prefixes().empty()) return text.size();
    const auto marks = [&](const Block& block, std::size_t at) {
        const std::uint64_t inWord = block.alphanumeric();
        const std::uint64_t wordBefore = at > 0 && Text::isAsciiAlphanumeric(text[at - 1]) ? 1 : 0;
        const std::uint64_t runStarts = inWord & ~((inWord << 1U) | wordBefore);
        const std::uint64_t runGoesOn = shiftedDown(inWord, 1);
        std::uint64_t begins = 0;
        for (const auto& [first, second] : pairs_) {
            const std::uint64_t seconds =
                second == '\0' ? ~std::uint64_t{0} : shiftedDown(block.equal(second), 1);
            begins |= block.equal(first) & (seconds | ~runGoesOn);
        }
        return (runStarts & begins) | block.leads();
    };
    return firstPlace(text, from, marks,
                      [&](std::size_t at) { return beginnings_.mayBeginAt(text, at); });
}
}  // namespace ombrix::ByteScan
