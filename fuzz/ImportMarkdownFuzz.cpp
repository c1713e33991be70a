// Markdown with speakers, of any bytes.
#include "ImportLaws.h"
#include "OmbrixMarkdownKit/Import/MarkdownReader.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    return ombrix::Fuzz::importLaws(data, size, [](std::string_view text) {
        return ombrix::TranscriptImport::readMarkdown(text).turns;
    });
}
