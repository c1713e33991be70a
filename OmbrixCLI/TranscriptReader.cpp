#include "OmbrixCLI/TranscriptReader.h"

#include "OmbrixMarkdownKit/OmbrixTranscriptMarker.h"
#include "OmbrixPlatform/Text.h"
#include "OmbrixPlatform/Utf8.h"

namespace ombrix {

std::optional<std::string_view> TranscriptReader::text(const std::string& path) {
    const auto bytes = files_.read(path);
    if (!bytes || !Utf8::isValid(*bytes) || !OmbrixTranscriptMarker::declares(*bytes))
        return std::nullopt;
    if (bytes->find('\r') == std::string_view::npos) return bytes;
    lineFeeds_ = Text::withLineFeeds(*bytes);
    return lineFeeds_;
}

std::optional<TranscriptDocument> TranscriptReader::document(const std::string& path) {
    const auto found = text(path);
    if (!found) return std::nullopt;
    return MarkdownTranscriptParser::parse(*found);
}

std::optional<TranscriptReader::View> TranscriptReader::view(const std::string& path) {
    const auto found = text(path);
    const auto frame = found ? TranscriptSections::frame(*found) : std::nullopt;
    if (!frame) return std::nullopt;
    View view{{}, TranscriptSections::Sections(frame->body)};
    TranscriptSections::readHeader(frame->header, view.header);
    return view;
}

std::optional<TranscriptDocument> TranscriptReader::peek(const std::string& path) {
    constexpr std::size_t enoughForHeaders = 4096;
    const auto bytes = files_.read(path, enoughForHeaders);
    if (!bytes) return std::nullopt;
    const std::string beginning = Text::withLineFeeds(*bytes);
    // A loose closing line counts only when the whole file has no strict one.
    if (!Text::contains(beginning, "\n---\n")) return std::nullopt;
    const auto frame = TranscriptSections::frame(beginning);
    if (!frame) return std::nullopt;
    TranscriptDocument header;
    TranscriptSections::readHeader(frame->header, header);
    return header;
}
}  // namespace ombrix
