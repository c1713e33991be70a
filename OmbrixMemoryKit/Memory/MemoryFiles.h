// The memory file of one person or thread, in the Memory folder:
//
//   ---
//   title: Ana Ruiz
//   source: Ombrix Memory
//   kind: person
//   key: "name:ana ruiz"
//   aliases: []
//   first_seen: 2026-06-02
//   last_seen: 2026-09-01
//   meetings: 3
//   ---
//   <!-- ombrix:engine v1 by="Claude" at="2026-09-01T14:03:22Z" sources="3" -->
//   ## Who they are
//   - Runs the launch. [Weekly, 2026-09-01]
//   ...
//   <!-- /ombrix:engine -->
//
//   ## Notes
//   (Yours. Ombrix never edits below its markers.)
//
//   ## Corrections
//
// MemoryNotes.h edits the notes, MemoryRegionParser.h reads the region for a view. A file whose
// region is damaged is left alone by its caller: there is neither a repair nor a backup.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "OmbrixMemoryKit/Land/LandModels.h"
#include "OmbrixMemoryKit/Memory/ConsolidateModels.h"
#include "OmbrixMemoryKit/Region/Corrections.h"
#include "OmbrixPlatform/Calendar.h"

namespace ombrix {

/// The frontmatter of a memory file.
struct MemoryFileMeta {
    std::string title{};
    LandMemoryFact::Kind kind = LandMemoryFact::Kind::person;
    std::string key{};  ///< see EntityKeys.h
    std::vector<std::string> aliases{};
    std::string firstSeen{}, lastSeen{};  ///< ISO days
    std::int64_t meetings = 0;
    std::optional<std::string> series{};  ///< a thread's; "recurring" in the file when absent
    std::vector<std::string> members{};   ///< a thread's
    bool operator==(const MemoryFileMeta&) const = default;
};

namespace MemoryFile {

/// The whole text of the file. Of an `existing` one that is not blank all is kept but its
/// frontmatter and its region, save that CR LF becomes LF; nothing when its region is damaged.
/// `sources` is how many sources the region rests on, as the caller counts them.
std::optional<std::string> render(const MemoryFileMeta& meta, const ConsolidateOutput& output,
                                  std::string_view writer, Instant at, std::int64_t sources,
                                  std::optional<std::string_view> existing = std::nullopt);

/// From "---" to "---", without a line feed at its end.
std::string frontmatter(const MemoryFileMeta& meta);

/// What stands between the markers. The output's kind decides on the sections. Each item is one
/// line: line ends in it become blanks. A marker in it is written with "&lt;".
std::string regionContent(const ConsolidateOutput& output);

struct Parsed {
    MemoryFileMeta meta{};
    std::string engineText{};  ///< the region's content
    std::vector<Correction> corrections{};
    bool operator==(const Parsed&) const = default;
};
/// Nothing for a text that is no memory file: another source, a missing or unreadable field in its
/// frontmatter, a damaged region. Never throws; linear.
std::optional<Parsed> parse(std::string_view text);

/// The display without "/", ":" and "\", trimmed, its first 80 characters, and ".md"; "Unnamed.md"
/// when nothing is left.
std::string fileName(std::string_view display);
}  // namespace MemoryFile
}  // namespace ombrix
