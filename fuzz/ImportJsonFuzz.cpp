// Exports in JSON, of any bytes.
#include <string>

#include "ImportLaws.h"
#include "OmbrixMarkdownKit/Import/JsonExport.h"
#include "OmbrixMarkdownKit/Import/LineEnds.h"
#include "OmbrixPlatform/Utf8.h"

using namespace ombrix;

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string text = Utf8::repaired(Fuzz::text(data, size));
    Fuzz::convertsOrSaysWhyNot(text);
    std::string storage;
    const auto lines = TranscriptImport::withPlainLineEnds(text, storage);
    for (const auto& meeting : TranscriptImport::parseJSONExport(lines))
        Fuzz::turnsReadBack(meeting.turns);
    return 0;
}
