#include "OmbrixMarkdownKit/Library/TranscriptReader.h"

#include <cstdint>
#include <limits>

#include "OmbrixMarkdownKit/Transcript/MarkdownTranscript.h"
#include "OmbrixMarkdownKit/Transcript/OmbrixTranscriptMarker.h"
#include "OmbrixMarkdownKit/Transcript/TranscriptHeader.h"
#include "OmbrixPlatform/Text.h"
#include "OmbrixPlatform/Utf8.h"

namespace ombrix {
namespace {

/// Unicode's boundaries are found at 32-bit positions, and a sparse file can claim to be larger
/// than any memory.
constexpr std::size_t largestSize = std::numeric_limits<std::int32_t>::max();
}  // namespace

std::optional<std::string_view> TranscriptReader::bytes(const std::string& path) {
    const auto bytes = files_.read(path, largestSize);
    if (!bytes || !Utf8::isValid(*bytes) || !OmbrixTranscriptMarker::declares(*bytes))
        return std::nullopt;
    return bytes;
}

std::optional<TranscriptDocument> TranscriptReader::document(const std::string& path) {
    const auto found = bytes(path);
    if (!found) return std::nullopt;
    return MarkdownTranscriptParser::parse(*found);
}

std::optional<TranscriptReader::View> TranscriptReader::view(const std::string& path) {
    auto text = bytes(path);
    if (!text) return std::nullopt;
    if (text->find('\r') != std::string_view::npos) {
        lineFeeds_ = Text::withLineFeeds(*text);
        text = lineFeeds_;
    }
    const auto frame = TranscriptSections::frame(*text);
    if (!frame) return std::nullopt;
    View view{{}, TranscriptSections::Sections(frame->body)};
    TranscriptHeader::read(frame->header, view.header);
    return view;
}

std::optional<TranscriptDocument> TranscriptReader::peek(const std::string& path) {
    constexpr std::size_t enoughForHeaders = 4096;
    const auto bytes = files_.beginning(path, enoughForHeaders);
    if (!bytes) return std::nullopt;
    const std::string beginning = Text::withLineFeeds(*bytes);
    // A loose closing line counts only when the whole file has no strict one.
    if (!Text::contains(beginning, "\n---\n")) return std::nullopt;
    const auto frame = TranscriptSections::frame(beginning);
    if (!frame) return std::nullopt;
    TranscriptDocument header;
    TranscriptHeader::read(frame->header, header);
    return header;
}
}  // namespace ombrix
