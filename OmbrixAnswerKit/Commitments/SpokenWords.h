// Words as the rules about promises compare them: names, replies, and the same words heard twice.
// Coarser than the tokenizer's: nothing is stemmed, and "don't" is two words.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace ombrix {

/// The words of a text: its fold cut at every scalar that is no letter, mark or digit. The cut is
/// by scalar and not by character: a joiner inside a character separates two words. So does an
/// apostrophe of either form: a text has the same words with curly ones and with straight ones.
class SpokenWords {
  public:
    class Walk;

    SpokenWords() = default;
    explicit SpokenWords(std::string_view text);

    bool isEmpty() const { return joined_.empty(); }
    /// Stops at the `n`th word.
    bool hasAtLeast(std::size_t n) const;
    /// True when a recogniser heard the same words on two channels: these repeat `previous`, word
    /// by word or nearly so. False when either side has none. Time n log n in the words, memory
    /// linear in the distinct ones.
    bool isEchoOf(const SpokenWords& previous) const;
    /// In order, with repeats; views of this object.
    std::vector<std::string_view> list() const;
    /// Empty when there is none; a view of this object.
    std::string_view first() const;
    /// All of them, joined by single blanks.
    const std::string& joined() const { return joined_; }
    bool operator==(const SpokenWords&) const = default;

  private:
    std::string joined_;
};

/// The words one after the other, without a list of them, which for short words takes eight times
/// the memory of the text.
class SpokenWords::Walk {
  public:
    explicit Walk(const SpokenWords& words) : rest_(words.joined()) {}
    /// False after the last.
    bool next(std::string_view& word) {
        if (rest_.empty()) return false;
        word = rest_.substr(0, rest_.find(' '));
        rest_.remove_prefix(word.size() < rest_.size() ? word.size() + 1 : word.size());
        return true;
    }

  private:
    std::string_view rest_;
};
}  // namespace ombrix
