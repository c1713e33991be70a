#include "OmbrixAnswerKit/Answer/AnswerSynthesis.h"

#include "OmbrixAnswerKit/Answer/GroundedAnswerPrompt.h"

namespace ombrix {
namespace {

const char* message(AnswerSynthesisError::Reason reason) {
    using enum AnswerSynthesisError::Reason;
    switch (reason) {
        case unavailable:
            return "the synthesizer is not available";
        case emptyInput:
            return "there are no sources to answer from";
        case emptyOutput:
            return "the synthesizer gave no text";
        case cancelled:
            return "the synthesis was cancelled";
    }
    return "";
}
}  // namespace

AnswerSynthesisError::AnswerSynthesisError(Reason reason)
    : std::runtime_error(message(reason)), reason_(reason) {}

StructuredAnswer AnswerSynthesizer::synthesize(std::string_view question,
                                               const std::vector<RetrievedCitation>& citations,
                                               AnswerShape shape) const {
    std::string request(question);
    if (const auto format = GroundedAnswerPrompt::shapeInstructions(shape)) {
        request += "\n\n";
        request += *format;
    }
    // The numbers in the text mean places in `citations`, even when the synthesizer names fewer.
    return StructuredAnswerParser::parse(synthesize(request, citations).text, shape,
                                         ombrix::citationIDs(citations));
}

SynthesizedAnswer MockAnswerSynthesizer::synthesize(
    std::string_view /*question*/, const std::vector<RetrievedCitation>& citations) const {
    using enum AnswerSynthesisError::Reason;
    if (!available) throw AnswerSynthesisError(unavailable);
    if (citations.empty()) throw AnswerSynthesisError(emptyInput);
    if (!response || response->empty()) throw AnswerSynthesisError(emptyOutput);
    return {.text = *response, .citationIDs = citationIDs(citations)};
}
}  // namespace ombrix
