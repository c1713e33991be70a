// Who speaks in one segment of a JSON export. No export says by which tool it was written; the way
// in which its segments name their speaker tells that.
#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "OmbrixMarkdownKit/Import/ImportFormat.h"
#include "OmbrixPlatform/JsonDocument.h"

namespace ombrix::TranscriptImport {

struct SegmentSpeaker {
    std::optional<std::string_view> name;  ///< normalized; nothing: the segment does not say it
    std::optional<Format> format;          ///< nothing: many tools write it so
};

/// What the segment's fields say of its speaker; each is nothing when the segment lacks it.
struct SpeakerFields {
    std::optional<Json::Node> speakerName, speaker, source, timestamp;
};

/// The first of these that the segment has:
///   "speaker_name": "Ann"                                      firefliesJSON
///   "speaker": {"display_name": "Ann"}                         fathomJSON
///   "speaker": {"name": "Ann", "attribution": ...}             circlebackJSON
///   "speaker": {"name": "Ann"}, "source": ...                  granolaJSON; no format without it
///   "speaker": {"diarization_label": "Speaker A"}              granolaJSON
///   "speaker": {"source": "microphone"}, or "attribution"      granolaJSON
///   "speaker": "Ann", "timestamp": ...                         circlebackJSON; without it none
///   "source": "microphone"                                     granolaJSON
/// A microphone is "Me", the system's sound "Them". An empty name is none.
SegmentSpeaker speakerOf(const SpeakerFields& segment);
}  // namespace ombrix::TranscriptImport
