// A memory file that a person edited, in any bytes: read, its notes replaced, rendered again.
#include <string>

#include "Law.h"
#include "OmbrixMemoryKit/Memory/MemoryFiles.h"
#include "OmbrixMemoryKit/Memory/MemoryNotes.h"
#include "OmbrixMemoryKit/Memory/MemoryRegionParser.h"
#include "OmbrixMemoryKit/Region/EngineRegion.h"
#include "OmbrixPlatform/Text.h"

using namespace ombrix;
using Fuzz::law;

namespace {

/// Of CR CR LF the second pair becomes LF in one writing, and the first in the next.
bool isSettled(std::string_view text) { return !Text::contains(text, "\r\n"); }

void checkNotes(std::string_view notes, std::string_view file) {
    const std::string once = MemoryNotes::replacing(notes, file);
    const auto section = once.find("## Notes\n");
    law(section != once.npos, "the text has notes");
    // Notes that begin as a heading end their section, and the placeholder is no note.
    const auto own = Text::trimmed(notes);
    const bool isPlain = !Text::contains(notes, "\r") && isSettled(once) && !own.starts_with("## ");
    if (isPlain && own != MemoryNotes::placeholder)
        law(MemoryNotes::body(once) == own, "the notes read back");
    if (isPlain) {
        const std::string twice = MemoryNotes::replacing(notes, once);
        law(MemoryNotes::replacing(notes, twice) == twice, "writing again changes nothing");
    }
}

void checkRegion(std::string_view text) {
    for (const auto& section : MemoryRegionParser::sections(text))
        for (const auto& line : section.lines)
            law(!line.followUpID || line.followUpID->size() == 10, "an id is an id");
}
}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const auto [words, file] = Fuzz::firstLineAndRest(Fuzz::text(data, size));
    checkNotes(words, file);
    checkRegion(file);

    const auto parsed = MemoryFile::parse(file);
    const auto region = EngineRegion::parse(file);
    law(!parsed || region, "a file without a region is not read");
    if (parsed) checkRegion(parsed->engineText);

    MemoryFileMeta meta{.title = "Ana", .key = "name:ana", .lastSeen = "2026-09-01"};
    if (parsed) meta = parsed->meta;
    const Instant at = *parseIsoInstant("2026-09-01T14:03:22Z");
    const ConsolidateOutput output{.kind = meta.kind,
                                   .who = {{.text = std::string(words)}},
                                   .throughLine = std::string(words),
                                   .notSure = {std::string(words)}};
    const auto rendered = MemoryFile::render(meta, output, words, at, 1, file);
    const bool isBlank = Text::trimmed(file).empty();
    law(rendered.has_value() == (isBlank || region.has_value()), "a damaged file is left alone");
    if (!rendered) return 0;
    const auto now = EngineRegion::parse(*rendered);
    law(now.has_value(), "what is rendered has one region");
    law(now->content == Text::withLineFeeds(MemoryFile::regionContent(output)), "and it is ours");
    law(isBlank || now->after == Text::withLineFeeds(region->after), "what is below is kept");
    if (!isSettled(*rendered)) return 0;
    law(MemoryFile::parse(*rendered).has_value(), "and is a memory file");
    law(MemoryFile::render(meta, output, words, at, 1, *rendered) == rendered,
        "rendering again changes nothing");
    return 0;
}
