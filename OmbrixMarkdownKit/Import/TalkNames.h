// Who may speak in a line whose form alone proves little. Names here are trimmed by `trimmedName`.
#pragma once

#include <string_view>

namespace ombrix::TranscriptImport {

/// Without white space and without the marks that turn the direction of writing, at both ends.
std::string_view trimmedName(std::string_view name);

/// A name that may stand beside a clock: 1 to 4 words, at most 48 characters. The first word, and
/// each other but particles such as "van", begins with a capital, a number or a letter of a script
/// without case; before a number, as in "Người nói 1", any letters follow the first word. The
/// labels of `isSpeakerLabel` count; those of `isNobody` do not.
bool isTalkName(std::string_view name);

/// A name in a script without case: letters only (and what stands inside words, as in "צ'רלי"), at
/// most four words, or at most 20 characters without a blank, and perhaps a number. "甲说" (A says)
/// is none.
bool isCaselessName(std::string_view name);

/// True for "Speaker 2", "Intervenant 1" and "発言者2": a program tells voices apart, whose names
/// it does not know.
bool isNumbered(std::string_view name);

/// "SPEAKER_00", "spk_1", "Speaker_A".
bool isSpeakerLabel(std::string_view name);

/// True when the name by itself looks like somebody's: two words and more, numbered, a speaker's
/// label, "Me" or a name in a script without case. "Server" is none, and neither is "Ana".
bool isPersonal(std::string_view name);

/// True for the labels that documents, logs and schedules put before a colon or a clock, in any
/// case, and for each with a number: "Step 2". Numbered attendees are somebody.
bool isNobody(std::string_view name);
}  // namespace ombrix::TranscriptImport
