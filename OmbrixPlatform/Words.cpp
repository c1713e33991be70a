#include "OmbrixPlatform/Words.h"

#include <unicode/ubrk.h>

#include "OmbrixPlatform/BreakIterator.h"

namespace ombrix::Words {

namespace {

/// True when a text can be cut between two scalars. Nothing joins what follows a gap to what is
/// before it, except for marks, and quotes between Hebrew letters; no dictionary looks over a gap.
bool separates(const Letters::Letter& before, const Letters::Letter& after) {
    return before.kind == Letters::Kind::gap &&
           (after.isKnown() || (after.needsDictionary && !after.attaches));
}
}  // namespace

ByteRange Detail::stretch(std::string_view text, std::size_t begin, std::size_t unknown) {
    auto last = Letters::find(text, unknown);
    std::size_t at = unknown + last.length;
    while (at < text.size()) {
        const auto found = Letters::find(text, at);
        if (separates(last.letter, found.letter)) break;
        at += found.length;
        last = found;
    }
    return {begin, at};
}

ByteRange stretchAround(std::string_view text, std::size_t at) {
    std::size_t begin = at;
    for (auto after = Letters::find(text, at); begin > 0;) {
        const auto before = Letters::findBefore(text, begin);
        if (separates(before.letter, after.letter)) break;
        begin -= before.length;
        after = before;
    }
    return Detail::stretch(text, begin, at);
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
