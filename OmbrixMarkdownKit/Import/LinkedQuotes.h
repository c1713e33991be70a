// The Markdown of Limitless's account export and of its shared pages: quotes whose speaker is a
// link to the moment in the recording.
//
//   # Walk with Jonas
//
//   ## The roadmap
//
//   > [8](#startMs=1715702700000&endMs=1715702701000): The mobile app can wait.
//
//   > [You](#startMs=1715702702000&endMs=1715702704000): Until spring, yes.
#pragma once

#include <string_view>
#include <vector>

#include "OmbrixMarkdownKit/Import/ParsedMeeting.h"

namespace ombrix::TranscriptImport {

/// The meetings of the text in which somebody speaks, one under each "# " heading; none for a text
/// without such a quote. The label of a link, a number or a name, is the speaker. The day is that
/// of the first quote, in UTC. Of other lines only those of the same quote belong to what is said.
std::vector<ParsedMeeting> readLinkedQuotes(std::string_view text);
}  // namespace ombrix::TranscriptImport
