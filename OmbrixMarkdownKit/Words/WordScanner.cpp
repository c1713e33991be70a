#include "OmbrixMarkdownKit/Words/WordScanner.h"

#include <algorithm>
#include <array>
#include <bit>
#include <cstdint>
#include <cstring>

#include "OmbrixMarkdownKit/Words/AsciiLanes.h"
#include "OmbrixMarkdownKit/Words/NormalForm.h"
#include "OmbrixMarkdownKit/Words/Stemmer.h"
#include "OmbrixPlatform/Letters.h"
#include "OmbrixPlatform/Text.h"

namespace ombrix {
namespace {

constexpr std::size_t minRoom = 64;  // in the buffer of the normal form, before a run is copied

/// True for an ASCII character that is inside words and not in their normal forms.
constexpr bool isSilent(char c) { return c == '_' || c == '@'; }

/// Collects the normal form of a word whose letters are known.
class Speller {
  public:
    explicit Speller(std::string& buffer) : buffer_(buffer) {}

    void begin() { size_ = characters_ = 0; }
    void add(const Letters::Letter& letter) {
        if (buffer_.size() < size_ + minRoom) buffer_.resize(2 * buffer_.size());
        // Copied as a whole: a dropped scalar is overwritten by the next one, without a branch.
        std::memcpy(buffer_.data() + size_, letter.fold.data(), letter.fold.size());
        size_ += letter.characters == 0 ? 0 : letter.foldSize;
        characters_ += letter.characters;
    }
    void dropLast() {
        --size_;
        --characters_;
    }
    std::size_t characters() const { return characters_; }
    std::string_view spelled() const { return {buffer_.data(), size_}; }

  private:
    std::string& buffer_;
    std::size_t size_ = 0;
    std::size_t characters_ = 0;
};

bool hasPossessive(std::string_view text, const Words::Piece& word) {
    const auto [begin, end] = word.range;
    if (word.lastPart == begin) return false;
    const auto joint = text.substr(0, word.lastPart);
    if (!joint.ends_with('\'') && !joint.ends_with("\u2019")) return false;
    const auto last = Letters::find(text, word.lastPart);
    return word.lastPart + last.length == end && Letters::foldOf(last, text, word.lastPart) == "s";
}
}  // namespace

WordScanner::WordScanner(std::string_view text)
    : forms_(OneOnOne::matches(text)),
      shadow_(forms_.empty() ? std::string() : OneOnOne::rewritten(text, forms_)),
      text_(forms_.empty() ? text : shadow_),
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
    do {
        if (nextIcu(token)) return true;
        std::size_t from = place_;
        if (nextPlainRun(token, from) || nextKnown(token, from)) return true;
    } while (!icuWords_.empty() || place_ < text_.size());
    return false;
}

/// True when the word whose ASCII letter or digit is right before `at` may continue at `at`.
bool WordScanner::continuesAt(std::size_t at) const {
    const char* const text = text_.data();
    if (isSilent(text[at])) return true;
    return Words::AsciiRule::bridges(text[at - 1], text[at], text[at + 1]) ||
           (Words::AsciiRule::isJoint(text[at]) && !Text::isAscii(text[at + 1]));
}

/// The next word when it is a plain run of ASCII letters and digits, as nearly all are. Otherwise
/// false: the word, if there is one, starts at `from` or later and has to be read by the table.
///
/// The next 64 bytes are classified once; from word to word only that mask is shifted, so that a
/// word does not wait for the loads of the one before it.
bool WordScanner::nextPlainRun(Token& token, std::size_t& from) {
    const char* const text = text_.data();
    for (;;) {
        if (runBits_ == 0) {
            place_ += knownBytes_;
            knownBytes_ = 0;
            if (!readLanes(place_)) return false;
            continue;
        }
        const auto skipped = static_cast<std::size_t>(std::countr_zero(runBits_));
        const std::size_t begin = place_ + skipped;
        const auto length = static_cast<std::size_t>(std::countr_one(runBits_ >> skipped));
        if (isForeign(skipped, length)) return false;
        if (skipped + length == knownBytes_) {  // the run may be longer than what is known
            if (skipped == 0 || !readLanes(begin)) return false;
            continue;
        }
        const std::size_t end = begin + length;
        // Nearly every word is between blanks, and a blank joins nothing. A joint before a run
        // belongs to the word if an "@" is before it: letters there would have been read with it.
        if (text[end] != ' ' && continuesAt(end)) return false;
        if (begin > from && text[begin - 1] != ' ' &&
            (isSilent(text[begin - 1]) || (begin > from + 1 && text[begin - 2] == '@')))
            return false;
        moveTo(end);
        from = end;
        if (length < minCharacters) continue;
        for (std::size_t i = 0; i < length; i += AsciiLanes::width)
            AsciiLanes::copyLowercased(text + begin + i, rawBuffer_.data() + i);
        token.raw = std::string_view(rawBuffer_.data(), length);
        finish(token, length, {begin, end});
        return true;
    }
}

/// Classifies the 64 bytes at `at`; false when the text is too short for them and for the bytes
/// after them that are read along.
bool WordScanner::readLanes(std::size_t at) {
    if (at + AsciiLanes::blockWidth + AsciiLanes::width > text_.size()) return false;
    place_ = at;
    knownBytes_ = AsciiLanes::blockWidth;
    runBits_ = 0;
    foreignBits_ = 0;
    for (std::size_t i = 0; i < AsciiLanes::blockWidth; i += AsciiLanes::width) {
        runBits_ |= std::uint64_t{AsciiLanes::alphanumeric(text_.data() + at + i)} << i;
        foreignBits_ |= std::uint64_t{AsciiLanes::notAscii(text_.data() + at + i)} << i;
    }
    runBits_ |= foreignBits_;
    return true;
}

/// Goes on from `place`, with what is already known of the bytes there.
void WordScanner::moveTo(std::size_t place) {
    const std::size_t count = place - place_;
    const bool isKnown = place >= place_ && count < knownBytes_;
    runBits_ = isKnown ? runBits_ >> count : 0;
    foreignBits_ = isKnown ? foreignBits_ >> count : 0;
    knownBytes_ = isKnown ? knownBytes_ - count : 0;
    place_ = place;
}

/// The next word of known letters. False at the end, and when a stretch comes first whose words
/// only ICU can find; they are then in `icuWords_`.
bool WordScanner::nextKnown(Token& token, std::size_t from) {
    icuWords_.clear();
    icuWord_ = 0;
    Speller speller(rawBuffer_);
    auto piece = Words::next(text_, from, speller);
    for (; piece.kind == Words::Piece::Kind::word;
         piece = Words::next(text_, piece.range.end, speller)) {
        if (hasPossessive(text_, piece)) speller.dropLast();
        if (speller.characters() < minCharacters) continue;
        moveTo(piece.range.end);
        token.raw = speller.spelled();
        finish(token, speller.characters(), piece.range);
        return true;
    }
    // The words of a stretch come before those of what is known after it.
    place_ = piece.range.end;
    runBits_ = foreignBits_ = knownBytes_ = 0;
    if (piece.kind == Words::Piece::Kind::stretch)
        Words::appendIcuWords(text_, piece.range, icuWords_);
    return false;
}

bool WordScanner::nextIcu(Token& token) {
    while (icuWord_ < icuWords_.size()) {
        const ByteRange range = icuWords_[icuWord_++];
        icuRaw_.clear();
        const std::size_t characters = NormalForm::append(icuRaw_, range.of(text_));
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
