// Generated speech for the benchmarks of single functions.
#pragma once

#include <cstddef>
#include <string>

#include "Vocabulary.h"

namespace ombrix::Talk {

/// About `bytes` bytes of sentences, all ASCII.
inline std::string ascii(std::size_t bytes) {
    Dice dice(7);
    const Vocabulary vocabulary(dice);
    std::string text;
    while (text.size() < bytes) {
        for (std::size_t left = dice.between(4, 18); left > 0; --left)
            text.append(vocabulary.any(dice)).append(left == 1 ? ". " : " ");
    }
    return text;
}

/// The same with a curly apostrophe, a dash and a foreign name before each sentence.
inline std::string mixed(std::size_t bytes) {
    Dice dice(11);
    const Vocabulary vocabulary(dice);
    std::string text;
    while (text.size() < bytes) {
        text.append(dice.of(LibraryWords::firstNames)).append(" Sørensen — that’s ");
        for (std::size_t left = dice.between(4, 18); left > 0; --left)
            text.append(vocabulary.any(dice)).append(left == 1 ? ". " : " ");
    }
    return text;
}

/// A transcript of `turns` turns, each of about 250 bytes.
inline std::string transcript(std::size_t turns) {
    Dice dice(13);
    const std::string talk = ascii(turns * 250 + 1000);
    std::string text =
        "---\ntitle: Pricing, weekly\ndate: 2026-06-01\nduration_min: 30\nsource: Ombrix\n"
        "participants:\n  - Nadia Brandt\n  - Søren Weir\n---\n\n## Notes\n\n- call back\n\n"
        "## Transcript\n\n";
    for (std::size_t i = 0; i < turns; ++i) {
        text.append(i % 2 == 0 ? "**Nadia Brandt:** " : "**Søren Weir:** ");
        if (dice.chance(50)) text += "We decided on the pricing. ";
        if (i == 7) text += "Osterby asked for it. ";
        text.append(talk, i * 250, 250).append("\n\n");
    }
    return text;
}
}  // namespace ombrix::Talk
