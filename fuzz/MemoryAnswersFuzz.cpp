// What models answer to the consolidate and the before recipe, up to the files that it becomes.
//
// libFuzzer: -dict=fuzz/json.dict
#include <string>

#include "AnswerLaws.h"
#include "OmbrixMemoryKit/Memory/BeforeFile.h"
#include "OmbrixMemoryKit/Memory/MemoryFiles.h"

using namespace ombrix;
using Fuzz::law;

namespace {

const Instant at = *parseIsoInstant("2026-09-08T07:50:00Z");

void checkConsolidate(std::string_view text) {
    try {
        const auto output = ConsolidateOutput::decode(text);
        const std::string written = Json::write(encode(output), Json::Style::canonical);
        law(ConsolidateOutput::decode(written) == output, "an accepted record is accepted again");
        const MemoryFileMeta meta{.title = "Ana", .kind = output.kind, .key = "name:ana"};
        const auto file = MemoryFile::render(meta, output, "Claude", at, 1);
        law(file && MemoryFile::parse(*file).has_value(), "its memory file reads back");
    } catch (const LandOutput::DecodeError& error) {
        Fuzz::checkRefusal(error);
    }
}

void checkBefore(std::string_view text) {
    try {
        const auto output = BeforeOutput::decode(text);
        const std::string written = Json::write(encode(output), Json::Style::canonical);
        law(BeforeOutput::decode(written) == output, "an accepted record is accepted again");
        const auto card = output.card(output.whoAndWhen, at, {output.whoAndWhen}, {}, "Claude", at);
        const auto calendar = Calendar::gregorianUtc();
        const auto file = BeforeFile::render(card, "Claude", at, 1, calendar);
        law(BeforeFile::parse(file, calendar).has_value(), "its card reads back");
    } catch (const Json::SyntaxError&) {
    } catch (const Json::DecodingError&) {
    }
    try {
        BeforeOutput::decodeOrRefuse(text);
    } catch (const RefusedAnswer& error) {
        Fuzz::checkRefusal(error);
    }
}
}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string_view text = Fuzz::text(data, size);
    checkConsolidate(text);
    checkBefore(text);
    return 0;
}
