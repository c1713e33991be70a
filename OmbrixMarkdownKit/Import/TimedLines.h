// Lines with a clock and a name, in the forms that services of transcription write:
//
//   [00:00:03] Ana Ruiz: We keep the price.      clockThenSpeech
//   0:00 - Ana Ruiz (Acme)                       clockThenName, what she says follows
//   **Ana Ruiz** [00:02]: We keep the price.     nameThenSpeech
//   Ana Ruiz (00:03):                            nameThenClock, what she says follows
//
// A clock may be in brackets, slanted, or the text of a link, and may be a range, as in
// "[00:03 - 00:05]". A name may be in square brackets; a label such as "Speaker 1" needs no colon
// after a clock in brackets. Name and clock may be bold; the whole line may follow a bullet, a
// quote mark or, without text, the marks of a heading.
#pragma once

#include <optional>
#include <string_view>

#include "OmbrixMarkdownKit/Import/Clocks.h"

namespace ombrix::TranscriptImport {

enum class TimedForm { clockThenSpeech, nameThenSpeech, nameThenClock, clockThenName, clockOnly };

/// Views of the line.
struct TimedLine {
    TimedForm form{};
    std::string_view name;          ///< empty with `clockOnly`
    std::string_view organisation;  ///< what follows the name in parentheses: "Acme"
    /// What follows the colon, or with `clockOnly` and `clockThenName` the clock: what has the form
    /// of a name may be said, too.
    std::string_view text;
    Clock clock;
    bool hasColon = false;      ///< after name and clock
    bool isInBrackets = false;  ///< the clock, in such or in other marks
};

struct ClockMark {
    Clock clock;
    bool isInBrackets = false;
};

/// Takes a clock with all that marks it off the front of `text`: "00:03", "[00:03]",
/// "(00:03 - 00:05)", "`00:03`", "[00:03](https://...)". Nothing, and `text` as it was, when it
/// begins with something else.
std::optional<ClockMark> takeClockMark(std::string_view& text);

/// True when a digit, a colon and a digit stand side by side somewhere; what is not ASCII counts as
/// a digit. Finds the colons and little else.
bool mayHoldClock(std::string_view text);

/// What a trimmed line of these forms says; nothing for any other line. Name and clock end in
/// its first 200 bytes.
std::optional<TimedLine> timedLine(std::string_view line);

/// True for a trimmed line with a clock and nothing else.
bool isClockAlone(std::string_view line);

/// True for a trimmed line with somebody's name and nothing else, perhaps as a heading or bold.
bool isNameAlone(std::string_view line);
}  // namespace ombrix::TranscriptImport
