#include "OmbrixMarkdownKit/Words/WordBeginnings.h"

#include <algorithm>
#include <array>
#include <bit>
#include <cstring>
#include <utility>

#include "OmbrixMarkdownKit/Words/WordMarks.h"
#include "OmbrixPlatform/Letters.h"
#include "OmbrixPlatform/Text.h"
#include "OmbrixPlatform/Utf8.h"

namespace ombrix {
namespace {

using Letters::Letter;
namespace Table = Letters::Table;

unsigned char byteAt(std::string_view text, std::size_t at) {
    return static_cast<unsigned char>(text[at]);
}

/// True when one begins with the other. Most differ in the first bytes, before a call would pay.
bool agree(std::string_view a, std::string_view b) {
    const std::size_t shared = std::min(a.size(), b.size());
    for (std::size_t i = 0; i < shared; ++i)
        if (a[i] != b[i]) return false;
    return true;
}

/// True when a word that goes on at `at` can go on with `rest`, which may end inside the fold of a
/// scalar. `last` is the letter before.
bool mayGoOnWith(std::string_view rest, std::string_view text, std::size_t at, Letter last) {
    while (!rest.empty()) {
        if (at == text.size()) return false;
        const auto found = Letters::find(text, at);
        // Quotes are inside Hebrew words.
        if (found.letter.kind == Letters::Kind::gap) return !last.isKnown() && text[at] == '"';
        if (found.letter.foldSize == Letter::noFold) return true;
        const auto fold = Letters::foldOf(found, text, at);
        // What is not in normal forms can stand inside a word.
        if (found.letter.characters == 0 && !fold.empty()) return true;
        if (!agree(fold, rest)) return false;
        rest.remove_prefix(std::min(fold.size(), rest.size()));
        at += found.length;
        last = found.letter;
    }
    return true;
}

/// The scalars of each page of the table with which a word of the prefixes can begin.
std::vector<std::uint64_t> startsOfPages(const std::vector<std::string>& prefixes) {
    std::array<bool, 256> firstBytes{};
    bool isHangul = false;  // as folds have it, letter by letter
    for (const auto& prefix : prefixes) {
        firstBytes[byteAt(prefix, 0)] = true;
        isHangul = isHangul || agree(prefix, "\xE1\x84");
    }
    const auto starts = [&](const Letter& letter) {
        if (letter.isPrefix) return true;
        if (letter.foldSize == Letter::noFold) return !letter.needsDictionary || isHangul;
        if (letter.foldSize == Letter::asItIs || letter.foldSize == 0) return false;
        const std::string_view fold(letter.fold.data(), letter.foldSize);
        return firstBytes[byteAt(fold, 0)] &&
               std::ranges::any_of(prefixes,
                                   [&](const auto& prefix) { return agree(fold, prefix); });
    };
    std::vector<std::uint64_t> pages(Table::letterCount / Table::pageSize);
    for (std::size_t i = 0; i < Table::letterCount; ++i) {
        if (i / Table::pageSize != Table::asciiPages && starts(Table::letters[i]))
            pages[i / Table::pageSize] |= std::uint64_t{1} << (i % Table::pageSize);
    }
    return pages;
}
}  // namespace

WordBeginnings::WordBeginnings(std::vector<std::string> prefixes) : prefixes_(std::move(prefixes)) {
    const auto pages = startsOfPages(prefixes_);
    for (std::size_t i = 0; i < afterOne_.size(); ++i) afterOne_[i] = pages[Table::pagesOfTwo[i]];
    for (std::size_t i = 0; i < afterTwo_.size(); ++i) afterTwo_[i] = pages[Table::pagesOfThree[i]];
    // A scalar that is its own fold has no place of its own in the table.
    for (const auto& prefix : prefixes_) {
        const auto [scalar, length] = Utf8::decode(prefix, 0);
        const auto last = std::uint64_t{1} << (scalar & 0x3FU);
        if (length == 2) afterOne_[scalar >> 6U] |= last;
        if (length == 3) afterTwo_[scalar >> 6U] |= last;
    }
    addHeads();
}

void WordBeginnings::addHeads() {
    std::vector<std::string_view> sorted(prefixes_.begin(), prefixes_.end());
    std::erase_if(sorted, [](std::string_view text) { return !Text::isAscii(text[0]); });
    std::ranges::sort(sorted);
    for (const auto prefix : sorted) {
        std::array<char, sizeof(Head::bytes)> bytes{}, mask{};
        std::size_t size = 0;
        while (size < std::min(prefix.size(), bytes.size()) &&
               Text::isAsciiAlphanumeric(prefix[size])) {
            bytes[size] = prefix[size];
            mask[size++] = static_cast<char>(0xFF);
        }
        heads_.push_back({.bytes = std::bit_cast<std::uint64_t>(bytes),
                          .mask = std::bit_cast<std::uint64_t>(mask),
                          .isWhole = size == prefix.size()});
        for (std::size_t i = byteAt(prefix, 0) + 1U; i < headsFrom_.size(); ++i) ++headsFrom_[i];
    }
}

bool WordBeginnings::mayBeginInAscii(std::string_view text, std::size_t at) const {
    if (text.size() - at < sizeof(Head::bytes) || !Text::isAsciiAlphanumeric(text[at]))
        return beginsAt(text, at);
    const Fit fit = headFit(text, at);
    return fit == Fit::yes || (fit == Fit::unknown && beginsAt(text, at));
}

/// Judges an ASCII letter or digit by the eight bytes from there on, without a look at each letter.
/// Rules out most places where a word of no prefix begins.
WordBeginnings::Fit WordBeginnings::headFit(std::string_view text, std::size_t at) const {
    std::uint64_t word = 0;
    std::memcpy(&word, text.data() + at, sizeof word);
    word |= (word & 0x4040404040404040U) >> 1U;  // letters in lower case; no digit comes of it
    const auto first = static_cast<unsigned char>(Text::asciiLowercased(text[at]));
    for (std::uint32_t i = headsFrom_[first]; i < headsFrom_[first + 1U]; ++i) {
        const std::uint64_t different = (word ^ heads_[i].bytes) & heads_[i].mask;
        if (different == 0) {
            const bool isFirst = at == 0 || (Text::isAscii(text[at - 1]) &&
                                             !Text::isAsciiAlphanumeric(text[at - 1]));
            return heads_[i].isWhole && isFirst ? Fit::yes : Fit::unknown;
        }
        const int bits = std::endian::native == std::endian::little ? std::countr_zero(different)
                                                                    : std::countl_zero(different);
        // Another letter or a gap ends the comparison; anything else can be inside the word.
        const char other = text[at + static_cast<std::size_t>(bits) / 8];
        if (!Text::isAscii(other) || WordMarks::isSilentJoint(other)) return Fit::unknown;
    }
    return Fit::no;
}

bool WordBeginnings::beginsAt(std::string_view text, std::size_t at) const {
    const auto found = Letters::find(text, at);
    // A prefix joins with the letter after it into one character, so the word can begin there.
    if (found.letter.isPrefix) return true;
    if (found.letter.foldSize == Letter::noFold) {
        const std::string fold = Text::folded(Utf8::decode(text, at).scalar);
        return !fold.empty() && std::ranges::any_of(prefixes_, [&](const auto& prefix) {
            return agree(fold, prefix);
        });
    }
    const auto fold = Letters::foldOf(found, text, at);
    const bool begins = std::ranges::any_of(prefixes_, [&](std::string_view prefix) {
        if (!agree(fold, prefix)) return false;
        prefix.remove_prefix(std::min(fold.size(), prefix.size()));
        return mayGoOnWith(prefix, text, at + found.length, found.letter);
    });
    // Not inside a word: between two letters is no boundary. Asked last, since few places get here.
    return begins && !(found.letter.isSpelled() && at > 0 &&
                       Letters::findBefore(text, at).letter.isSpelled());
}
}  // namespace ombrix
