// The card for a call, a Markdown file of its own in the folder "Before" of the Memory folder:
//
//   ---
//   title: "Before: Launch weekly"
//   source: Ombrix Before
//   for: 2026-09-08T10:00:00
//   people:
//     - Ana Ruiz
//   ---
//   <!-- ombrix:engine v1 by="Claude" at="2026-09-08T07:50:00Z" sources="2" -->
//   ## What to remember
//   - Reads as: The budget is settled. [Weekly, 2026-09-01]
//
//   ## Who and when
//   Ana Ruiz · third conversation · last one Sep 1.
//   ...
//   <!-- /ombrix:engine -->
//
// A card is written once and is not the user's to keep: it has neither notes nor corrections. Its
// "for" is the time on the clock where the machine is, without a zone.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "OmbrixMemoryKit/EnginePaths.h"
#include "OmbrixMemoryKit/Memory/BeforeModels.h"
#include "OmbrixMemoryKit/Memory/MemoryRegionParser.h"
#include "OmbrixPlatform/Calendar.h"

namespace ombrix::BeforeFile {

constexpr std::string_view source = EnginePaths::beforeSource;
constexpr std::string_view subfolder = "Before";  ///< of the Memory folder
constexpr std::string_view closingLine = MemoryRegionParser::closingLine;

/// "2026-09-08-launch-weekly.md".
std::string fileName(std::string_view date, std::string_view slug);
/// The text in lower case, each run of characters that are neither letters nor numbers as one "-",
/// at most 60 characters, without a "-" at its end. May be empty, and may begin with "-".
std::string slug(std::string_view text);

/// The whole text of the file. Line ends in a text become blanks, a marker in one is written with
/// "&lt;". `sources` is how many sources the card rests on; `calendar` is in the machine's zone.
std::string render(const BeforeCard& card, std::string_view writer, Instant at,
                   std::int64_t sources, const Calendar& calendar);

/// The card in a file. What `render` wrote comes back, save that line ends are blanks and that
/// brackets in a line are read as its sources. Nothing for a text that is no card, has no title or
/// no time, or whose region is damaged. Never throws; linear.
std::optional<BeforeCard> parse(std::string_view text, const Calendar& calendar);

/// True when the text contains "source: Ombrix Before" and a line feed right after it.
bool declares(std::string_view text);
}  // namespace ombrix::BeforeFile
