#include "OmbrixMarkdownKit/Transcript/MarkdownTranscript.h"

#include "OmbrixMarkdownKit/Transcript/TranscriptSections.h"
#include "OmbrixPlatform/Text.h"

namespace ombrix {
namespace {

using namespace TranscriptSections;

std::vector<TranscriptDocument::Turn> turnsOf(std::string_view section) {
    std::vector<TranscriptDocument::Turn> turns;
    Paragraphs paragraphs(section);
    for (Paragraph paragraph; paragraphs.next(paragraph);) {
        if (paragraph.opensTurn)
            turns.push_back({std::string(paragraph.speaker), std::string(paragraph.text)});
        else
            turns.back().text.append("\n\n").append(paragraph.text);
    }
    return turns;
}

TranscriptDocument documentOf(const Frame& frame) {
    TranscriptDocument document;
    readHeader(frame.header, document);
    const Sections sections(frame.body);
    std::string storage;
    document.notes = sections.text(Section::notes, storage);
    document.turns = turnsOf(sections.raw(Section::transcript));
    document.summary = sections.text(Section::summary, storage);
    document.meetingNotes = sections.text(Section::meetingNotes, storage);
    document.actionItems = sections.text(Section::actionItems, storage);
    document.keyMoments = sections.text(Section::keyMoments, storage);
    return document;
}
}  // namespace

bool TranscriptDocument::hasUserNotes() const {
    const auto written = Text::trimmed(notes);
    return !written.empty() && written != notesPlaceholder;
}

Json::Value encode(const TranscriptDocument::Turn& turn) {
    return Json::object({{"speaker", turn.speaker}, {"text", turn.text}});
}

TranscriptDocument::Turn decodeTurn(const Json::Object& in) {
    return {.speaker = in.required<std::string>("speaker"),
            .text = in.required<std::string>("text")};
}

std::optional<TranscriptDocument> MarkdownTranscriptParser::parse(std::string_view text) {
    std::string lineFeeds;
    if (Text::contains(text, "\r\n")) {
        lineFeeds = Text::withLineFeeds(text);
        text = lineFeeds;
    }
    const auto found = frame(text);
    if (!found) return std::nullopt;
    return documentOf(*found);
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
