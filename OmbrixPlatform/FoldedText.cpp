#include "OmbrixPlatform/FoldedText.h"

#include "OmbrixPlatform/Text.h"
#include "OmbrixPlatform/Utf8.h"

namespace ombrix {

FoldedText::FoldedText(std::string_view text) : sourceSize_(text.size()) {
    if (Utf8::isAscii(text)) {
        fold_ = Text::folded(text);
        return;
    }
    fold_.reserve(text.size());
    sources_.reserve(text.size());
    for (std::size_t at = 0; at < text.size();) {
        const std::size_t length = Text::appendFolded(fold_, text, at);
        sources_.resize(fold_.size(), at);
        at += length;
    }
}

std::optional<ByteRange> FoldedText::placeInFold(std::string_view part) const {
    const std::string wanted = Text::folded(part);
    if (wanted.empty()) return std::nullopt;
    const std::size_t place = fold_.find(wanted);
    if (place == std::string::npos) return std::nullopt;
    return ByteRange{place, place + wanted.size()};
}

bool FoldedText::contains(std::string_view part) const { return placeInFold(part).has_value(); }

std::optional<ByteRange> FoldedText::find(std::string_view part) const {
    const auto place = placeInFold(part);
    if (!place || sources_.empty()) return place;
    const auto [begin, end] = *place;
    // The occurrence ends where the next letter starts, after the marks of the last one. When the
    // end is inside the fold of one scalar ("ß" is "ss"), the whole scalar is included.
    std::size_t next = end;
    while (next < fold_.size() && sources_[next] == sources_[end - 1]) ++next;
    return ByteRange{sources_[begin], next == fold_.size() ? sourceSize_ : sources_[next]};
}
}  // namespace ombrix
