// The notes block that a land record becomes in a transcript, and a person's edits of it. The block
// itself and its markers belong to `TranscriptEditor`.
//
//   ## Summary
//   The price stays.
//
//   ## Meeting Notes
//
//   ### Pricing
//   - No change before April
//
//   _Written by Claude Sonnet 4.5 using your Claude Code on Sep 1, 2026. Regenerate or delete any
//   time._                                                                     (all on one line)
//   <!-- ombrix:written-by route="claudeCode" model="claude-sonnet-4-5" at="..." v="1" -->
#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "OmbrixMemoryKit/Land/LandModels.h"
#include "OmbrixMemoryKit/Notes/EngineProvenance.h"
#include "OmbrixPlatform/Calendar.h"

namespace ombrix {

namespace NotesBlockRenderer {

/// The payload of the block: summary, notes by topic unless there are none, and the two provenance
/// lines, the day in the calendar's zone. Decisions and the rest of the record are not shown. A
/// topic and a bullet are one line each, and no line reads as a section's heading or as a machine
/// line, whatever the model wrote: a topic "Action Items" gets a blank at its end.
std::string payload(const LandOutput& output, const EngineProvenance& provenance,
                    const Calendar& calendar);
}  // namespace NotesBlockRenderer

namespace NotesBlockEdit {

enum class Section { summary, actionItems };

/// "## Summary" or "## Action Items".
std::string_view header(Section section);

/// The transcript with a person's `body` as that section of its notes block; nothing without a
/// block. The provenance lines stay last in the block, and the machine line gets `now` as its
/// "edited", so that the engine keeps out from then on. An empty `body` removes the section, but
/// its heading stays if the block with its provenance lines is found by no other. An edit that
/// changes nothing, and a block without a readable machine line, get no stamp. Machine lines in
/// `body` are dropped, save in a block that has no provenance lines.
std::optional<std::string> replace(Section section, std::string_view body,
                                   std::string_view markdown, Instant now);
}  // namespace NotesBlockEdit
}  // namespace ombrix
