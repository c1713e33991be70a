// Lifelogs of Limitless in JSON: nested pieces of content, of which the quotes are speech.
//
//   {"title": "Pricing", "startTime": "2026-03-02T09:00:00Z", "markdown": "...", "contents": [
//       {"type": "heading1", "content": "Pricing", "children": [
//           {"type": "blockquote", "content": "We keep the price.", "speakerName": "Ann Lee"},
//           {"type": "blockquote", "content": "Good.", "speakerIdentifier": "user"}]}]}
#pragma once

#include "OmbrixMarkdownKit/Import/ParsedMeeting.h"
#include "OmbrixPlatform/JsonDocument.h"

namespace ombrix::TranscriptImport {

/// True for an object with a list "contents", or with the text "markdown" and a "startTime".
bool isLifelog(const Json::Node& object);

/// The meeting of a lifelog; without turns when nobody speaks in it. Speech comes from "contents";
/// only when that is no list, from the speakers in "markdown".
ParsedMeeting readLifelog(const Json::Node& object);
}  // namespace ombrix::TranscriptImport
