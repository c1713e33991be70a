#include "OmbrixMarkdownKit/Import/ExportReader.h"

#include <algorithm>

namespace ombrix::TranscriptImport {

std::string_view withPlainLineEnds(std::string_view text, std::string& storage) {
    constexpr std::string_view byteOrderMark = "\uFEFF";
    if (text.starts_with(byteOrderMark)) text.remove_prefix(byteOrderMark.size());
    if (text.find('\r') == text.npos) return text;
    storage.clear();
    storage.reserve(text.size());
    for (std::size_t at = 0; at < text.size();) {
        const std::size_t end = std::min(text.find('\r', at), text.size());
        storage.append(text, at, end - at);
        if (end == text.size()) break;
        storage += '\n';
        at = end + (text.substr(end).starts_with("\r\n") ? 2 : 1);
    }
    return storage;
}

std::optional<Export> recognized(std::string_view) { return std::nullopt; }

std::optional<Export> readExport(std::string_view text) { return recognized(text); }
}  // namespace ombrix::TranscriptImport
