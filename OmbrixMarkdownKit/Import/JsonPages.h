// Answers of tools' interfaces in JSON that hold what a single export holds, in a list or one level
// further down:
//
//   {"items": [{"title": "Pricing", "transcript": [
//       {"speaker": {"display_name": "Ana Ruiz"}, "text": "We keep the price."}]}], "next": null}
//
//   {"data": {"lifelog": {"title": "Walk", "contents": [{"type": "blockquote", "content":
//   "..."}]}}}
//
//   {"transcriptEntries": [{"participant": "conferences/x/participants/104", "text": "Hello.",
//       "startTime": "2026-05-14T09:00:03Z"}]}
#pragma once

#include <string_view>
#include <vector>

#include "OmbrixMarkdownKit/Import/ParsedMeeting.h"

namespace ombrix::TranscriptImport {

/// The meetings in which somebody speaks; without a page, that of `speechIn`. Nothing is parsed
/// unless one of the keys of such lists stands in the first 4,000 bytes. None when nobody is named
/// in a list and none of its members has a transcript, since lists of messages are everywhere.
std::vector<ParsedMeeting> readJSONPages(std::string_view text);
}  // namespace ombrix::TranscriptImport
