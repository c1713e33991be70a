// The day and the title that an export, or the name of its file, gives for a meeting.
#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace ombrix::TranscriptImport {

/// The day that `text` names, as "YYYY-MM-DD": "2026-03-02", "2026_03_02", "2026/03/02", "March 2,
/// 2026", "Mar 2, 2026" or "2 March 2026", with anything before and after it. A date in numbers
/// wins over a month's name, and the first of each form counts. Nothing when it is not there or
/// does not exist, as 2026-02-30.
std::optional<std::string> isoDay(std::string_view text);

/// The first "YYYY-MM-DD" or "YYYY_MM_DD" in `text`, through `isoDay`; other forms do not count.
std::optional<std::string> numericDay(std::string_view text);

/// The day of a text that is no more than "May 14", "14 May" or "Thu, May 14": the last such day
/// that is not after `reference`, "YYYY-MM-DD". Nothing for any other text and without a reference.
std::optional<std::string> dayWithoutYear(std::string_view text,
                                          const std::optional<std::string>& reference);

/// The title of a meeting that has no other.
constexpr std::string_view untitled = "Imported meeting";

/// A title from a file's name: "2026-03-02_pricing-weekly transcript.vtt" is "pricing weekly". The
/// extension, the first numeric day and one final " transcript", " recording" or " export",
/// ignoring case, are removed; "_", "-" and runs of white space become single blanks.
/// `untitled` when nothing is left.
std::string titleFromFilename(std::string_view name);
}  // namespace ombrix::TranscriptImport
