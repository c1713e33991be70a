// "Follow Ups.md" in the Memory folder: the ledger as Markdown. The file is rebuilt from the ledger
// on each run and nothing reads rows out of it. What the user writes below "## Corrections" is read
// by Corrections.h and outlives every rebuild, as does all other text outside the engine's region.
//
//   ---
//   title: Follow Ups
//   source: Ombrix Follow Ups
//   updated: 2026-09-01T14:03:22Z
//   meetings_read: 12
//   schema: ombrix/follow-ups/v2
//   ---
//   <!-- ombrix:engine v1 by="Claude Sonnet 4.5; laid out by Ombrix" at="..." sources="12" -->
//   Rows are what Claude Sonnet 4.5 found in your meetings, laid out by Ombrix. Every row ...
//
//   ## You owe, late
//   - **Send the deck** · to Ana Ruiz · said Aug 20 · due Aug 28 · 4 days late · "I'll send ...
//
//   ## You owe, live
//   (none)
//
//   ...
//   <!-- /ombrix:engine -->
//
//   ## Corrections
//   - done: c-0a1b2c3d on 2026-09-01
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "OmbrixMemoryKit/Ledger/FollowUpsLedger.h"
#include "OmbrixPlatform/Calendar.h"

namespace ombrix::FollowUpsFile {

constexpr std::string_view schema = "ombrix/follow-ups/v2";
/// What stands below the region in a new file.
constexpr std::string_view humanTail = "\n## Corrections\n";

/// The whole new file, with LF line ends. `existing` is the file as it is now; missing or blank,
/// the file is made new. Nothing when the region in it is damaged: the file is left alone then. The
/// frontmatter and the region are made new, everything else in `existing` stays. `writer` is the
/// model's name as people know it.
std::optional<std::string> render(const FollowUpsLedger& ledger, std::string_view writer,
                                  Instant updated, std::optional<std::string_view> existing);

/// Without a line feed at its end.
std::string frontmatter(Instant updated, std::int64_t meetingsRead);
/// The region's text, with a line feed at its end. Markers that rows quote are made harmless.
std::string regionContent(const FollowUpsLedger& ledger, std::string_view writer);
/// A row as one line of a list, without a line feed: line ends in its texts become blanks.
std::string rowLine(const FollowUpRow& row, std::string_view today);

struct Frontmatter {
    Instant updated{};
    std::int64_t meetingsRead = 0;
    bool operator==(const Frontmatter&) const = default;
};
/// Nothing for a file of another kind, and when one of the two is missing or cannot be read.
std::optional<Frontmatter> parseFrontmatter(std::string_view text);
/// True when the text begins with a frontmatter fence and has this file's source line.
bool declares(std::string_view text);
}  // namespace ombrix::FollowUpsFile
