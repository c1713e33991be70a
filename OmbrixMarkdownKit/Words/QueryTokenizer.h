// The one place where text becomes words that can be compared: questions and transcripts go through
// the same steps, so that a keyword and a spoken word have equal stems.
#pragma once

#include <cstddef>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "OmbrixMarkdownKit/Words/Stemmer.h"
#include "OmbrixPlatform/ByteRange.h"

namespace ombrix::QueryTokenizer {

struct Word {
    std::string raw;   ///< folded, without a possessive, letters and numbers only
    std::string stem;  ///< `raw` without its ending, or the fixed stem of a business word
    ByteRange range;   ///< in the given text, also for a rewritten "one on one"
    bool operator==(const Word&) const = default;
};

using Stemmer::minPluralStem;
using Stemmer::minStem;

/// Forwards to `NormalForm::of`.
std::string normalize(std::string_view word);

/// The stem of a normal form: "stories" is "story", "planning" is "plan", "decisions" is "decid".
/// Conservative: it leaves a word alone rather than cut too much.
std::string stem(std::string_view normalForm);

/// The words of a text, in order, "1:1" and "one-on-one" being the word "1o1". Words of fewer than
/// two characters are left out. Linear.
std::vector<Word> words(std::string_view text);

/// The stems of `words(text)`, in order; nothing is filtered.
std::vector<std::string> tokens(std::string_view text);

/// What a question searches for, without repeats, in its order: the stems of its content words, and
/// each quoted phrase of two words or more as its stems joined by one blank.
std::vector<std::string> keywords(std::string_view query);

/// False when the word, raw or stemmed, is a stop word, a word of time or a number word.
bool isContent(const Word& word);

/// The first place in `text` where words with the given stems follow each other: from the start of
/// the first to the end of the last. Nothing for no stems.
std::optional<ByteRange> firstRange(std::span<const std::string> stems, std::string_view text);

/// How often `phrase` occurs in `tokens`, overlapping occurrences included. 0 for an empty phrase.
std::size_t count(std::span<const std::string> phrase, std::span<const std::string> tokens);

/// A query cut at white space. Text in double quotes, straight or typographic, is kept together and
/// loses its quotes; one that is not closed runs to the end.
std::vector<std::string> terms(std::string_view query);
}  // namespace ombrix::QueryTokenizer
