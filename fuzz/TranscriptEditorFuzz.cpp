// Edits of any text: what is outside an edit's place stays, and doing it twice changes nothing.
#include <string>

#include "Law.h"
#include "OmbrixMarkdownKit/Transcript/NotesBlockWriter.h"
#include "OmbrixMarkdownKit/Transcript/TranscriptEditor.h"
#include "OmbrixMemoryKit/Notes/NotesActionItems.h"
#include "OmbrixMemoryKit/Notes/NotesBlockEdit.h"
#include "OmbrixPlatform/Text.h"

using namespace ombrix;
using Fuzz::law;

namespace {

void checkBlock(std::string_view text) {
    const std::string sections = "## Summary\nS";
    const std::string written = TranscriptEditor::setEnhancedSections(text, sections);
    if (TranscriptEditor::machineStretch(text)) {
        law(TranscriptEditor::enhancedSections(written) == sections, "what is written is read");
        law(TranscriptEditor::setEnhancedSections(written, sections) == written, "written twice");
    }
    for (const auto header : TranscriptEditor::aiHeaders) {
        const std::string once = TranscriptEditor::setAISection(text, header, "B");
        const auto stretch = TranscriptEditor::machineStretch(text);
        if (!stretch) continue;
        law(once.starts_with(text.substr(0, stretch->begin)), "what is ahead stays");
        law(once.ends_with(text.substr(stretch->end)), "what follows stays");
        law(TranscriptEditor::setAISection(once, header, "B") == once, "set twice");
    }
}

void checkNotes(std::string_view text, std::string_view body) {
    constexpr Instant now{};
    using NotesBlockEdit::Section;
    for (const auto section : {Section::summary, Section::actionItems}) {
        const auto edited = NotesBlockEdit::replace(section, body, text, now);
        law(edited.has_value() == TranscriptEditor::enhancedSections(text).has_value(),
            "a block is edited, and only a block");
        if (!edited) continue;
        const auto stretch = TranscriptEditor::machineStretch(text);
        law(edited->starts_with(text.substr(0, stretch->begin)), "what is ahead stays");
        law(edited->ends_with(text.substr(stretch->end)), "what follows stays");
    }
    const std::string sane = NotesBlockWriter::sanitizedSections(text);
    law(NotesBlockWriter::sanitizedSections(sane) == sane, "sanitised twice");
    law(NotesActionItems::parse(text).render() == Text::withLineFeeds(text), "items render back");
}
}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const auto [body, text] = Fuzz::firstLineAndRest(Fuzz::text(data, size));
    checkBlock(text);
    checkNotes(text, body);
    const std::string renamed = TranscriptEditor::renameSpeaker(text, body, "\x01");
    if (!Text::contains(text, "\x01"))
        law(Text::replacingAll(renamed, "\x01", body) == text, "a renaming is undone by hand");
    TranscriptEditor::setTitle(text, body);
    TranscriptEditor::setNotes(text, body);
    return 0;
}
