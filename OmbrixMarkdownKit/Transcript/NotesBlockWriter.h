// Writes the machine block into a transcript file. `TranscriptEditor` says what the block looks
// like and where it is.
#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "OmbrixMarkdownKit/Transcript/TranscriptEditor.h"
#include "OmbrixPlatform/Calendar.h"

namespace ombrix::NotesBlockWriter {

using TranscriptEditor::aiHeaders;

/// What a model wrote as notes, fit for a block: the lines that are a heading of level one or two
/// outside `aiHeaders`, machine lines and closing markers are dropped; what stood under a dropped
/// heading stays, and so do headings of deeper levels. Trimmed, with LF line ends; may be empty.
std::string sanitizedSections(std::string_view notes);

/// The payload of a block: the sanitised sections, an empty line and the provenance line for Ombrix
/// on the day of `date`. It begins with "## Summary" unless it begins with "## Action Items" or
/// "## Key Moments" anyway, since a block is found by these headings. Empty when the notes are.
std::string sectionsPayload(std::string_view notes, Instant date, const Calendar& calendar);

/// "_Written by Claude Sonnet 4.5 through Ombrix on Mar 2, 2026. Regenerate or delete any time._"
/// `routePhrase` is the "through Ombrix" in it; nothing leaves it out. The day is that of
/// `calendar`.
std::string provenanceLine(std::string_view writer, std::optional<std::string_view> routePhrase,
                           Instant date, const Calendar& calendar);

/// Sets the machine block of the transcript at `path` and writes its mirror. An empty payload
/// clears both. Text after the block, the person's, is kept. False when there is no transcript at
/// `path` with a transcript section, when the person wrote sections of a block there without its
/// marker, or when either file cannot be written; a file that cannot be written is as it was
/// before. Writing the same twice touches neither file.
bool write(std::string_view payload, const std::string& path);

/// The same with the payload of a model's notes.
bool write(std::string_view notes, const std::string& path, Instant now, const Calendar& calendar);

/// Removes the block and its mirror. True also when there was none.
bool clear(const std::string& path);

/// The mirror of the transcript at `path`, a copy of its block from which a tool can restore or
/// compare it: ".pricing.md.notes" beside "pricing.md". Its name is hidden, so that it is never
/// read as a transcript.
std::string mirrorURL(std::string_view path);
}  // namespace ombrix::NotesBlockWriter
