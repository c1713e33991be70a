// Small edits of a transcript's text. Each replaces one stretch and leaves every other byte as it
// is, so that what this system does not know survives. An edit whose place is missing gives the
// text back unchanged; nothing here throws. All functions are linear.
//
// The machine block is the generated part after the transcript:
//
//   ## Transcript
//
//   **Ann Jones:** We keep the price.
//
//   ## Summary
//
//   The price stays.
//
//   _Written by Claude Sonnet 4.5 on Mar 2, 2026. Regenerate or delete any time._
//   <!-- ombrix:written-by route="ombrix" model="..." at="..." v="1" -->
//
//   <!-- /ombrix:ai -->
//
// It begins at the line feed ahead of the first "## Summary", "## Action Items" or "## Key Moments"
// between the transcript heading and the first marker after that, or at the marker when there is
// none of them, and ends after the marker. What follows belongs to the person. The transcript
// heading is the first line "## Transcript"; without one, the first "## Transcript" anywhere.
#pragma once

#include <array>
#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

#include "OmbrixMarkdownKit/Transcript/TranscriptSections.h"
#include "OmbrixPlatform/ByteRange.h"

namespace ombrix::TranscriptEditor {

/// The headings of generated sections.
constexpr std::array<std::string_view, 4> aiHeaders = {"## Summary", "## Meeting Notes",
                                                       "## Action Items", "## Key Moments"};
/// Closes the machine block.
constexpr std::string_view enhancedBlockEndMarker = TranscriptSections::machineBlockEnd;
/// Begins the line that says, for machines, who wrote the block.
constexpr std::string_view provenancePrefix = "<!-- ombrix:written-by ";

/// Replaces the first line that starts with "title:". A title with a colon, "#" or a quote is
/// written in double quotes, which the transcript's reader takes off again. Line breaks in the
/// title become blanks.
std::string setTitle(std::string_view text, std::string_view title);

/// Replaces what is between "## Notes" and "## Transcript". Notes of white space alone leave an
/// empty section.
std::string setNotes(std::string_view text, std::string_view notes);

/// Renames a speaker where it opens a turn ("**Ann:**") and where it is an item of the frontmatter.
/// A name inside what was said stays. Line breaks in the new name become blanks, and ":**", which
/// would end the name early, is taken out of it.
std::string renameSpeaker(std::string_view text, std::string_view from, std::string_view to);

/// Replaces the machine block, or appends one. Empty sections remove it. A closing marker inside
/// `sections` is dropped. Writing the same sections twice changes nothing when they begin with
/// "## Summary", "## Action Items" or "## Key Moments" and the text has a transcript heading, but
/// no unmarked sections.
std::string setEnhancedSections(std::string_view text, std::string_view sections);

/// Replaces the section under `header`, one of `aiHeaders`, between the transcript heading and the
/// marker; adds it ahead of the marker when it is missing, and the whole block when that is. An
/// empty body removes the section with its heading. What the section contains includes provenance
/// lines when it is the last one. Any other header changes nothing.
std::string setAISection(std::string_view text, std::string_view header, std::string_view body);

/// The machine block without its marker, trimmed, as a view of the text; may be empty. Nothing
/// without a block.
std::optional<std::string_view> enhancedSections(std::string_view text);

/// The first machine line of the block as it stands, blanks around it included, as a view of the
/// text.
std::optional<std::string_view> machineProvenance(std::string_view text);

/// True for a line that is a machine line when trimmed.
bool isMachineProvenance(std::string_view line);

/// The bytes between the transcript heading and the closing marker, the marker excluded; wider than
/// the block, since the talk is in it. Nothing without a block.
std::optional<ByteRange> machineStretch(std::string_view text);

/// True when a heading of `aiHeaders` follows the transcript heading and no marker closes it. A
/// person wrote it, and a block that is appended takes it in when it is next replaced.
bool hasUnmarkedSections(std::string_view text);

/// True when the byte at `position` is in `machineStretch`.
bool isInsideMachineBlock(std::string_view text, std::size_t position);

/// `text` without closing markers, also where taking one out joins another.
std::string withoutEndMarkers(std::string_view text);

/// `text` with its line breaks (LF, CR, CR LF) as single blanks.
std::string onOneLine(std::string_view text);
}  // namespace ombrix::TranscriptEditor
