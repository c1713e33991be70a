#include "OmbrixPlatform/Words.h"

#include <unicode/ubrk.h>
#include <unicode/utext.h>

#include "OmbrixPlatform/BreakIterator.h"
#include "OmbrixPlatform/Text.h"
#include "OmbrixPlatform/Utf8.h"

namespace ombrix::Words {
namespace {

constexpr bool isAsciiSpace(char c) { return c == ' ' || c == '\n' || c == '\t'; }

/// The end of the first ASCII blank at or after `from` that is followed by ASCII or by the end: the
/// text can be cut there. A combining mark after a blank would belong to the blank.
std::size_t nextCut(std::string_view text, std::size_t from) {
    for (std::size_t at = from; at < text.size(); ++at) {
        if (isAsciiSpace(text[at]) && (at + 1 == text.size() || Text::isAscii(text[at + 1])))
            return at + 1;
    }
    return text.size();
}

std::size_t firstNotAscii(std::string_view text, std::size_t from) {
    constexpr std::size_t step = 256;  // small, because the block with the byte is read twice
    while (from + step <= text.size() && Utf8::isAscii(text.substr(from, step))) from += step;
    while (from < text.size() && Text::isAscii(text[from])) ++from;
    return from;
}
}  // namespace

bool Stretches::next(Stretch& stretch) {
    if (place_ >= text_.size()) return false;
    const std::size_t begin = place_;
    const std::size_t at = firstNotAscii(text_, begin);
    if (at == text_.size()) {
        place_ = at;
        stretch = {{begin, at}, true};
        return true;
    }
    // Back to the blank before the word that contains the first byte that is not ASCII. When that
    // byte follows the blank directly, it may be a mark on the blank, so the blank goes with it.
    std::size_t cut = at;
    if (cut > begin && isAsciiSpace(text_[cut - 1])) --cut;
    while (cut > begin && !isAsciiSpace(text_[cut - 1])) --cut;
    if (cut > begin) {
        place_ = cut;
        stretch = {{begin, cut}, true};
        return true;
    }
    place_ = nextCut(text_, at);
    stretch = {{begin, place_}, false};
    return true;
}

void appendIcuWords(std::string_view text, ByteRange stretch, std::vector<ByteRange>& words) {
    BreakIterator iterator(BreakIterator::Kind::word, stretch.of(text));
    auto start = iterator.first();
    for (auto end = iterator.next(); end != BreakIterator::done; end = iterator.next()) {
        if (iterator.ruleStatus() != UBRK_WORD_NONE)
            words.push_back({stretch.begin + start, stretch.begin + end});
        start = end;
    }
}

ByteRange asciiWord(std::string_view text, std::size_t from) {
    using namespace AsciiRule;
    const std::size_t size = text.size();
    for (std::size_t begin = from; begin < size; ++begin) {
        if (!isJoined(text[begin])) continue;
        std::size_t end = begin + 1;
        for (;;) {
            while (end < size && isJoined(text[end])) ++end;
            if (end + 1 >= size || !bridges(text[end - 1], text[end], text[end + 1])) break;
            end += 2;
        }
        if (end - begin > 1 || text[begin] != '_') return {begin, end};
    }
    return {size, size};
}

std::vector<ByteRange> ranges(std::string_view text) {
    std::vector<ByteRange> words;
    Stretches stretches(text);
    for (Stretch stretch; stretches.next(stretch);) {
        if (!stretch.isAscii) {
            appendIcuWords(text, stretch.range, words);
            continue;
        }
        const auto ascii = text.substr(0, stretch.range.end);
        for (auto word = asciiWord(ascii, stretch.range.begin); !word.isEmpty();
             word = asciiWord(ascii, word.end)) {
            words.push_back(word);
        }
    }
    return words;
}
}  // namespace ombrix::Words
