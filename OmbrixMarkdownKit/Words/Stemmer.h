// The suffix stripper behind `QueryTokenizer::stem`.
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

/// The stem of a normal form of so many `characters`: a part of `normalForm`, a constant, or, when
/// letters had to change, the bytes of `storage`.
std::string_view stem(std::string_view normalForm, std::size_t characters, std::string& storage);

/// False for nearly every normal form that is its own stem, by a look at its length and two
/// letters; true for all others. Spares most words the way through the rules.
constexpr bool mayLoseLetters(std::string_view normalForm);

/// Letters that every normal form of the given stem begins with; never empty for a stem that is
/// not. The search for a stem may pass over all words that begin otherwise.
std::string commonBeginning(std::string_view stem);

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
        return bits >> (static_cast<unsigned char>(c) & 31U) & 1U;
    };
    // Without a branch between the two, of which each would be guessed wrong every third word.
    return (has(lastOfEndings, normalForm.back()) |
            (has(firstOfFixedWords, normalForm.front()) &
             static_cast<std::uint32_t>(size >= shortestFixedWord))) != 0;
}
}  // namespace ombrix::Stemmer
