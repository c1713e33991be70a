// The formats of other tools' exports that `TranscriptImport` reads.
#pragma once

#include <array>
#include <string_view>

#include "OmbrixPlatform/EnumNames.h"

namespace ombrix::TranscriptImport {

enum class Format {
    webVTT,
    srt,
    otterText,
    granolaMarkdown,
    limitlessMarkdown,
    speakerMarkdown,
    limitlessLifelog,
    fathomJSON,
    fathomText,
    firefliesJSON,
    circlebackJSON,
    granolaJSON,
    granolaCSV,
    genericJSON,
};

constexpr auto rawValues(Format) {
    return EnumNames::table<Format>({
        {Format::webVTT, "webVTT"},
        {Format::srt, "srt"},
        {Format::otterText, "otterText"},
        {Format::granolaMarkdown, "granolaMarkdown"},
        {Format::limitlessMarkdown, "limitlessMarkdown"},
        {Format::speakerMarkdown, "speakerMarkdown"},
        {Format::limitlessLifelog, "limitlessLifelog"},
        {Format::fathomJSON, "fathomJSON"},
        {Format::fathomText, "fathomText"},
        {Format::firefliesJSON, "firefliesJSON"},
        {Format::circlebackJSON, "circlebackJSON"},
        {Format::granolaJSON, "granolaJSON"},
        {Format::granolaCSV, "granolaCSV"},
        {Format::genericJSON, "genericJSON"},
    });
}

/// The name for people: of the tool, or of the format when no one tool writes it. Transcripts on
/// disk hold it as "asr: imported (vtt)".
std::string_view label(Format format);
}  // namespace ombrix::TranscriptImport
