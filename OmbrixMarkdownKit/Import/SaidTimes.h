// Times that people say, "3:30 works for me" or "Monday 3:30", look like the clocks of a recording.
#pragma once

#include "OmbrixMarkdownKit/Import/Talk.h"

namespace ombrix::TranscriptImport {

/// Makes what is said of lines with more than a clock whose clock is written unlike that of most
/// speakers' lines (in brackets or not, with half of the day or not), of speakers' lines only when
/// these are few; and of lines of nobody whose clock, without brackets, is out of order between
/// their neighbours.
void giveBackSaidTimes(Talk& talk);
}  // namespace ombrix::TranscriptImport
