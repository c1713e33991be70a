#include "OmbrixMemoryKit/Land/LandNotesPolicy.h"

#include "embedded/OmbrixMemoryKit/land-notes-contract.md.h"

namespace ombrix::LandNotesPolicy {
namespace {

constexpr std::string_view contract = Embedded::OmbrixMemoryKit::landNotesContractMd;
static_assert(contract.ends_with('\n'));
}  // namespace

constinit const std::string_view prompt = contract.substr(0, contract.size() - 1);

const Regex& commentary() {
    static const Regex expression(
        R"(\b(?:the |this )?transcript (?:labels?|quality|is |was |appears?|seems?|contains?|suggests?|indicates?)\b|)"
        R"(\b(?:speaker|turn) labels?\b|)"
        R"(\bspeaker[- ](?:confidence|identity|attribution|identification)\b|)"
        R"(\b(?:transcription|diarization) (?:errors?|quality|artifacts?)\b|)"
        R"(\bspeaker \d+ (?:is|was|might be|may be|could be|appears to be|seems to be|refers to)\b|)"
        R"(\b(?:my|our|the model.s) (?:reasoning|analysis|inference)\b|)"
        R"(\bI (?:infer|inferred|assume|assumed|deduce|deduced|reasoned|think|conclude|concluded)\b|)"
        R"(<\/?(?:think|analysis|reasoning)>)");
    return expression;
}

bool containsCommentary(std::string_view text) { return commentary().found(text); }
}  // namespace ombrix::LandNotesPolicy
