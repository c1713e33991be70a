// Random texts for comparing a quick way with a plain one. Seeded, so that runs are repeatable.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <random>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "OmbrixPlatform/Numbers.h"
#include "OmbrixPlatform/Text.h"

namespace ombrix::test {

/// Letters, digits, and the characters that the rules for word boundaries treat specially.
constexpr std::string_view asciiPieces[] = {
    "a", "b",  "E",  "n",   "o",    "s",    "S",          "x",          "z",   "1",
    "7", "0",  "_",  "@",   "'",    ".",    ",",          ";",          ":",   "-",
    " ", " ",  "\n", "\t",  "\r\n", "\r",   "\"",         "#",          "/",   "\x7F",
    "(", "_'", "@.", "'s ", "1:1",  "one ", "one-on-one", "1 on 1s",    "ing", "ed ",
    "~", "",   "**", "x's", "3.5",  "a.b",  "planning",   "decisions ", "\v",  "\x11:1"};

/// The same in other scripts, marks, joiners, prefixes, and bytes that are not UTF-8.
inline const std::vector<std::string_view> otherPieces = Text::split(
    "\u00E9|e\u0301|\u00DF|\u017F|\u212A|\u0130|\u03A3|\u03C2|\uD55C|\u1112\u1161\u11AB|"
    "\u0E01\u0E32\u0E23|\u4F1A\u8B70|\u30AB\u30BF|\U0001F468\u200D\U0001F4BB|\U0001F1E9|"
    "\u0301|\u0600|\u00AD|\u200D|\u2019s|\u2019|\u201C|\u201D|\u2014|\u2026|\u2018|\u00A0|\u3000|"
    "\u0915\u094D\u0937\u093F|"
    "\u05D0|\u0663|\u00BD|\uFB01|\u00B7|\u2028|\U0001D400|\u0D4E|\xC3|\x80|\xE2\x80|"
    "\u0142|\u0439|\u0438\u0306|\u0416\u0443|\u03CD\u03BD|\u0149|\u201C|\u2014|\u0387|\u202F|"
    "\u203F|"
    "\u3002|\u30FC|\uFF9E|\u0585\u0582|\u02C2|\u00D7|"
    "\xF0\x9F\x98|\xED\xA0\x80|\xFF",
    "|");

class RandomText {
  public:
    explicit RandomText(unsigned seed) : random_(seed) {}

    std::size_t below(std::size_t bound) { return random_() % bound; }
    std::string_view from(std::span<const std::string_view> pieces) {
        return pieces[below(pieces.size())];
    }
    /// One piece in `rarity` is not ASCII, so that ASCII stretches of every length occur.
    std::string mixed(std::size_t pieces, std::size_t rarity) {
        std::string text;
        while (pieces-- > 0) text += below(rarity) == 0 ? from(otherPieces) : from(asciiPieces);
        return text;
    }
    /// Short and long texts with many or few pieces of other scripts. Some have a long run of one
    /// piece, longer than any block that a quick way reads at once.
    std::string any() {
        constexpr std::array<std::size_t, 4> rarities = {1, 2, 12, 1000};
        std::string text = mixed(below(60), rarities[below(rarities.size())]);
        if (below(4) == 0) {
            const auto piece = from(below(3) == 0 ? std::span<const std::string_view>(otherPieces)
                                                  : std::span<const std::string_view>(asciiPieces));
            for (std::size_t left = below(150); left > 0; --left) text += piece;
            text += mixed(below(60), rarities[below(rarities.size())]);
        }
        return text;
    }

  private:
    std::mt19937 random_;
};

/// A text with its bytes made visible, for messages.
inline std::string visible(std::string_view text) {
    std::string shown = "\"";
    for (const char c : text) {
        if (c >= 0x20 && c < 0x7F)
            shown += c;
        else
            Numbers::appendHex(shown += "\\x", static_cast<std::uint8_t>(c));
    }
    return shown + "\"";
}
}  // namespace ombrix::test
