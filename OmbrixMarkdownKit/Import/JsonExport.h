// Exports in JSON, read without a schema: a list of segments is looked for under the names that
// tools give it, and each segment is asked who spoke and what was said.
//
//   {"data": {"transcript": {"title": "Pricing", "date": 1700000000000, "sentences": [
//       {"speaker_name": "Ann Lee", "text": "We keep the price."},
//       {"speaker_name": "Tomas Reyes", "text": "And we say so."}]}}}
#pragma once

#include <string_view>
#include <vector>

#include "OmbrixMarkdownKit/Import/ParsedMeeting.h"
#include "OmbrixPlatform/JsonDocument.h"

namespace ombrix::TranscriptImport {

/// The meetings of the text in which somebody speaks, each with its format; none when the text is
/// not JSON, nests deeper than `Json::maximalDepth` or has no segments where they are looked for.
std::vector<ParsedMeeting> parseJSONExport(std::string_view text);

/// The same of one object: its page of lifelogs, its lifelog, or the meeting whose segments it
/// holds.
std::vector<ParsedMeeting> meetingsOfObject(const Json::Node& object);

/// True when the text, trimmed, begins with "{" or "[".
bool beginsLikeJSON(std::string_view text);

/// True when the text begins like that and `parseJSONExport` gives a meeting.
bool looksLikeTranscriptJSON(std::string_view text);
}  // namespace ombrix::TranscriptImport
