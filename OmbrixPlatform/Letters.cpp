#include "OmbrixPlatform/Letters.h"

namespace ombrix::Letters {

Found findBefore(std::string_view text, std::size_t end) {
    for (std::size_t length = 1; length <= 3 && length <= end; ++length) {
        const bool isTail = (static_cast<unsigned char>(text[end - length]) & 0xC0U) == 0x80;
        if (isTail) continue;
        const Found found = find(text.substr(0, end), end - length);
        if (found.length == length) return found;
        break;
    }
    return {Table::letters[Table::asciiPages * Table::pageSize], 1};
}
}  // namespace ombrix::Letters
