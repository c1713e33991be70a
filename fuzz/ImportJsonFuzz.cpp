// Exports in JSON, of any bytes.
//
// libFuzzer: -dict=fuzz/json.dict
#include "ImportLaws.h"
#include "OmbrixMarkdownKit/Import/JsonExport.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    return ombrix::Fuzz::importLaws(data, size, ombrix::TranscriptImport::parseJSONExport);
}
