// The text export of Otter, of any bytes.
#include <string>

#include "ImportLaws.h"
#include "OmbrixMarkdownKit/Import/LineEnds.h"
#include "OmbrixMarkdownKit/Import/OtterReader.h"
#include "OmbrixPlatform/Utf8.h"

using namespace ombrix;

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string text = Utf8::repaired(Fuzz::text(data, size));
    Fuzz::convertsOrSaysWhyNot(text);
    std::string storage;
    const auto lines = TranscriptImport::withPlainLineEnds(text, storage);
    Fuzz::turnsReadBack(TranscriptImport::readOtter(lines));
    return 0;
}
