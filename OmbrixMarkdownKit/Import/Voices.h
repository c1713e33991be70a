// What speaks for and against a conversation in the lines of a text.
#pragma once

#include <cstddef>

#include "OmbrixMarkdownKit/Import/Talk.h"

namespace ombrix::TranscriptImport {

struct Voices {
    std::size_t speeches = 0;    ///< lines that name a speaker
    std::size_t names = 0;       ///< different ones
    std::size_t returning = 0;   ///< of these, those that speak more than once
    std::size_t personal = 0;    ///< and those that are somebody's by themselves
    std::size_t caseless = 0;    ///< and those in a script without case, where any word is a name,
                                 ///< and without a number
    std::size_t texts = 0;       ///< lines with text
    std::size_t codeLike = 0;    ///< of these, those with marks of code and logs
    std::size_t sentences = 0;   ///< of these, those that end like a sentence
    std::size_t phrases = 0;     ///< and those of two words and more, and nothing but words
    std::size_t rounds = 0;      ///< how often three names or more came in one and the same order
    bool clocksGoBack = false;   ///< but for one midnight over which people stay
    bool beginsAtZero = false;   ///< its first clock is that of a recording that just began
    bool areClocksRound = true;  ///< as in a schedule, and none in the first five minutes
    bool areScheduled = false;   ///< three round clocks and more, each after the one before

    bool areAllPersonal() const { return personal == names; }
    bool endLikeSentences() const { return sentences * 2 >= texts; }
    bool areProse() const { return codeLike * 3 <= texts; }
    bool areRecords() const { return rounds >= 2; }
};
Voices voicesOf(const Talk& talk);
}  // namespace ombrix::TranscriptImport
