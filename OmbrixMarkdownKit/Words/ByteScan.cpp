#include "OmbrixMarkdownKit/Words/ByteScan.h"

#include <algorithm>
#include <array>
#include <bit>
#include <cstdint>
#include <cstring>

#include "OmbrixMarkdownKit/Words/AsciiLanes.h"
#include "OmbrixPlatform/Characters.h"
#include "OmbrixPlatform/Text.h"
#include "OmbrixPlatform/Utf8.h"

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
    std::uint64_t notAscii() const {
        return mask([&](std::size_t i) { return raw_[i]; });
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
    std::uint64_t notAscii() const {
        return mask([](char c) { return static_cast<unsigned char>(c) >= 0x80; });
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

/// Characters that can be inside a word and have no part in its normal form.
constexpr bool joinsSilently(char c) {
    return c == '\'' || c == '.' || c == ',' || c == ';' || c == '_' || c == '@';
}

bool agree(std::string_view a, std::string_view b) {
    const std::size_t shared = std::min(a.size(), b.size());
    return a.substr(0, shared) == b.substr(0, shared);
}

/// True when the word that starts with the ASCII run at `at` can begin with `prefix`: the run
/// does, or it ends earlier at a character that can be inside a word and not in its normal form.
bool runMayBegin(std::string_view text, std::size_t at, std::string_view prefix) {
    for (const char wanted : prefix) {
        if (at == text.size()) return false;
        const char c = text[at++];
        if (Text::asciiLowercased(c) == wanted && Text::isAsciiAlphanumeric(c)) continue;
        return joinsSilently(c) || static_cast<unsigned char>(c) >= 0x80;
    }
    return true;
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

WordStarts::WordStarts(std::vector<std::string> prefixes) : prefixes_(std::move(prefixes)) {
    for (const auto& prefix : prefixes_)
        pairs_.emplace_back(prefix[0], prefix.size() > 1 ? prefix[1] : '\0');
    std::ranges::sort(pairs_);
    pairs_.erase(std::ranges::unique(pairs_).begin(), pairs_.end());
}

std::size_t WordStarts::next(std::string_view text, std::size_t from) const {
    if (prefixes_.empty()) return text.size();
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
        return (runStarts & begins) | block.notAscii();
    };
    return firstPlace(text, from, marks, [&](std::size_t at) { return mayBeginAt(text, at); });
}

bool WordStarts::mayBeginAt(std::string_view text, std::size_t at) const {
    const auto byte = static_cast<unsigned char>(text[at]);
    if (byte < 0x80)
        return std::ranges::any_of(
            prefixes_, [&](const auto& prefix) { return runMayBegin(text, at, prefix); });
    constexpr unsigned char firstLead = 0xC2;
    if (byte < firstLead) return false;  // inside a character
    const char32_t scalar = Utf8::decode(text, at).scalar;
    // A prefix joins with the letter after it into one character, so the word can begin there.
    if (Characters::isPrefix(scalar)) return true;
    const std::string fold = Text::folded(scalar);
    if (fold.empty()) return false;
    return std::ranges::any_of(prefixes_, [&](const auto& prefix) { return agree(fold, prefix); });
}
}  // namespace ombrix::ByteScan
