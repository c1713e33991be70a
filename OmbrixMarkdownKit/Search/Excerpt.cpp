#include "OmbrixMarkdownKit/Search/Excerpt.h"

#include "OmbrixPlatform/Characters.h"
#include "OmbrixPlatform/FoldedText.h"
#include "OmbrixPlatform/Text.h"

namespace ombrix::Excerpt {

std::string at(std::string_view text, ByteRange range, std::size_t context) {
    constexpr std::string_view ellipsis = "…";
    const std::size_t begin = Characters::backward(text, range.begin, context);
    const std::size_t end = Characters::forward(text, range.end, context);
    std::string excerpt;
    if (begin > 0) excerpt += ellipsis;
    excerpt += Text::trimmed(text.substr(begin, end - begin));
    if (end < text.size()) excerpt += ellipsis;
    return excerpt;
}

std::string around(std::string_view text, std::string_view term, std::size_t context) {
    if (const auto place = FoldedText(text).find(term)) return at(text, *place, context);
    return std::string(Characters::prefix(text, 2 * context));
}
}  // namespace ombrix::Excerpt
