#include "OmbrixPlatform/Words.h"

#include <unicode/ubrk.h>
#include <unicode/utext.h>

#include "OmbrixPlatform/BreakIterator.h"

namespace ombrix::Words {

ByteRange Detail::stretch(std::string_view text, std::size_t begin, std::size_t unknown) {
    bool isAfterGap = false;
    std::size_t at = unknown;
    while (at < text.size()) {
        const auto [letter, length] = Letters::find(text, at);
        if (isAfterGap && letter.isKnown()) break;
        isAfterGap = letter.kind == Letters::Kind::gap;
        at += length;
    }
    return {begin, at};
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

std::vector<ByteRange> ranges(std::string_view text) {
    struct Silent {
        void begin() {}
        void add(const Letters::Letter&) {}
    } speller;
    std::vector<ByteRange> words;
    for (Piece piece = next(text, 0, speller); piece.kind != Piece::Kind::end;
         piece = next(text, piece.range.end, speller)) {
        if (piece.kind == Piece::Kind::word)
            words.push_back(piece.range);
        else
            appendIcuWords(text, piece.range, words);
    }
    return words;
}
}  // namespace ombrix::Words
