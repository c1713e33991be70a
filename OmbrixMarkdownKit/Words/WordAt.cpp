#include "OmbrixMarkdownKit/Words/WordAt.h"

#include <algorithm>
#include <bit>

#include "OmbrixMarkdownKit/Words/AsciiLanes.h"
#include "OmbrixPlatform/Letters.h"
#include "OmbrixPlatform/Text.h"

namespace ombrix::WordAt {
namespace {

/// What a character next to a word means for it.
enum class Side {
    separates,  ///< whatever is beyond it
    bridges,    ///< joins the word to what is beyond it, if that is a part of a word
    joins,      ///< is a part of the word, or may be
};

struct Neighbour {
    Side side = Side::separates;
    std::size_t length = 1;
};

Neighbour neighbour(const Letters::Found& found) {
    switch (found.letter.kind) {
        case Letters::Kind::gap:
            return {Side::separates, found.length};
        case Letters::Kind::betweenLetters:
        case Letters::Kind::betweenDigits:
        case Letters::Kind::betweenBoth:
            return {Side::bridges, found.length};
        default:
            return {Side::joins};
    }
}

Neighbour after(std::string_view text, std::size_t at) {
    return at >= text.size() ? Neighbour() : neighbour(Letters::find(text, at));
}

Neighbour before(std::string_view text, std::size_t at) {
    return at == 0 ? Neighbour() : neighbour(Letters::findBefore(text, at));
}

bool beginsAt(std::string_view text, std::size_t at) {
    const auto [side, length] = before(text, at);
    if (side != Side::bridges) return side == Side::separates;
    return before(text, at - length).side != Side::joins;
}

bool endsAt(std::string_view text, std::size_t at) {
    const auto [side, length] = after(text, at);
    if (side != Side::bridges) return side == Side::separates;
    return after(text, at + length).side != Side::joins;
}

/// The length of "'s" or "’s" at `at`, when a word ends there; 0 for none.
std::size_t possessiveLength(std::string_view text, std::size_t at) {
    for (const std::string_view apostrophe : {"'", "\u2019"}) {
        const std::size_t letter = at + apostrophe.size();
        if (text.substr(at).starts_with(apostrophe) && letter < text.size() &&
            (text[letter] | 0x20) == 's' && endsAt(text, letter + 1))
            return apostrophe.size() + 1;
    }
    return 0;
}

std::size_t endOfRun(std::string_view text, std::size_t at) {
    for (; at + AsciiLanes::width <= text.size(); at += AsciiLanes::width) {
        const auto length =
            static_cast<std::size_t>(std::countr_one(AsciiLanes::alphanumeric(text.data() + at)));
        if (length < AsciiLanes::width) return at + length;
    }
    while (at < text.size() && Text::isAsciiAlphanumeric(text[at])) ++at;
    return at;
}
}  // namespace

std::optional<PlainWord> plain(std::string_view text, std::size_t at) {
    if (!beginsAt(text, at)) return std::nullopt;
    const std::size_t end = endOfRun(text, at);
    const PlainWord word{text.substr(at, end - at), end};
    if (endsAt(text, end)) return word;
    const std::size_t possessive = possessiveLength(text, end);
    if (possessive == 0) return std::nullopt;
    return PlainWord{word.letters, end + possessive};
}

bool isPartOfOneForm(std::string_view letters) {
    constexpr std::size_t longest = 4;
    if (letters.size() > longest) return false;
    for (const std::string_view part : {"1", "1s", "one", "ones", "on", "to"})
        if (letters.size() == part.size() && Text::startsWithIgnoringAsciiCase(letters, part))
            return true;
    return false;
}
}  // namespace ombrix::WordAt
