// JSON of services and programs that turn sound into text, in other shapes than meeting tools
// write: segments that name their text or their speaker otherwise, and lists of single words.
//
//   {"segments": [{"speaker": "Ana Ruiz", "startTime": 3.1, "body": "We keep the price."}]}
//   {"results": {"utterances": [{"speaker": 0, "transcript": "We keep the price."}]}}
//   {"monologues": [{"speaker": 1, "elements": [{"value": "Why"}, {"value": "?"}]}]}
//   {"words": [{"word": "why", "punctuated_word": "Why?", "speaker": 1}]}
#pragma once

#include <optional>
#include <string_view>

#include "OmbrixMarkdownKit/Import/ParsedMeeting.h"
#include "OmbrixPlatform/JsonDocument.h"

namespace ombrix::TranscriptImport {

/// True for a key that such JSON has and most other JSON has not.
bool isSpeechKey(std::string_view key);

/// The meeting of the first list, in `page` or up to five levels below it, whose members say
/// something and mostly by somebody; they have the seconds of a recording, or somebody speaks
/// again, or has a number. A speaker without a name is "Speaker" and the number. Words become one
/// text; what goes on without a speaker is said by the one before. Title and day are those of
/// `page`, the day may be in its "metadata".
std::optional<ParsedMeeting> speechIn(const Json::Node& page);
}  // namespace ombrix::TranscriptImport
