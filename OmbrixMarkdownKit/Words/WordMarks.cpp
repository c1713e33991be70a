// Highway compiles the loop below once for each kind of vectors, by including this file again and
// again. Only its headers are used: its library measures the clock before `main`, which takes three
// milliseconds, so the choice among the loops is made here.
#include "OmbrixMarkdownKit/Words/WordMarks.h"

#include <bit>
#include <cstring>

#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "OmbrixMarkdownKit/Words/WordMarks.cpp"
#ifndef HWY_DISABLED_TARGETS
#define HWY_DISABLED_TARGETS (HWY_SSSE3 | HWY_SVE | HWY_SVE2 | HWY_SVE_256 | HWY_SVE2_128)
#define HWY_BROKEN_EMU128 0  // the fault of g++ before 12.3 is in products, which are not used here
#endif
#include <hwy/foreach_target.h>  // has to come before highway.h

#include <hwy/highway.h>

HWY_BEFORE_NAMESPACE();
namespace ombrix::WordMarks::HWY_NAMESPACE {
namespace hn = hwy::HWY_NAMESPACE;

using Lanes = hn::CappedTag<std::uint8_t, blockSize>;
using Bytes = hn::Vec<Lanes>;

HWY_INLINE Bytes all(unsigned char byte) { return hn::Set(Lanes(), byte); }

/// Two tables that stay in registers.
struct Tables {
    explicit Tables(const ByteSets& sets)
        : low(hn::LoadDup128(Lanes(), sets.low.data())),
          high(hn::LoadDup128(Lanes(), sets.high.data())) {}

    /// The sets of each byte.
    HWY_INLINE Bytes of(Bytes bytes) const {
        return hn::And(hn::TableLookupBytes(low, hn::And(bytes, all(0x0F))),
                       hn::TableLookupBytes(high, hn::ShiftRight<4>(bytes)));
    }

    Bytes low, high;
};

/// All bits of each byte that is from `first` to `last`.
HWY_INLINE Bytes within(Bytes bytes, unsigned char first, unsigned char last) {
    const Bytes distance = hn::Sub(bytes, all(first));
    return hn::VecFromMask(
        Lanes(),
        hn::Eq(hn::Min(distance, all(static_cast<unsigned char>(last - first))), distance));
}

/// All bits of each byte that is an ASCII letter or digit.
HWY_INLINE Bytes alphanumeric(Bytes bytes) {
    return hn::Or(within(hn::Or(bytes, all(0x20)), 'a', 'z'), within(bytes, '0', '9'));
}

/// All bits of each byte that is not zero.
HWY_INLINE Bytes any(Bytes bytes) {
    return hn::VecFromMask(Lanes(), hn::Ne(bytes, hn::Zero(Lanes())));
}

template <Where where>
HWY_INLINE void markBlocks(const Beginnings& beginnings, const char* bytes, std::size_t count,
                           std::uint64_t* marks) {
    constexpr unsigned char firstLead = 0xC2;
    constexpr unsigned char lastLatinLead = 0xC9;  // up to U+027F; all letters there are Latin
    constexpr unsigned char firstOfFour = 0xF0;
    const Lanes lanes;
    const auto* in = reinterpret_cast<const std::uint8_t*>(bytes);
    const Tables first(beginnings.letters[0]);
    const Tables second(beginnings.letters[1]);
    const Tables third(beginnings.letters[2]);
    const Tables joints(beginnings.joints);
    const Tables firstBytes(beginnings.characters[0]);
    const Tables secondBytes(beginnings.characters[1]);
    const Tables letterFirst(beginnings.lettersOfTwo[0]);
    const Tables letterSecond(beginnings.lettersOfTwo[1]);
    // Highway may write eight bytes at a time, of which the lanes fill some.
    std::uint8_t bits[blockSize / 8 + 8];
    for (std::size_t block = 0; block < count; ++block, in += blockSize) {
        for (std::size_t i = 0; i < blockSize; i += hn::Lanes(lanes)) {
            const Bytes byte = hn::LoadU(lanes, in + i);
            const Bytes next = hn::LoadU(lanes, in + i + 1);
            const Bytes afterNext = hn::LoadU(lanes, in + i + 2);
            Bytes found = first.of(byte);
            if constexpr (where == Where::anywhere) {
                found = hn::And(found, hn::And(second.of(next), third.of(afterNext)));
                hn::StoreMaskBits(lanes, hn::Ne(found, hn::Zero(lanes)), bits + i / 8);
                continue;
            }
            const Bytes joint = any(joints.of(next));
            const Bytes jointLater = hn::Or(joint, any(joints.of(afterNext)));
            found = hn::And(found, hn::And(hn::Or(second.of(next), joint),
                                           hn::Or(third.of(afterNext), jointLater)));
            const Bytes goesOn = alphanumeric(hn::LoadU(lanes, in + i - 1));
            found = hn::AndNot(goesOn, found);
            const Bytes lead = within(byte, firstLead, 0xFF);
            if (!hn::AllFalse(lanes, hn::Ne(lead, hn::Zero(lanes)))) {
                const Bytes added = any(hn::And(firstBytes.of(byte), secondBytes.of(next)));
                const Bytes latin = within(byte, firstLead, lastLatinLead);
                const Bytes ofFour = within(byte, firstOfFour, 0xFF);
                const Bytes letter = any(letterFirst.of(byte));
                const Bytes beforeLast = hn::LoadU(lanes, in + i - 2);
                const Bytes last = hn::LoadU(lanes, in + i - 1);
                const Bytes afterLetter =
                    any(hn::And(letterFirst.of(beforeLast), letterSecond.of(last)));
                const Bytes inside =
                    hn::Or(hn::And(hn::Or(latin, letter), goesOn), hn::And(letter, afterLetter));
                found = hn::Or(hn::Or(found, ofFour), hn::AndNot(inside, added));
            }
            hn::StoreMaskBits(lanes, hn::Ne(found, hn::Zero(lanes)), bits + i / 8);
        }
        std::memcpy(&marks[block], bits, sizeof marks[block]);
        if constexpr (std::endian::native == std::endian::big)
            marks[block] = __builtin_bswap64(marks[block]);
    }
}

void mark(const Beginnings& beginnings, const char* bytes, std::size_t count,
          std::uint64_t* marks) {
    if (beginnings.where == Where::anywhere)
        markBlocks<Where::anywhere>(beginnings, bytes, count, marks);
    else
        markBlocks<Where::wordStarts>(beginnings, bytes, count, marks);
}
}  // namespace ombrix::WordMarks::HWY_NAMESPACE
HWY_AFTER_NAMESPACE();

#if HWY_ONCE

#if HWY_ARCH_X86
#ifdef __clang__
#define _Bool bool  // the header below is C; of the C++ compilers only g++ knows this name
#endif
#include <sys/platform/x86.h>  // what the C library found out when it started
#endif

#include <algorithm>
#include <iterator>
#include <vector>

#include "OmbrixPlatform/Letters.h"
#include "OmbrixPlatform/Text.h"

namespace ombrix::WordMarks {
namespace {

constexpr unsigned setCount = 8;

std::vector<Way> waysHere() {
    std::vector<Way> found;
#if HWY_ARCH_X86
    const bool hasSse4 = CPU_FEATURE_ACTIVE(SSSE3) && CPU_FEATURE_ACTIVE(SSE4_1) &&
                         CPU_FEATURE_ACTIVE(SSE4_2) && CPU_FEATURE_ACTIVE(PCLMULQDQ) &&
                         CPU_FEATURE_ACTIVE(AES);
    const bool hasAvx2 = hasSse4 && CPU_FEATURE_ACTIVE(AVX) && CPU_FEATURE_ACTIVE(AVX2) &&
                         CPU_FEATURE_ACTIVE(BMI1) && CPU_FEATURE_ACTIVE(BMI2) &&
                         CPU_FEATURE_ACTIVE(FMA) && CPU_FEATURE_ACTIVE(F16C);
    const bool hasAvx3 = hasAvx2 && CPU_FEATURE_ACTIVE(AVX512F) && CPU_FEATURE_ACTIVE(AVX512VL) &&
                         CPU_FEATURE_ACTIVE(AVX512DQ) && CPU_FEATURE_ACTIVE(AVX512BW);
#if HWY_TARGETS & HWY_AVX3
    if (hasAvx3) found.push_back({"AVX-512", N_AVX3::mark});
#endif
#if HWY_TARGETS & HWY_AVX2
    if (hasAvx2) found.push_back({"AVX2", N_AVX2::mark});
#endif
#if HWY_TARGETS & HWY_SSE4
    if (hasSse4) found.push_back({"SSE4", N_SSE4::mark});
#endif
#endif
    found.push_back({"every processor", HWY_STATIC_DISPATCH(mark)});
    return found;
}
}  // namespace

namespace {

bool isLetterOfTwo(unsigned char first, unsigned second) {
    const char bytes[] = {static_cast<char>(first), static_cast<char>(second)};
    return Letters::find({bytes, 2}, 0).letter.isSpelled();
}

/// Letters of two bytes, those of Latin, Greek and Cyrillic: beside one, no other begins or ends a
/// word. A set is all pairs of some halves of bytes, so it has the rows of sixteen that hold
/// nothing else; the row of the small Greek vowels, which has a gap, is a set of its own.
std::array<ByteSets, 2> lettersOfTwoBytes() {
    constexpr unsigned char greek = 0xCE;
    constexpr unsigned vowels = 0xA0;
    constexpr unsigned char firsts[] = {0xC3, 0xC4, 0xC5, greek, 0xCF, 0xD0, 0xD1, greek};
    static_assert(std::size(firsts) == setCount);
    std::array<ByteSets, 2> sets;
    for (unsigned set = 0; set < setCount; ++set) {
        const bool isOfVowels = set == setCount - 1;
        sets[0].add(firsts[set], set);
        for (unsigned row = 0x80; row < 0xC0; row += 0x10) {
            std::vector<unsigned char> letters;
            for (unsigned second = row; second < row + 0x10; ++second)
                if (isLetterOfTwo(firsts[set], second))
                    letters.push_back(static_cast<unsigned char>(second));
            if (isOfVowels ? row != vowels : letters.size() < 0x10) continue;
            for (const unsigned char second : letters) sets[1].add(second, set);
        }
    }
    return sets;
}
}  // namespace

void ByteSets::add(unsigned char byte, unsigned set) {
    const auto bit = static_cast<std::uint8_t>(1U << set);
    low[byte & 15U] |= bit;
    high[byte >> 4U] |= bit;
}

void ByteSets::addAll(unsigned set) {
    for (unsigned half = 0; half < 16; ++half)
        add(static_cast<unsigned char>(half << 4U | half), set);
}

Beginnings::Beginnings(std::span<const std::string_view> given, Where at)
    : lettersOfTwo(lettersOfTwoBytes()), where(at) {
    std::vector<std::string_view> sorted(given.begin(), given.end());
    std::ranges::sort(sorted);
    // What begins with a character that is not ASCII is found by that.
    std::erase_if(sorted, [](std::string_view text) { return !Text::isAscii(text[0]); });
    for (std::size_t i = 0; i < sorted.size(); ++i) {
        const auto set =
            static_cast<unsigned>(i * setCount / std::max<std::size_t>(sorted.size(), setCount));
        for (std::size_t place = 0; place < letters.size(); ++place) {
            if (place >= sorted[i].size()) {
                letters[place].addAll(set);
                continue;
            }
            const char c = sorted[i][place];
            if (!Text::isAscii(c)) continue;  // only a joint can stand there
            letters[place].add(static_cast<unsigned char>(c), set);
            if (Text::isAsciiLetter(c))
                letters[place].add(static_cast<unsigned char>(c & ~0x20), set);
        }
    }
    // Each pair of halves needs its own set, or a "'" and an "@" would make a "0".
    constexpr unsigned notAscii = 0;
    for (unsigned char byte = 0; byte < 0x80; ++byte)
        if (isSilentJoint(static_cast<char>(byte))) joints.add(byte, byte >> 4U);
    std::ranges::for_each(joints.low, [](std::uint8_t& sets) { sets |= 1U << notAscii; });
    std::fill(joints.high.begin() + 8, joints.high.end(), std::uint8_t{1U << notAscii});
}

void Beginnings::addCharacters(unsigned char first, unsigned char second) {
    // Each first byte has a set of its own as long as there are any.
    if (!setOfFirst_[first]) setOfFirst_[first] = firsts_++ % setCount;
    characters[0].add(first, *setOfFirst_[first]);
    characters[1].add(second, *setOfFirst_[first]);
}

std::span<const Way> ways() {
    static const std::vector<Way> found = waysHere();
    return found;
}
}  // namespace ombrix::WordMarks

#endif  // HWY_ONCE
