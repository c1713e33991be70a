#include "OmbrixMarkdownKit/Transcript/TextNormalize.h"

#include "OmbrixPlatform/Text.h"
#include "OmbrixPlatform/Utf8.h"

namespace ombrix::TextNormalize {
namespace {

struct Character {
    std::size_t length = 1;
    bool belongs = false;  ///< to a run
};

Character characterAt(std::string_view text, std::size_t at) {
    if (Text::isAscii(text[at])) return {1, Text::isAsciiAlphanumeric(text[at])};
    const Utf8::Decoded decoded = Utf8::decode(text, at);
    return {decoded.length, Text::isAlphanumeric(decoded.scalar)};
}
}  // namespace

std::string runs(std::string_view text) {
    std::string joined;
    joined.reserve(text.size());
    for (std::size_t at = 0; at < text.size();) {
        const std::size_t begin = at;
        Character character;
        while (at < text.size() && (character = characterAt(text, at)).belongs)
            at += character.length;
        if (at > begin) {
            if (!joined.empty()) joined += ' ';
            joined.append(text, begin, at - begin);
        }
        at += character.length;  // the one that ends the run; nothing is left to do at the end
    }
    return joined;
}

std::string words(std::string_view text) { return runs(Text::lowercased(text)); }
}  // namespace ombrix::TextNormalize
