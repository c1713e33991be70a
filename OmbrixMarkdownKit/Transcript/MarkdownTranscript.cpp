#include "OmbrixMarkdownKit/Transcript/MarkdownTranscript.h"

#include "OmbrixMarkdownKit/Transcript/TranscriptHeader.h"
#include "OmbrixMarkdownKit/Transcript/TranscriptSections.h"
#include "OmbrixPlatform/Text.h"

namespace ombrix::MarkdownTranscriptParser {
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
    TranscriptHeader::read(frame.header, document);
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

std::optional<TranscriptDocument> parse(std::string_view text) {
    std::string lineFeeds;
    if (Text::contains(text, "\r\n")) {
        lineFeeds = Text::withLineFeeds(text);
        text = lineFeeds;
    }
    const auto found = frame(text);
    if (!found) return std::nullopt;
    return documentOf(*found);
}
}  // namespace ombrix::MarkdownTranscriptParser
