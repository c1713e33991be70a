// The suffix stripper that `QueryTokenizer::stem` and the word scanner use.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

namespace ombrix::Stemmer {

/// The fewest characters that must stay when "ing", "ed" or a final "e" is taken off.
constexpr std::size_t minStem = 4;
/// The fewest characters that must stay when a plural ending is taken off.
constexpr std::size_t minPluralStem = 3;

/// The stem of a normal form that has this number of `characters`: a view of a part of
/// `normalForm`, of a constant, or, when letters changed, of `storage`.
std::string_view stem(std::string_view normalForm, std::size_t characters, std::string& storage);

/// False for nearly every normal form that is its own stem, judged by its length and two letters;
/// true for all others. Most words never reach the rules.
constexpr bool mayLoseLetters(std::string_view normalForm);

/// A prefix of every normal form that has the given stem; empty only for an empty stem. A search
/// for the stem can skip all words that start otherwise.
std::string commonPrefix(std::string_view stem);

// ---- inline, since it runs for every word of a library ------------------------------------------

namespace Detail {

/// Bits by the low five bits of an ASCII letter.
constexpr std::uint32_t letters(std::string_view which) {
    std::uint32_t bits = 0;
    for (const char c : which) bits |= std::uint32_t{1} << (static_cast<unsigned char>(c) & 31U);
    return bits;
}
constexpr std::uint32_t lastOfEndings = letters("sgde");
constexpr std::uint32_t firstOfFixedWords = letters("dcabp");
constexpr std::size_t shortestWithEnding = 4;
constexpr std::size_t shortestFixedWord = 7;
}  // namespace Detail

constexpr bool mayLoseLetters(std::string_view normalForm) {
    using namespace Detail;
    const std::size_t size = normalForm.size();
    if (size < shortestWithEnding) return false;
    const auto has = [](std::uint32_t bits, char c) {
        const auto byte = static_cast<unsigned char>(c);
        return bits >> (byte & 31U) & (byte < 0x80 ? 1U : 0U);
    };
    // No branch between the two: the processor would mispredict it for every third word.
    return (has(lastOfEndings, normalForm.back()) |
            (has(firstOfFixedWords, normalForm.front()) &
             static_cast<std::uint32_t>(size >= shortestFixedWord))) != 0;
}
}  // namespace ombrix::Stemmer
