#include "OmbrixAnswerKit/Answer/GroundedAnswerPrompt.h"

#include <cstddef>

#include "OmbrixPlatform/Text.h"
#include "embedded/OmbrixAnswerKit/CommitmentsShapeInstructions.md.h"
#include "embedded/OmbrixAnswerKit/GroundedAnswerInstructions.md.h"
#include "embedded/OmbrixAnswerKit/TimelineShapeInstructions.md.h"

namespace ombrix::GroundedAnswerPrompt {
namespace {

constexpr std::string_view request =
    "Answer the question using only these sources, citing them by number. "
    "If they do not contain the answer, say so.";

void appendSource(std::string& message, std::size_t number, const RetrievedCitation& source) {
    message += "[" + std::to_string(number) + "] " + source.title + " — " + source.date;
    if (!source.participants.empty())
        message += " — with " + Text::joined(source.participants, ", ");
    message += "\n";
    for (const auto& snippet : source.snippets) message += "    • " + snippet + "\n";
}
}  // namespace

constinit const std::string_view instructions =
    Embedded::OmbrixAnswerKit::groundedAnswerInstructionsMd;

std::string build(std::string_view question, const std::vector<RetrievedCitation>& citations) {
    std::string message = "Question: ";
    message += question;
    message += "\n\nSources:\n";
    std::size_t number = 0;
    for (const auto& citation : citations) appendSource(message, ++number, citation);
    message += "\n";
    message += request;
    return message;
}

std::optional<std::string_view> shapeInstructions(AnswerShape shape) {
    switch (shape) {
        case AnswerShape::prose:
            break;
        case AnswerShape::timeline:
            return Embedded::OmbrixAnswerKit::timelineShapeInstructionsMd;
        case AnswerShape::commitments:
            return Embedded::OmbrixAnswerKit::commitmentsShapeInstructionsMd;
    }
    return std::nullopt;
}
}  // namespace ombrix::GroundedAnswerPrompt
