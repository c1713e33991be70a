#include "OmbrixMarkdownKit/Transcript/TextNormalize.h"

#include "OmbrixPlatform/Text.h"
#include "OmbrixPlatform/Utf8.h"

namespace ombrix::TextNormalize {

std::string runs(std::string_view text) {
    std::string joined;
    joined.reserve(text.size());
    bool inGap = false;
    for (std::size_t at = 0; at < text.size();) {
        std::size_t length = 1;
        bool belongs = Text::isAsciiAlphanumeric(text[at]);
        if (!Text::isAscii(text[at])) {
            const Utf8::Decoded decoded = Utf8::decode(text, at);
            length = decoded.length;
            belongs = Text::isAlphanumeric(decoded.scalar);
        }
        if (belongs) {
            if (inGap && !joined.empty()) joined.push_back(' ');
            joined += text.substr(at, length);
        }
        inGap = !belongs;
        at += length;
    }
    return joined;
}

std::string words(std::string_view text) { return runs(Text::lowercased(text)); }
}  // namespace ombrix::TextNormalize
