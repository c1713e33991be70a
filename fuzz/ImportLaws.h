// What every import must keep: the transcript that is written reads back as what was said.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "Law.h"
#include "OmbrixMarkdownKit/Import/LineEnds.h"
#include "OmbrixMarkdownKit/Import/ParsedMeeting.h"
#include "OmbrixMarkdownKit/Import/TranscriptImport.h"
#include "OmbrixMarkdownKit/Transcript/MarkdownTranscript.h"
#include "OmbrixPlatform/Utf8.h"

namespace ombrix::Fuzz {

/// Writes a transcript of the turns that a reader gave and reads it back.
inline void turnsReadBack(const std::vector<TranscriptDocument::Turn>& turns) {
    const auto participants = TranscriptImport::orderedParticipants(turns);
    const std::string file = TranscriptImport::render("Title", "2026-07-30", participants, turns,
                                                      TranscriptImport::Format::webVTT, "x.vtt");
    const auto document = MarkdownTranscriptParser::parse(file);
    law(document.has_value(), "what is written is a transcript");
    law(document->turns == turns, "the same turns");
    law(document->participants == participants, "the same participants");
    law(document->summary.empty() && document->actionItems.empty() &&
            document->keyMoments.empty() && document->meetingNotes.empty(),
        "no other sections");
    for (std::size_t i = 1; i < turns.size(); ++i)
        law(turns[i].speaker != turns[i - 1].speaker, "turns of one speaker are one");
}

/// Converts a whole text as a file of that name would be.
inline void convertsOrSaysWhyNot(std::string_view text) {
    try {
        for (const auto& result : TranscriptImport::convertAll(text, "x.txt", std::nullopt)) {
            const auto document = MarkdownTranscriptParser::parse(result.markdown);
            law(document.has_value(), "a result is a transcript");
            law(document->title == result.title, "the same title");
            law(document->date == result.date.value_or(""), "the same day");
            law(document->participants == result.participants, "the same names");
            law(document->turns.size() == static_cast<std::size_t>(result.turnCount), "all turns");
            law(result.turnCount > 0, "somebody speaks");
        }
    } catch (const TranscriptImport::Failure&) {
    }
}
inline void turnsReadBack(const std::vector<TranscriptImport::ParsedMeeting>& meetings) {
    for (const auto& meeting : meetings) turnsReadBack(meeting.turns);
}

/// All laws, for any bytes. `read` is one reader; it takes a text with plain line ends and returns
/// turns or meetings.
template <typename Read>
int importLaws(const std::uint8_t* data, std::size_t size, Read read) {
    const std::string bytes = Utf8::repaired(text(data, size));
    convertsOrSaysWhyNot(bytes);
    std::string storage;
    turnsReadBack(read(TranscriptImport::withPlainLineEnds(bytes, storage)));
    return 0;
}
}  // namespace ombrix::Fuzz
