// Talk whose lines have clocks, and the page of a call that is copied from Fathom's site:
//
//   Pricing weekly - May 14
//   VIEW RECORDING - 32 mins: https://calls.example/x
//
//   0:00 - Ana Ruiz (Acme)
//     We keep the price.
//   0:04 - Tomas Reyes
//     And we say so in April.
#pragma once

#include <array>
#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "OmbrixMarkdownKit/Import/ParsedMeeting.h"
#include "OmbrixMarkdownKit/Import/TimedLines.h"

namespace ombrix::TranscriptImport {

/// Which forms of lines with clocks the beginning of a text has. Keeps a view of its lines.
class TimedSigns {
  public:
    void look(std::string_view trimmedLine);
    /// The forms that were seen, the most frequent first.
    std::vector<TimedForm> forms() const;
    /// True when a line with a clock alone was below one with a name alone.
    bool isClockBelowName() const { return isClockBelowName_; }

  private:
    std::array<std::size_t, 4> counts_{};  // by form
    std::string_view lastLine_;
    bool isClockBelowName_ = false;
};

/// The meeting of a text whose lines have that form; nothing when its lines do not amount to a
/// conversation: fewer than two name a speaker, the clocks go back, the names come once each as in
/// an agenda, or the texts are those of a log. `reference` is a day not before that of the meeting,
/// for pages that tell the day without its year. The format is set for a call's page only.
std::optional<ParsedMeeting> readTimedTalk(std::string_view text, TimedForm form,
                                           const std::optional<std::string>& reference);

/// The meeting of a text whose speakers have a line to themselves, and the clock the one below it,
/// by the same rules; somebody must speak again.
///
///   Speaker 1
///   00:03
///   We keep the price.
std::optional<ParsedMeeting> readClocksBelowNames(std::string_view text);
}  // namespace ombrix::TranscriptImport
