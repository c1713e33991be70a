// The words of a text one after the other, without storing them. `QueryTokenizer` and search are
// built on it; docs/search.md describes its ways to read a word.
#pragma once

#include <bit>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "OmbrixMarkdownKit/Words/AsciiLanes.h"
#include "OmbrixMarkdownKit/Words/OneOnOne.h"
#include "OmbrixMarkdownKit/Words/Stemmer.h"
#include "OmbrixPlatform/ByteRange.h"
#include "OmbrixPlatform/Words.h"

namespace ombrix {

/// Reads one text, which must outlive it. Linear; words of known letters cost no allocation.
class WordScanner {
  public:
    /// Shorter words are left out.
    static constexpr std::size_t minCharacters = 2;

    explicit WordScanner(std::string_view text);
    WordScanner(const WordScanner&) = delete;
    WordScanner& operator=(const WordScanner&) = delete;

    /// A word; `raw` and `stem` are valid until the next call.
    struct Token {
        std::string_view raw;
        std::string_view stem;
        ByteRange range;  ///< in the text that was given
    };
    /// False after the last word.
    bool next(Token& token) { return nextBetweenBlanks(token) || nextAnyWord(token); }

  private:
    bool nextBetweenBlanks(Token& token);
    bool nextAnyWord(Token& token);
    bool nextPlainRun(Token& token, std::size_t& from);
    bool nextKnown(Token& token, std::size_t from);
    bool nextIcu(Token& token);
    bool readLanes(std::size_t at);
    bool isForeign(std::size_t skipped, std::size_t length) const;
    void moveTo(std::size_t place);
    bool continuesAt(std::size_t at) const;
    void finish(Token& token, std::size_t characters, ByteRange range);
    std::size_t beginOfForm() const;
    void coverForm(ByteRange& range);

    std::vector<OneOnOne::Match> forms_;
    std::string shadow_;
    std::string_view text_;  // the shadow when there are forms
    std::size_t place_ = 0;
    // About the bytes from `place_` on, a bit for each:
    std::uint64_t runBits_ = 0;        // letters, digits, and bytes that are not ASCII
    std::uint64_t foreignBits_ = 0;    // the latter alone
    std::size_t knownBytes_ = 0;       // how many of these bits are valid
    std::vector<ByteRange> icuWords_;  // of a stretch that only ICU can cut
    std::size_t icuWord_ = 0;
    std::size_t form_ = 0;   // the first form that can still overlap a word
    std::size_t nextForm_;   // where it starts; npos when there is none
    std::string rawBuffer_;  // of words read without ICU; has room for what a block can fill
    std::string icuRaw_;
    std::string stemBuffer_;
};

// ---- inline, since it runs for every word of a library ------------------------------------------

/// True when the run of `length` bytes, at least one, holds a byte that is not ASCII.
inline bool WordScanner::isForeign(std::size_t skipped, std::size_t length) const {
    return foreignBits_ >> skipped << (AsciiLanes::blockWidth - length) != 0;
}

/// The next word when it is a run of ASCII letters and digits between two blanks in the block that
/// is already classified. False, with nothing changed, for every other.
inline bool WordScanner::nextBetweenBlanks(Token& token) {
    if (runBits_ == 0) return false;
    const auto skipped = static_cast<std::size_t>(std::countr_zero(runBits_));
    const auto length = static_cast<std::size_t>(std::countr_one(runBits_ >> skipped));
    const char* const run = text_.data() + place_ + skipped;
    // Single letters are no words, and one copy takes sixteen.
    if (skipped == 0 || skipped + length == knownBytes_ || length - 2 > AsciiLanes::width - 2 ||
        run[-1] != ' ' || run[length] != ' ' || (foreignBits_ != 0 && isForeign(skipped, length)))
        return false;
    const std::size_t begin = place_ + skipped;
    place_ = begin + length;
    runBits_ = runBits_ >> skipped >> length;
    foreignBits_ = foreignBits_ >> skipped >> length;
    knownBytes_ -= skipped + length;
    AsciiLanes::copyLowercased(run, rawBuffer_.data());
    token.raw = std::string_view(rawBuffer_.data(), length);
    token.stem = Stemmer::mayLoseLetters(token.raw) ? Stemmer::stem(token.raw, length, stemBuffer_)
                                                    : token.raw;
    token.range = {begin, place_};
    if (place_ > nextForm_) coverForm(token.range);
    return true;
}
}  // namespace ombrix
