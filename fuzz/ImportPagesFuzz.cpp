// Pages of JSON and Markdown with linked quotes, of any bytes.
#include "ImportLaws.h"
#include "OmbrixMarkdownKit/Import/JsonPages.h"
#include "OmbrixMarkdownKit/Import/LinkedQuotes.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using namespace ombrix::TranscriptImport;
    return ombrix::Fuzz::importLaws(data, size, [](std::string_view text) {
        auto meetings = readJSONPages(text);
        return meetings.empty() ? readLinkedQuotes(text) : meetings;
    });
}
