#include "OmbrixMarkdownKit/Library/TranscriptReader.h"

#include "OmbrixMarkdownKit/Transcript/MarkdownTranscript.h"
#include "OmbrixMarkdownKit/Transcript/OmbrixTranscriptMarker.h"
#include "OmbrixMarkdownKit/Transcript/TranscriptHeader.h"
#include "OmbrixPlatform/Text.h"
#include "OmbrixPlatform/Utf8.h"

namespace ombrix {
namespace {

constexpr std::size_t enoughForHeaders = 4096;

constexpr std::string_view closing = "\n---\n";

std::optional<TranscriptDocument> headerOf(std::string_view text) {
    std::optional<TranscriptDocument> header;
    if (const auto frame = TranscriptSections::frame(text))
        TranscriptHeader::read(frame->header, header.emplace());
    return header;
}
}  // namespace

std::optional<std::string_view> TranscriptReader::frontmatterOf(std::string_view beginning) {
    std::size_t end = beginning.find(closing);
    if (beginning.substr(0, end).find('\r') != std::string_view::npos) {
        lineFeeds_ = Text::withLineFeeds(beginning);
        beginning = lineFeeds_;
        end = beginning.find(closing);
    }
    if (end == std::string_view::npos) return std::nullopt;
    return beginning.substr(0, end + closing.size());
}

std::optional<std::string_view> TranscriptReader::bytes(const std::string& path) {
    const auto bytes = files_.read(path, largestTranscript);
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

std::optional<TranscriptDocument> TranscriptReader::header(const std::string& path) {
    const auto bytes = files_.beginning(path, enoughForHeaders);
    if (!bytes || !(bytes->starts_with("---\n") || bytes->starts_with("---\r\n")))
        return std::nullopt;
    if (const auto text = frontmatterOf(*bytes);
        text && Utf8::isValid(*text) && OmbrixTranscriptMarker::declares(*text)) {
        return headerOf(*text);
    }
    const auto whole = view(path);
    if (!whole) return std::nullopt;
    return whole->header;
}

std::optional<TranscriptDocument> TranscriptReader::peek(const std::string& path) {
    const auto bytes = files_.beginning(path, enoughForHeaders);
    const auto text = bytes ? frontmatterOf(*bytes) : std::nullopt;
    return text ? headerOf(*text) : std::nullopt;
}
}  // namespace ombrix
