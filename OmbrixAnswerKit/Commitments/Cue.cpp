#include "OmbrixAnswerKit/Commitments/Cue.h"

#include <algorithm>

#include "OmbrixPlatform/Text.h"
#include "OmbrixPlatform/Utf8.h"

namespace ombrix {
Cue::Cue(std::string_view pattern, std::span<const std::string_view> openings)
    : regex_(pattern, Regex::Case::ignored), openings_(openings) {
    for (const std::string_view opening : openings_) {
        for (std::size_t c = 0; c < first_.size(); ++c)
            if (Text::asciiLowercased(static_cast<char>(c)) == opening.front()) first_[c] = true;
    }
}

bool Cue::opensWithDigit() const {
    return std::ranges::any_of(openings_, [](auto o) { return Text::isAsciiDigit(o.front()); });
}

/// The first byte of an opening that no ASCII word character precedes.
std::optional<std::size_t> Cue::firstOpening(std::string_view text) const {
    bool inWord = false;
    for (std::size_t at = 0; at < text.size(); ++at) {
        const bool startsWord = !inWord;
        inWord = Text::isAsciiWordByte(text[at]);
        if (!startsWord || !inWord || !first_[static_cast<unsigned char>(text[at])]) continue;
        const std::string_view rest = text.substr(at);
        for (const std::string_view opening : openings_)
            if (Text::startsWithIgnoringAsciiCase(rest, opening)) return at;
    }
    return std::nullopt;
}

std::optional<ByteRange> Cue::firstMatch(std::string_view text) const {
    std::size_t from = 0;
    if (Utf8::isAscii(text)) {
        const auto opening = firstOpening(text);
        if (!opening) return std::nullopt;
        from = *opening;
    } else if (!opensWithDigit() && !firstOpening(Text::caseFolded(text))) {
        // The expression takes the long s for "s", the Kelvin sign for "k" and a ligature for its
        // letters. The case fold has the plain letters, so a match has its opening there. A place
        // in the fold is no place in the text, so the expression starts at the beginning.
        return std::nullopt;
    }
    const auto match = regex_.firstMatch(text, from);
    if (!match) return std::nullopt;
    return match->range();
}
}  // namespace ombrix
