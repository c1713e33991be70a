// Talk without clocks whose speakers have names that the readers of Markdown do not take for names.
//
//   SPEAKER_00: We keep the price.        田中：価格は据え置きです。
//   [SPEAKER_01]: And we say so.          佐藤：そう伝えましょう。
//   SPEAKER_00 00:05 In April?            【田中】四月ですか。
#pragma once

#include <optional>
#include <string_view>

#include "OmbrixMarkdownKit/Import/ParsedMeeting.h"

namespace ombrix::TranscriptImport {

/// True for a line that begins with a label such as "SPEAKER_00" or "[spk_1]".
bool hasSpeakerLabel(std::string_view line);

/// The meeting of a text whose speakers have such labels, all of one form; nothing when they have
/// several, or most of the text is something else. Clocks after all labels are dropped.
std::optional<ParsedMeeting> readSpeakerLabels(std::string_view text);

/// True for a trimmed line with a name in a script without case, and a colon, plain or full-width,
/// or with such a name in "【】".
bool hasCaselessSpeaker(std::string_view line);

/// The meeting of a text with such names; nothing unless two of them return and most lines have
/// one.
std::optional<ParsedMeeting> readCaselessSpeakers(std::string_view text);

/// True when what `readMarkdown` finds in `text` is a conversation, and not a document that has
/// labels at the beginning of some lines.
bool isPlainTalk(std::string_view text);
}  // namespace ombrix::TranscriptImport
