#include "OmbrixMarkdownKit/Import/ImportFormat.h"

namespace ombrix::TranscriptImport {

std::string_view label(Format format) {
    switch (format) {
        case Format::webVTT:
            return "vtt";
        case Format::srt:
            return "srt";
        case Format::otterText:
            return "otter";
        case Format::granolaMarkdown:
        case Format::granolaJSON:
        case Format::granolaCSV:
            return "granola";
        case Format::limitlessMarkdown:
        case Format::limitlessLifelog:
            return "limitless";
        case Format::speakerMarkdown:
            return "markdown";
        case Format::fathomJSON:
        case Format::fathomText:
            return "fathom";
        case Format::firefliesJSON:
            return "fireflies";
        case Format::circlebackJSON:
            return "circleback";
        case Format::genericJSON:
            return "json";
    }
    return {};
}
}  // namespace ombrix::TranscriptImport
