// The transcript parser on any bytes: the views agree with the document, and CR LF reads as LF.
#include <algorithm>
#include <string>

#include "Law.h"
#include "OmbrixMarkdownKit/Transcript/MarkdownTranscript.h"
#include "OmbrixMarkdownKit/Transcript/OmbrixTranscriptMarker.h"
#include "OmbrixMarkdownKit/Transcript/TranscriptHeader.h"
#include "OmbrixMarkdownKit/Transcript/TranscriptSections.h"
#include "OmbrixMarkdownKit/Transcript/TranscriptTurnID.h"
#include "OmbrixPlatform/Text.h"

using namespace ombrix;
using Fuzz::law;

namespace {

bool isPartOf(std::string_view part, std::string_view whole) {
    return part.empty() || (part.data() >= whole.data() &&
                            part.data() + part.size() <= whole.data() + whole.size());
}

void checkMarker(std::string_view text) {
    const std::string plain = "\n" + Text::withLineFeeds(text);
    law(OmbrixTranscriptMarker::declares(text) == Text::contains(plain, "\nsource: Ombrix\n"),
        "the marker is a line of its own");
}

/// Reading without copies, for a text with LF line ends.
void checkViews(std::string_view text, const TranscriptDocument& document) {
    const auto frame = TranscriptSections::frame(text);
    law(frame.has_value(), "what has a document has a frame");
    law(isPartOf(frame->header, text) && isPartOf(frame->body, text), "views show the text");
    TranscriptDocument header;
    TranscriptHeader::read(frame->header, header);
    law(header.title == document.title && header.date == document.date &&
            header.participants == document.participants,
        "the header alone gives the document's facts");

    const TranscriptSections::Sections sections(frame->body);
    std::string storage;
    law(sections.text(TranscriptSections::Section::notes, storage) == document.notes, "notes");
    law(sections.text(TranscriptSections::Section::summary, storage) == document.summary,
        "summary");
    const std::string_view talk = sections.raw(TranscriptSections::Section::transcript);
    law(isPartOf(talk, text), "a section shows the text");
    TranscriptSections::Paragraphs paragraphs(talk);
    TranscriptSections::Paragraph paragraph;
    std::size_t turns = 0;
    while (paragraphs.next(paragraph)) {
        law(isPartOf(paragraph.text, talk), "a paragraph shows its section");
        turns += paragraph.opensTurn ? 1 : 0;
        law(turns > 0, "the first paragraph opens a turn");
    }
    law(turns == document.turns.size(), "as many turns as paragraphs that open one");
}

void checkTurns(const TranscriptDocument& document) {
    law(std::ranges::none_of(document.turns, [](const auto& turn) { return turn.speaker.empty(); }),
        "a turn has a speaker");
    if (document.turns.size() > 200) return;  // each id is a digest: slow
    const auto ids = TranscriptTurnID::ids(document.turns);
    for (std::size_t i = 0; i < ids.size(); ++i) {
        law(TranscriptTurnID::locate(ids[i], document.turns) == TranscriptTurnID::Match::exact(i),
            "an id leads to its turn");
    }
}
}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string_view text = Fuzz::text(data, size);
    checkMarker(text);
    const auto document = MarkdownTranscriptParser::parse(text);
    law(document == MarkdownTranscriptParser::parse(text), "read twice, the same");
    const std::string lines = Text::withLineFeeds(text);
    law(Text::contains(lines, "\r\n") || document == MarkdownTranscriptParser::parse(lines),
        "CR LF reads as LF");
    if (!document) return 0;
    checkViews(lines, *document);
    checkTurns(*document);
    return 0;
}
