// What models answer and what landing left on disk: records, sidecars and aliases.
//
// libFuzzer: -dict=fuzz/json.dict
#include <string>

#include "AnswerLaws.h"
#include "OmbrixMemoryKit/Identity/ISODate.h"
#include "OmbrixMemoryKit/Identity/PersonAliases.h"
#include "OmbrixMemoryKit/Land/LandInputBuilder.h"
#include "OmbrixMemoryKit/Land/LandSidecar.h"

using namespace ombrix;
using Fuzz::law;

namespace {

void checkAnswer(std::string_view text) {
    try {
        const LandOutput output = LandOutput::decode(text);
        for (const auto& each : output.commitments)
            law(!each.due || ISODate::date(*each.due), "a due day is a day");
        const std::string written = Json::write(encode(output), Json::Style::canonical);
        law(LandOutput::decode(written) == output, "an accepted record is accepted again");

        const auto turns = LandInputBuilder::reduceTurns({&output, 1});
        law(turns.size() == 1 && turns[0].text.starts_with("Summary: "), "a record is one turn");
    } catch (const LandOutput::DecodeError& error) {
        Fuzz::checkRefusal(error);
    }
}

void checkSidecar(std::string_view text) {
    try {
        const LandSidecar sidecar = LandSidecar::decode(text);
        const std::string written = sidecar.encode();
        law(LandSidecar::decode(written) == sidecar, "a sidecar reads back");
        law(LandSidecar::decode(written).encode() == written, "written again, the same text");
    } catch (const Json::SyntaxError&) {
    } catch (const Json::DecodingError&) {
    }
}

void checkAliases(std::string_view text) {
    try {
        const auto aliases = Json::decode<PersonAliases>(text);
        const std::string written = Json::write(encode(aliases), Json::Style::file);
        law(Json::decode<PersonAliases>(written) == aliases, "aliases read back");
        PersonAliases again;
        for (const auto& identity : aliases.identities()) again.add(identity);
        for (const auto& identity : aliases.identities())
            for (const auto& key : identity.allKeys())
                law(again.canonical(key) == again.canonical(identity.canonical),
                    "the keys of one identity stay together");
    } catch (const Json::SyntaxError&) {
    } catch (const Json::DecodingError&) {
    }
}
}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string_view text = Fuzz::text(data, size);
    checkAnswer(text);
    checkSidecar(text);
    checkAliases(text);
    return 0;
}
