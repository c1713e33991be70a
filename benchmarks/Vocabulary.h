// Random numbers and words for the generated library, the same on every machine.
#pragma once

#include <array>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "Languages.h"

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
    explicit Vocabulary(Dice& dice, const Language& language = Languages::english())
        : frequent_(language.frequent.size()) {
        words_.assign(language.frequent.begin(), language.frequent.end());
        for (const std::string_view word : language.everyMeeting) {
            for (int i = 0; i < 50; ++i) words_.push_back(invented(dice, language));
            words_.emplace_back(word);
        }
        while (words_.size() < size) words_.push_back(invented(dice, language));
        fillTable();
    }

    const std::string& any(Dice& dice) const { return words_[table_[dice.below(tableSize)]]; }
    /// Any word except those of the list of frequent words.
    const std::string& content(Dice& dice) const {
        return words_[frequent_ + dice.below(size - frequent_)];
    }

  private:
    static constexpr std::size_t size = 9'000;
    static constexpr std::size_t tableSize = 1U << 20;

    /// Half of these words begin as an earlier one does: real words come in families.
    std::string invented(Dice& dice, const Language& language) {
        std::string word;
        if (!roots_.empty() && dice.chance(500)) {
            word = dice.of(roots_);
        } else {
            const std::size_t length = dice.below(10);
            const std::size_t syllables = length < 3 ? 1 : length < 9 ? 2 : 3;
            for (std::size_t i = 0; i < syllables; ++i) {
                word.append(dice.of(language.onsets));
                word.append(dice.of(language.vowels)).append(dice.of(language.codas));
            }
            roots_.push_back(word);
        }
        word.append(dice.of(language.endings));
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

    std::size_t frequent_;  // how many of the words come from that list
    std::vector<std::string> words_;
    std::vector<std::string> roots_;
    std::vector<std::uint16_t> table_;
};
}  // namespace ombrix
