// What `give land` does with an answer and with the transcript that it writes notes into. The first
// line is the answer, the rest the transcript.
//
// libFuzzer: -dict=fuzz/json.dict
#include <string>

#include "Law.h"
#include "OmbrixEngine/Changes/UnifiedDiff.h"
#include "OmbrixEngine/Steps/AnswerDoubts.h"
#include "OmbrixEngine/Steps/TranscriptFacts.h"
#include "OmbrixMarkdownKit/Transcript/MarkdownTranscript.h"
#include "OmbrixMarkdownKit/Transcript/TranscriptEditor.h"
#include "OmbrixMemoryKit/Notes/NotesBlockEdit.h"
#include "OmbrixPlatform/Utf8.h"

using namespace ombrix;
using Fuzz::law;

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const auto [answer, given] = Fuzz::firstLineAndRest(Fuzz::text(data, size));
    const std::string transcript = Utf8::repaired(given);
    const auto document = MarkdownTranscriptParser::parse(transcript);
    const bool mayWrite = engineMayWriteNotes(transcript);
    if (document) {
        const auto facts = TranscriptFacts::of(transcript, *document);
        law(facts.hasOwnNotes == !mayWrite, "the facts say whose the notes are");
        TranscriptFactsCache::Row row{.size = 1, .modified = 2, .facts = facts};
        const std::string text = Json::write(encode(row), Json::Style::canonical);
        law(Json::decode<TranscriptFactsCache::Row>(text).facts == facts, "facts read back");
    }
    try {
        const LandOutput output = LandOutput::decode(answer);
        if (document) law(doubtsAbout(output, document->turns).size() <= 20, "few doubts");
        if (!mayWrite) return 0;
        const EngineProvenance writer{.model = "a-model", .at = Instant()};
        const std::string notes =
            NotesBlockRenderer::payload(output, writer, Calendar::gregorianUtc());
        const std::string written = TranscriptEditor::setEnhancedSections(transcript, notes);
        law(engineMayWriteNotes(written), "the engine may write again what it wrote");
        law(TranscriptEditor::setEnhancedSections(written, notes) == written,
            "the same notes change nothing");
        law(UnifiedDiff::make("a", transcript, written).empty() == (transcript == written),
            "a difference is shown");
        if (document) {
            const auto again = MarkdownTranscriptParser::parse(written);
            law(again && TranscriptFacts::of(written, *again).fingerprint ==
                             TranscriptFacts::of(transcript, *document).fingerprint,
                "notes do not change what was said");
        }
    } catch (const LandOutput::DecodeError&) {
    }
    return 0;
}
