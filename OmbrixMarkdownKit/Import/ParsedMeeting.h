// One meeting as a reader of exports collects it: who said what, and what the export says of the
// meeting. What is collected is fit for a transcript file: no name and no text holds anything that
// would read as structure there, whatever the export holds.
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "OmbrixMarkdownKit/Import/ImportFormat.h"
#include "OmbrixMarkdownKit/Transcript/TranscriptDocument.h"

namespace ombrix::TranscriptImport {

using Turn = TranscriptDocument::Turn;

struct ParsedMeeting {
    std::vector<Turn> turns;           ///< no two of the same speaker in a row
    std::optional<std::string> title;  ///< as the export has it; may be blank
    std::optional<std::string> date;   ///< "YYYY-MM-DD"
    std::optional<Format> format;      ///< nothing: the format of the whole export
};

/// Who speaks when the export does not say it.
constexpr std::string_view unknownSpeaker = "Speaker 1";

/// Appends what `speaker` said: to the last turn, after a blank, when it is by the same speaker,
/// else as a new turn. Text that is blank is dropped. The name goes through `plainName`, the text
/// through `appendPlain`.
void append(std::vector<Turn>& turns, std::string_view speaker, std::string_view text);

/// Appends `text` as part of one line of a transcript: each line break (LF, CR, CR LF) becomes a
/// blank, and "<!--" becomes "<! --", since comments are how the system marks its own blocks.
void appendPlain(std::string& line, std::string_view text);

/// `text` by the same rules, trimmed.
std::string plainLine(std::string_view text);

/// `name` by the same rules, without ":**", which would end the name early; `unknownSpeaker` when
/// nothing is left.
std::string plainName(std::string_view name);
}  // namespace ombrix::TranscriptImport
