// The user's own notes in a memory file: the section under "## Notes", up to the next line that
// begins with "## ". A heading right below "## Notes" closes an empty section.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "OmbrixMemoryKit/Land/LandModels.h"

namespace ombrix::MemoryNotes {

constexpr std::string_view header = "## Notes";
/// What a section without notes says.
constexpr std::string_view placeholder = "(Yours. Ombrix never edits below its markers.)";

/// The notes, trimmed, without lines that are the placeholder; empty without a section. LF line
/// ends.
std::string body(std::string_view in);

/// The text with these notes, trimmed, in place of its own; with the placeholder when they are
/// blank. A text without the section gets one, above "## Corrections" or at its end. All else is
/// kept, save that CR LF becomes LF.
std::string replacing(std::string_view notes, std::string_view in);

/// "3 calls · Sep 1 to Nov 15" for a person, "1 meeting · Sep 1" for a thread. Without `firstSeen`,
/// or when both days are equal, only the last one is shown.
std::string standfirst(std::int64_t meetings, std::string_view firstSeen, std::string_view lastSeen,
                       LandMemoryFact::Kind kind);
}  // namespace ombrix::MemoryNotes
