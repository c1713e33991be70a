#include "OmbrixMarkdownKit/OmbrixTranscriptMarker.h"

namespace ombrix::OmbrixTranscriptMarker {
namespace {

constexpr std::string_view line = "source: Ombrix";
constexpr std::string_view lineBehindAnother = "\nsource: Ombrix";

/// Only the carriage return right before the line feed belongs to the line end.
bool endsLine(std::string_view rest) { return rest.starts_with('\n') || rest.starts_with("\r\n"); }
}  // namespace

bool declares(std::string_view text) {
    if (text.starts_with(line) && endsLine(text.substr(line.size()))) return true;
    std::size_t at = 0;
    while ((at = text.find(lineBehindAnother, at)) != std::string_view::npos) {
        at += lineBehindAnother.size();
        if (endsLine(text.substr(at))) return true;
    }
    return false;
}
}  // namespace ombrix::OmbrixTranscriptMarker
