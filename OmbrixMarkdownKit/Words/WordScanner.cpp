#include "OmbrixMarkdownKit/Words/WordScanner.h"

#include <algorithm>
#include <array>
#include <bit>
#include <cstdint>

#include "OmbrixMarkdownKit/Words/AsciiLanes.h"
#include "OmbrixMarkdownKit/Words/NormalForm.h"
#include "OmbrixMarkdownKit/Words/Stemmer.h"
#include "OmbrixPlatform/Characters.h"
#include "OmbrixPlatform/Text.h"
#include "OmbrixPlatform/Utf8.h"

namespace ombrix {
namespace {

constexpr std::size_t minRoom = 64;  // in the buffer of the normal form, before a run is copied

/// What a byte of an ASCII word becomes in the normal form, or one of these two.
constexpr char endsWord = 0;
constexpr char leavesNothing = 1;

consteval auto byteTable() {
    std::array<char, 256> table{};
    for (int i = 0; i < 128; ++i) {
        const char c = static_cast<char>(i);
        if (Text::isAsciiAlphanumeric(c))
            table[static_cast<std::size_t>(i)] = Text::asciiLowercased(c);
        else if (Words::AsciiRule::isJoined(c))
            table[static_cast<std::size_t>(i)] = leavesNothing;
    }
    return table;
}

constexpr std::array<char, 256> normalBytes = byteTable();

char normalByte(char c) { return normalBytes[static_cast<unsigned char>(c)]; }

bool hasPossessive(std::string_view asciiWord) {
    return asciiWord.size() > 1 && asciiWord[asciiWord.size() - 2] == '\'' &&
           (asciiWord.back() | 0x20) == 's';
}
}  // namespace

WordScanner::WordScanner(std::string_view text)
    : forms_(OneOnOne::matches(text)),
      shadow_(forms_.empty() ? std::string() : OneOnOne::rewritten(text, forms_)),
      text_(forms_.empty() ? text : shadow_),
      stretches_(text_),
      nextForm_(beginOfForm()),
      rawBuffer_(2 * minRoom, '\0') {}

void WordScanner::finish(Token& token, std::size_t characters, ByteRange range) {
    token.stem = Stemmer::mayLoseLetters(token.raw)
                     ? Stemmer::stem(token.raw, characters, stemBuffer_)
                     : token.raw;
    token.range = range;
    if (range.end > nextForm_) coverForm(token.range);
}

bool WordScanner::nextAnyWord(Token& token) {
    for (;;) {
        if (stretch_.isAscii ? nextAscii(token) : nextIcu(token)) return true;
        if (!stretches_.next(stretch_)) return false;
        place_ = stretch_.range.begin;
        if (stretch_.isAscii) continue;
        icuWords_.clear();
        icuWord_ = 0;
        Words::appendIcuWords(text_, stretch_.range, icuWords_);
    }
}

/// Appends the normal form of the run of letters and digits at `at` to the buffer; returns where
/// the run ends.
std::size_t WordScanner::appendRun(std::size_t at, std::size_t size) {
    const char* const text = text_.data();
    while (at < size) {
        if (rawBuffer_.size() < kept_ + minRoom)
            rawBuffer_.resize(std::max(2 * minRoom, 2 * rawBuffer_.size()));
        char* const raw = rawBuffer_.data();
        std::size_t kept = kept_;
        const std::size_t stop = std::min(size, at + (rawBuffer_.size() - kept));
        char c = leavesNothing;
        for (; at < stop && (c = normalByte(text[at])) != endsWord; ++at) {
            raw[kept] = c;  // overwritten by the next byte when it leaves nothing: no branch
            kept += c != leavesNothing ? 1 : 0;
        }
        kept_ = kept;
        if (c == endsWord) break;
    }
    return at;
}

/// How many bytes right before `at`, from `from` on, belong to the word there without a part in its
/// normal form: "_", "@", or a bridge that follows an "@". 0 for none.
std::size_t WordScanner::joinedBefore(std::size_t at, std::size_t from) const {
    const char* const text = text_.data();
    if (at <= from) return 0;
    if (normalByte(text[at - 1]) == leavesNothing) return 1;
    if (at < from + 2 || at == text_.size() || text[at - 2] != '@') return 0;
    return Words::AsciiRule::bridges('@', text[at - 1], text[at]) ? 2 : 0;
}

/// True when the word whose letter or digit is right before `at` continues at `at`.
bool WordScanner::continuesAt(std::size_t at) const {
    const char* const text = text_.data();
    return normalByte(text[at]) == leavesNothing ||
           Words::AsciiRule::bridges(text[at - 1], text[at], text[at + 1]);
}

/// The next word when it is a plain run of letters and digits, as nearly all are. Otherwise false:
/// the word, if there is one, starts at `place_` or later and has to be read byte by byte.
///
/// The next 64 bytes are classified once; from word to word only that mask is shifted, so that a
/// word does not wait for the loads of the one before it.
bool WordScanner::nextPlainRun(Token& token) {
    const char* const text = text_.data();
    const std::size_t lastEnd = place_;
    for (;;) {
        if (runBits_ == 0) {
            place_ += knownBytes_;
            knownBytes_ = 0;
            if (!readLanes(place_)) break;
            continue;
        }
        const auto skipped = static_cast<std::size_t>(std::countr_zero(runBits_));
        const std::size_t begin = place_ + skipped;
        const auto length = static_cast<std::size_t>(std::countr_one(runBits_ >> skipped));
        if (skipped + length == knownBytes_) {  // the run may be longer than what is known
            if (skipped == 0 || !readLanes(begin)) {
                place_ = begin;
                break;
            }
            continue;
        }
        const std::size_t end = begin + length;
        // Nearly every word is between blanks, and a blank joins nothing.
        if ((text[end] != ' ' && continuesAt(end)) ||
            (begin > lastEnd && text[begin - 1] != ' ' && joinedBefore(begin, lastEnd) > 0)) {
            place_ = begin;
            break;
        }
        place_ = end;
        runBits_ = runBits_ >> skipped >> length;
        knownBytes_ -= skipped + length;
        if (length < minCharacters) continue;
        for (std::size_t i = 0; i < length; i += AsciiLanes::width)
            AsciiLanes::copyLowercased(text + begin + i, rawBuffer_.data() + i);
        token.raw = std::string_view(rawBuffer_.data(), length);
        finish(token, length, {begin, end});
        return true;
    }
    while (const std::size_t joined = joinedBefore(place_, lastEnd)) place_ -= joined;
    runBits_ = 0;
    knownBytes_ = 0;
    return false;
}

/// Classifies the 64 bytes at `at`; false when the stretch is too short for them and for the bytes
/// after them that are read along.
bool WordScanner::readLanes(std::size_t at) {
    if (at + AsciiLanes::blockWidth + AsciiLanes::width > stretch_.range.end) return false;
    place_ = at;
    knownBytes_ = AsciiLanes::blockWidth;
    runBits_ = 0;
    for (std::size_t i = 0; i < AsciiLanes::blockWidth; i += AsciiLanes::width)
        runBits_ |= std::uint64_t{AsciiLanes::alphanumeric(text_.data() + at + i)} << i;
    return true;
}

bool WordScanner::nextAscii(Token& token) {
    if (nextPlainRun(token)) return true;
    const char* const text = text_.data();
    const std::size_t size = stretch_.range.end;
    std::size_t at = place_;
    for (;;) {
        while (at < size && normalByte(text[at]) == endsWord) ++at;
        if (at >= size) break;
        const std::size_t begin = at;
        kept_ = 0;
        at = appendRun(at, size);
        while (at + 1 < size && Words::AsciiRule::bridges(text[at - 1], text[at], text[at + 1]))
            at = appendRun(at + 1, size);
        if (hasPossessive(text_.substr(begin, at - begin))) --kept_;
        if (kept_ < minCharacters) continue;
        token.raw = std::string_view(rawBuffer_.data(), kept_);
        place_ = at;
        finish(token, kept_, {begin, at});
        return true;
    }
    place_ = size;
    return false;
}

bool WordScanner::nextIcu(Token& token) {
    while (icuWord_ < icuWords_.size()) {
        const ByteRange range = icuWords_[icuWord_++];
        icuRaw_ = NormalForm::of(range.of(text_));
        const std::size_t characters = Characters::count(icuRaw_);
        if (characters < minCharacters) continue;
        token.raw = icuRaw_;
        finish(token, characters, range);
        return true;
    }
    return false;
}

std::size_t WordScanner::beginOfForm() const {
    return form_ < forms_.size() ? forms_[form_].range.begin : std::string_view::npos;
}

/// Extends `range` over the written form, which is longer than the "1o1" in its place.
void WordScanner::coverForm(ByteRange& range) {
    while (form_ < forms_.size() && forms_[form_].range.end <= range.begin) ++form_;
    for (std::size_t i = form_; i < forms_.size() && forms_[i].range.begin < range.end; ++i)
        range.end = std::max(range.end, forms_[i].range.end);
    nextForm_ = beginOfForm();
}
}  // namespace ombrix
