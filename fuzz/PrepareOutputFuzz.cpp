// A model's answer to the prepare recipe. What is taken is written and read back, and its moves
// have ids that a second mapping gives too.
//
// libFuzzer: -dict=fuzz/json.dict
#include <set>
#include <string>

#include "AnswerLaws.h"
#include "OmbrixMemoryKit/Moves/PrepareSidecar.h"

using namespace ombrix;
using Fuzz::law;

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    PrepareOutput output;
    try {
        output = PrepareOutput::decode(Fuzz::text(data, size));
    } catch (const PrepareOutput::DecodeError& error) {
        Fuzz::checkRefusal(error);
        return 0;
    }
    const std::string written = Json::write(encode(output), Json::Style::canonical);
    law(Json::decode<PrepareOutput>(written) == output, "an answer reads back");
    std::set<std::string, std::less<>> turns;
    for (const auto& move : output.moves)
        for (const auto& claim : move.claims)
            turns.insert(claim.turnIDs.begin(), claim.turnIDs.end());
    try {
        output.validate(turns);
    } catch (const PrepareOutput::CitationError& error) {
        Fuzz::checkRefusal(error);
        law(!std::holds_alternative<PrepareOutput::CitationError::UnknownTurn>(error.reason()),
            "a turn of the meeting is known");
    }
    law(PrepareMapping::moves(output, "m", "t") == PrepareMapping::moves(output, "m", "t"),
        "the same answer gives the same moves");
    return 0;
}
