// Random numbers and words for the generated library, the same on every machine.
#pragma once

#include <array>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "LibraryWords.h"

namespace ombrix {

/// SplitMix64: small, fast, and the same everywhere, unlike the distributions of <random>.
class Dice {
  public:
    explicit Dice(std::uint64_t seed) : state_(seed) {}

    std::uint64_t next() {
        std::uint64_t z = (state_ += 0x9e3779b97f4a7c15U);
        z = (z ^ (z >> 30)) * 0xbf58476d1ce4e5b9U;
        z = (z ^ (z >> 27)) * 0x94d049bb133111ebU;
        return z ^ (z >> 31);
    }
    std::size_t below(std::size_t bound) { return static_cast<std::size_t>(next() % bound); }
    std::size_t between(std::size_t least, std::size_t most) {
        return least + below(most - least + 1);
    }
    bool chance(unsigned perMille) { return below(1000) < perMille; }
    template <typename List>
    const auto& of(const List& list) {
        return list[below(std::size(list))];
    }

  private:
    std::uint64_t state_;
};

/// Words by rank, drawn as often as in speech: two thirds come from the list of frequent words.
class Vocabulary {
  public:
    explicit Vocabulary(Dice& dice) {
        words_.assign(LibraryWords::frequent.begin(), LibraryWords::frequent.end());
        for (const std::string_view word : LibraryWords::everyMeeting) {
            for (int i = 0; i < 50; ++i) words_.push_back(invented(dice));
            words_.emplace_back(word);
        }
        while (words_.size() < size) words_.push_back(invented(dice));
        fillTable();
    }

    const std::string& any(Dice& dice) const { return words_[table_[dice.below(tableSize)]]; }
    /// Any word except those of the list of frequent words.
    const std::string& content(Dice& dice) const {
        const std::size_t first = LibraryWords::frequent.size();
        return words_[first + dice.below(size - first)];
    }

  private:
    static constexpr std::size_t size = 9'000;
    static constexpr std::size_t tableSize = 1U << 20;

    static std::string invented(Dice& dice) {
        static constexpr auto onsets = std::to_array<std::string_view>(
            {"b",  "c",  "d",  "f",  "g",  "h",  "l",   "m",  "n",  "p",
             "r",  "s",  "t",  "v",  "w",  "br", "cl",  "cr", "dr", "fl",
             "gr", "pl", "pr", "st", "tr", "th", "str", "qu", ""});
        static constexpr auto vowels =
            std::to_array<std::string_view>({"a", "e", "i", "o", "u", "ea", "ou", "ai", "io"});
        static constexpr auto codas = std::to_array<std::string_view>(
            {"", "", "", "n", "r", "s", "t", "l", "m", "nd", "st", "ck", "rt", "ng"});
        static constexpr auto endings = std::to_array<std::string_view>(
            {"", "", "", "", "s", "ed", "ing", "er", "ly", "tion", "ment", "es", "able", "y"});
        std::string word;
        const std::size_t length = dice.below(10);
        for (std::size_t syllable = 0; syllable < (length < 3   ? 1U
                                                   : length < 9 ? 2U
                                                                : 3U);
             ++syllable) {
            word.append(dice.of(onsets)).append(dice.of(vowels)).append(dice.of(codas));
        }
        word.append(dice.of(endings));
        return word;
    }

    void fillTable() {
        std::vector<double> upTo(size);
        double sum = 0;
        for (std::size_t rank = 0; rank < size; ++rank) {
            sum += std::pow(static_cast<double>(rank) + 3.0, -1.15);
            upTo[rank] = sum;
        }
        table_.resize(tableSize);
        std::size_t rank = 0;
        for (std::size_t place = 0; place < tableSize; ++place) {
            const double share = (static_cast<double>(place) + 0.5) / tableSize * sum;
            while (upTo[rank] < share) ++rank;
            table_[place] = static_cast<std::uint16_t>(rank);
        }
    }

    std::vector<std::string> words_;
    std::vector<std::uint16_t> table_;
};
}  // namespace ombrix
