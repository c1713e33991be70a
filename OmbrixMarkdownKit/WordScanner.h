// The words of a text one after the other, without storing them: what `QueryTokenizer` and search
// are made of.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "OmbrixMarkdownKit/OneOnOne.h"
#include "OmbrixPlatform/ByteRange.h"
#include "OmbrixPlatform/Words.h"

namespace ombrix {

/// Reads one text, which must outlive it. Linear; ASCII words cost no allocation.
class WordScanner {
  public:
    explicit WordScanner(std::string_view text);
    WordScanner(const WordScanner&) = delete;
    WordScanner& operator=(const WordScanner&) = delete;

    /// A word; `raw` and `stem` stand until the next call.
    struct Token {
        std::string_view raw;
        std::string_view stem;
        ByteRange range;  ///< in the text that was given
    };
    /// False behind the last word.
    bool next(Token& token);

  private:
    bool nextPlainRun(Token& token);
    bool readLanes(std::size_t at);
    std::size_t joinedBefore(std::size_t at, std::size_t from) const;
    bool nextAscii(Token& token);
    bool nextIcu(Token& token);
    std::size_t appendRun(std::size_t at, std::size_t size);
    void finish(Token& token, std::size_t characters, ByteRange range);

    std::vector<OneOnOne::Match> forms_;
    std::string shadow_;
    std::string_view text_;  // the shadow when there are forms
    Words::Stretches stretches_;
    Words::Stretch stretch_;
    std::size_t place_ = 0;            // in an ASCII stretch
    std::uint64_t runBits_ = 0;        // of the bytes from `place_` on: letters and digits
    std::size_t knownBytes_ = 0;       // how many of its bits say something
    std::vector<ByteRange> icuWords_;  // of a stretch that is not ASCII
    std::size_t icuWord_ = 0;
    std::size_t form_ = 0;   // the first form that may still meet a word
    std::string rawBuffer_;  // of ASCII words; never less than what a block of lanes may fill
    std::string icuRaw_;
    std::size_t kept_ = 0;  // bytes of the normal form in the buffer
    std::string stemBuffer_;
};
}  // namespace ombrix
