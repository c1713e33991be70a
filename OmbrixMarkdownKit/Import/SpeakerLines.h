// Who speaks in one line of an export: the names that count as such and the forms of a line that
// begin with one. Lines are trimmed. What is returned shows the argument, or `storage` where there
// is one and tags had to be removed.
#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "OmbrixMarkdownKit/Import/ImportPatterns.h"

namespace ombrix::TranscriptImport {

/// The name trimmed; "Me" for "me", "you", "self" and "myself", ignoring case.
std::string_view normalizeSpeaker(std::string_view name);

/// 1 to 4 words and at most 48 characters with a letter among them, without double blanks and
/// without what names do not hold: .!?,;"'()[]{}<>/\|@ and zero bytes.
bool isPlausibleName(std::string_view name);

/// 1 to 4 words that each begin with an upper-case letter or a number and go on with letters,
/// numbers, "-", "'", "." and "’".
bool isNameShaped(std::string_view name);

/// True for labels such as "Action items" that stand before a colon and are nobody, ignoring case.
bool isSectionWord(std::string_view label);

/// The line without one leading "- ", "* " or "> ", trimmed.
std::string_view stripBullet(std::string_view line);

/// "Ann: text". The name is plausible and no section word, the text, without tags, not empty. The
/// name is normalized.
std::optional<SpeechLine> inlineSpeaker(std::string_view line, std::string& storage);

/// "**Ann:** text", with a plausible name that stays as written; the text may be empty. A line that
/// begins with "**" and has no ":**" is read by `inlineSpeaker`; any other gives nothing.
std::optional<SpeechLine> markdownSpeakerLine(std::string_view line, std::string& storage);

/// The forms of other tools' Markdown: "[MIC] 00:12 text" by "Me" and "[SYS] text" by "Them",
/// `markdownSpeakerLine`, and "Ann Lee (00:12): text" with a name-shaped name, the last two after a
/// bullet or quote mark, too. The text may be empty.
std::optional<SpeechLine> exportSpeechLine(std::string_view line, std::string& storage);
}  // namespace ombrix::TranscriptImport
