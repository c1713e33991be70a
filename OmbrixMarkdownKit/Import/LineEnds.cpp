#include "OmbrixMarkdownKit/Import/LineEnds.h"

#include <algorithm>

namespace ombrix::TranscriptImport {

std::string_view withPlainLineEnds(std::string_view text, std::string& storage) {
    constexpr std::string_view byteOrderMark = "\uFEFF";
    if (text.starts_with(byteOrderMark)) text.remove_prefix(byteOrderMark.size());
    if (text.find('\r') == text.npos) return text;
    storage.clear();
    storage.reserve(text.size());
    while (!text.empty()) {
        const std::size_t end = std::min(text.find('\r'), text.size());
        storage.append(text, 0, end);
        text.remove_prefix(end);
        if (text.empty()) break;
        storage += '\n';
        text.remove_prefix(text.starts_with("\r\n") ? 2 : 1);
    }
    return storage;
}
}  // namespace ombrix::TranscriptImport
