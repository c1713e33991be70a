// WebVTT and SRT: blocks of lines between empty lines, each with a line of times and what is said.
//
//   WEBVTT
//
//   1
//   00:00:01.000 --> 00:00:04.000
//   <v Ann Lee>We keep the price.</v>
//
//   00:00:04.500 --> 00:00:06.000
//   Tomas Reyes: And we say so.
#pragma once

#include <string_view>
#include <vector>

#include "OmbrixMarkdownKit/Import/ParsedMeeting.h"

namespace ombrix::TranscriptImport {

/// What is said, in the order of the text. Speakers are named by a voice tag or by "Name: " at the
/// start of a line; otherwise the speaker before goes on. Blocks without a line of times and those
/// that begin with NOTE, STYLE or REGION say nothing. Where the empty line between two cues is
/// missing, a line that begins like times starts the next cue, and a number right before it is its
/// number. `text` has plain line ends.
std::vector<Turn> readCues(std::string_view text);
}  // namespace ombrix::TranscriptImport
