#include "OmbrixMarkdownKit/Transcript/OmbrixTranscriptMarker.h"

#include <cstring>

namespace ombrix::OmbrixTranscriptMarker {
namespace {

constexpr std::string_view line = "source: Ombrix";
constexpr std::string_view lineAfterAnother = "\nsource: Ombrix";

/// Only the carriage return right before the line feed belongs to the line end.
bool endsLine(std::string_view rest) { return rest.starts_with('\n') || rest.starts_with("\r\n"); }

/// Like string_view's find, which stops at every line feed and so takes several times as long on
/// text with short lines.
std::size_t find(std::string_view text, std::string_view part, std::size_t from) {
    if (from == text.size()) return std::string_view::npos;  // an empty view may have no bytes
    const void* hit = ::memmem(text.data() + from, text.size() - from, part.data(), part.size());
    if (!hit) return std::string_view::npos;
    return static_cast<std::size_t>(static_cast<const char*>(hit) - text.data());
}
}  // namespace

bool declares(std::string_view text) {
    if (text.starts_with(line) && endsLine(text.substr(line.size()))) return true;
    std::size_t at = 0;
    while ((at = find(text, lineAfterAnother, at)) != std::string_view::npos) {
        at += lineAfterAnother.size();
        if (endsLine(text.substr(at))) return true;
    }
    return false;
}
}  // namespace ombrix::OmbrixTranscriptMarker
