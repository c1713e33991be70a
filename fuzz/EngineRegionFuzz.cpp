// What a person may have done to an engine file: its region, the corrections in it, and the lines
// that say who wrote something.
#include <string>

#include "Law.h"
#include "OmbrixMemoryKit/EnginePaths.h"
#include "OmbrixMemoryKit/Notes/EngineProvenance.h"
#include "OmbrixMemoryKit/Region/Corrections.h"
#include "OmbrixMemoryKit/Region/EngineRegion.h"
#include "OmbrixPlatform/LineCursor.h"
#include "OmbrixPlatform/Text.h"

using namespace ombrix;
using Fuzz::law;

namespace {

void checkRegion(std::string_view text) {
    const auto parsed = EngineRegion::parse(text);
    const auto next = EngineRegion::replace(text, "<!-- ombrix:engine v1 by=\"x\" -->", "new");
    law(parsed.has_value() == next.has_value(), "what parses can be replaced, and nothing else");
    if (!parsed) return;
    law(parsed->before + parsed->openLine + "\n" + parsed->content +
                std::string(EngineRegion::closeMarker) + parsed->after ==
            Text::withLineFeeds(text),
        "the pieces are the file");
    // A CR in front of a CR LF becomes part of a line end once that is a line feed.
    if (Text::contains(text, "\r\r")) return;
    const auto again = EngineRegion::parse(*next);
    law(again && again->content == "new\n", "the new region is the new content");
    law(again->before == parsed->before && again->after == parsed->after, "the rest is kept");
}

void checkCorrections(std::string_view text) {
    const auto section = Corrections::section(text);
    law(!section || !Text::contains("\n" + *section, "\n## "), "a section has no heading");
    const auto corrections = Corrections::parse(section.value_or(std::string(text)));
    std::string list;
    for (const auto& line : Corrections::lines(corrections)) list += "- " + line + "\n";
    law(Corrections::parse(list) == corrections, "corrections read back");
}

void checkLine(std::string_view line) {
    if (const auto open = EngineRegion::parseOpenLine(line); open && open->at) {
        const auto written = EngineRegion::openMarker(open->by, *open->at, open->sources);
        const auto again = EngineRegion::parseOpenLine(written);
        law(again && again->at == open->at && again->sources == open->sources,
            "an open line reads back");
    }
    if (const auto provenance = EngineProvenance::parse(line)) {
        law(EngineProvenance::parse(provenance->machineLine()) == provenance,
            "a machine line reads back");
        law(provenance->byline().starts_with("Written by "), "somebody wrote it");
    }
}
}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string_view text = Fuzz::text(data, size);
    checkRegion(text);
    checkCorrections(text);
    LineCursor lines(text);
    while (const auto line = lines.next()) checkLine(*line);
    EnginePaths::declaresEngineFile(text);
    return 0;
}
