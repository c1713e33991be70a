#include "OmbrixMarkdownKit/Transcript/TranscriptDocument.h"

#include "OmbrixPlatform/Text.h"

namespace ombrix {

bool TranscriptDocument::hasUserNotes() const {
    const auto written = Text::trimmed(notes);
    return !written.empty() && written != notesPlaceholder;
}

Json::Value encode(const TranscriptDocument::Turn& turn) {
    return Json::object({{"speaker", turn.speaker}, {"text", turn.text}});
}

TranscriptDocument::Turn decode(Json::As<TranscriptDocument::Turn>, const Json::Object& in) {
    return {.speaker = in.required<std::string>("speaker"),
            .text = in.required<std::string>("text")};
}
}  // namespace ombrix

std::size_t std::hash<ombrix::TranscriptDocument::Turn>::operator()(
    const ombrix::TranscriptDocument::Turn& turn) const noexcept {
    const std::hash<std::string> text;
    return text(turn.speaker) * 31 + text(turn.text);
}

std::size_t std::hash<ombrix::TranscriptDocument>::operator()(
    const ombrix::TranscriptDocument& document) const noexcept {
    std::size_t result = 0;
    const std::hash<std::string> text;
    for (const std::string* field : {&document.title, &document.date, &document.startedAt,
                                     &document.notes, &document.summary, &document.meetingNotes}) {
        result = result * 31 + text(*field);
    }
    for (const auto& turn : document.turns)
        result = result * 31 + std::hash<ombrix::TranscriptDocument::Turn>()(turn);
    return result;
}
