// An answer of any bytes, read in every form. What is read as a list and written in that form reads
// back.
#include <string>
#include <vector>

#include "Law.h"
#include "OmbrixAnswerKit/Shape/StructuredAnswer.h"
#include "OmbrixPlatform/Text.h"

using namespace ombrix;
using Fuzz::law;

namespace {

StructuredAnswer parse(std::string_view text, AnswerShape shape) {
    return StructuredAnswerParser::parse(text, shape, {"a", "b"});
}

void checkItem(const StructuredAnswer::Item& item, AnswerShape shape) {
    law(!Text::contains(item.text, "\n"), "an item is one line");
    law(!item.date || (shape == AnswerShape::timeline && item.date->size() == 10), "a day");
    law(!item.owner || (shape == AnswerShape::commitments && !item.owner->empty()), "an owner");
    for (const auto index : item.citationIndices)
        law(index >= 0 && index <= 99, "a bracket has two digits at most");
}

std::string written(const StructuredAnswer& answer) {
    const bool isTimeline = answer.shape == AnswerShape::timeline;
    std::string text = answer.summary.value_or("");
    text += isTimeline ? "\n## Timeline\n" : "\n## Commitments\n";
    for (const auto& item : answer.items) {
        text +=
            "- " + (isTimeline ? item.date.value_or("undated") : item.owner.value_or("unowned"));
        text += " — " + item.text + "\n";
    }
    return text + "(none)";
}

void checkList(const StructuredAnswer& answer) {
    bool canBeWritten = true;
    for (const auto& item : answer.items) {
        checkItem(item, answer.shape);
        canBeWritten = canBeWritten && !item.text.empty();
    }
    law(!answer.summary || !Text::trimmedBlanks(*answer.summary).empty(),
        "a summary says something");
    law(!answer.summary || !Text::contains(*answer.summary, "\n"), "on one line");
    if (canBeWritten) law(parse(written(answer), answer.shape) == answer, "a list reads back");
}
}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string_view text = Fuzz::text(data, size);
    for (const auto shape : {AnswerShape::prose, AnswerShape::timeline, AnswerShape::commitments}) {
        const StructuredAnswer answer = parse(text, shape);
        law(answer == parse(text, shape), "read twice, the same");
        law(answer.citationIDs == std::vector<std::string>{"a", "b"}, "citations are passed on");
        if (answer.shape == AnswerShape::prose) {
            law(!answer.summary && answer.items.empty(), "prose has no items");
            law(answer.proseText.value_or("") == Text::trimmed(text), "prose loses nothing");
        } else {
            law(answer.shape == shape && !answer.proseText, "a list has the shape asked for");
            checkList(answer);
        }
    }
    return 0;
}
