#include "OmbrixMemoryKit/Region/QuoteClip.h"

#include "OmbrixPlatform/Characters.h"
#include "OmbrixPlatform/Text.h"

namespace ombrix {

std::string clipQuote(std::string_view text) {
    const auto beginning = Characters::prefix(text, longestQuote);
    if (beginning.size() == text.size()) return std::string(text);
    return std::string(Text::trimmed(beginning.substr(0, beginning.rfind(' ')))) + "…";
}
}  // namespace ombrix
