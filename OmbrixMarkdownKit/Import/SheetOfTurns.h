// A table with who speaks in one column and what is said in another, in a row for each turn:
//
//   Start,Speaker,Text                Beginn;Sprecher;Text
//   0:03,Ana Ruiz,We keep the price.  0:03;Ana Ruiz;Der Preis bleibt.
#pragma once

#include <optional>
#include <string_view>

#include "OmbrixMarkdownKit/Import/ParsedMeeting.h"

namespace ombrix::TranscriptImport {

/// The meeting of a table whose columns are separated by commas, semicolons or tabs, and whose
/// first line has a name for both columns. A row without a speaker goes on with the one before.
/// Nothing unless somebody speaks again, or has a number. Looks at nothing but the first line of
/// any other text.
std::optional<ParsedMeeting> readSheetOfTurns(std::string_view text);
}  // namespace ombrix::TranscriptImport
