// The line patterns of exports, read by hand because they meet every line of an export. Each gives
// what the regular expression above it gives. Lines are trimmed, valid UTF-8 and without line
// feeds; returned views show the argument.
#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

namespace ombrix::TranscriptImport {

/// A name and what it said.
struct SpeechLine {
    std::string_view speaker;
    std::string_view text;
    bool operator==(const SpeechLine&) const = default;
};

/// "Ann Lee (00:12): We keep it." or without the time. Groups 1 and 2 of
///   ^(.{1,48}?)(?:\s+[\(\[]?\d{1,2}:\d{2}(?::\d{2})?\s*(?:[AaPp][Mm])?[\)\]]?)?\s*:\s+(.+)$
std::optional<SpeechLine> timedSpeech(std::string_view line);

/// "Ann Lee  0:12". Group 1 of
///   ^(.{1,48}?)\s+\d{1,2}:\d{2}(:\d{2})?\s*$
std::optional<std::string_view> otterHeader(std::string_view line);

/// What follows a clock as in "[00:12] We keep it."; all of it when it begins with none. Without
/// the match of
///   ^\[?\d{1,2}:\d{2}(:\d{2})?\]?\s*
std::string_view withoutLeadingClock(std::string_view line);

/// True for a line that begins like "00:12:01.500 --> ".
///   ^\d+:\d{2}(:\d{2})?[.,]\d{3}\s*-->
bool beginsWithCueTiming(std::string_view line);

/// The text without each match of
///   <[^>]+>
/// Shows `text` when there is none, else `storage`.
std::string_view stripTags(std::string_view text, std::string& storage);
}  // namespace ombrix::TranscriptImport
