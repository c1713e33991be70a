#include "OmbrixMemoryKit/Land/AnswerFault.h"

#include <algorithm>

#include "OmbrixPlatform/Characters.h"
#include "OmbrixPlatform/JsonFault.h"
#include "OmbrixPlatform/Text.h"
#include "OmbrixPlatform/Utf8.h"

namespace ombrix {
namespace {

constexpr std::size_t longestText = 80;  // characters

std::string cut(std::string_view text) {
    const auto start = Characters::prefix(text, longestText);
    return start.size() == text.size() ? std::string(text) : std::string(start) + "…";
}

std::string_view firstLine(std::string_view text) { return text.substr(0, text.find('\n')); }

/// The last characters of a text that was cut off.
std::string ending(std::string_view text) {
    return std::string(text.substr(Characters::backward(text, text.size(), longestText / 2)));
}

bool isUtf16(std::string_view text) {
    if (text.starts_with("\xFF\xFE") || text.starts_with("\xFE\xFF")) return true;
    return text.size() > 1 && (text[0] == '\0') != (text[1] == '\0');
}

AnswerFault fault(std::string problem, std::string text = {}) {
    return {.problem = std::move(problem), .text = std::move(text)};
}

/// A fault inside what begins as an object does.
AnswerFault faultInside(std::string_view text) {
    const auto found = Json::firstFault(text);
    if (!found) return fault("a number that is too large");
    if (found->isCut)
        return fault("the answer is cut off: " + found->problem + "; send it whole", ending(text));
    const auto rest = text.substr(found->at);
    const auto line = 1 + std::ranges::count(text.substr(0, found->at), '\n');
    return fault("not JSON in line " + std::to_string(line) + ": " + found->problem,
                 cut(firstLine(Text::trimmed(rest).empty() ? rest : Text::trimmed(rest))));
}
}  // namespace

std::string AnswerFault::message() const {
    std::string message = path.empty() ? problem : path + ": " + problem;
    if (!Text::contains(problem, text)) message += ": " + text;
    return Text::withVisibleControls(message);
}

AnswerFault AnswerFault::ofText(std::string_view answer) {
    if (isUtf16(answer)) return fault("the answer is UTF-16; send UTF-8");
    if (answer.starts_with("\xEF\xBB\xBF"))
        return fault("the answer begins with a byte order mark; send it without");
    if (!Utf8::isValid(answer)) return fault("the answer is not UTF-8");
    const auto text = Text::trimmed(answer);
    if (text.empty()) return fault("the answer is empty");
    if (text.starts_with("```"))
        return fault("the answer is fenced in Markdown; send the JSON alone", cut(firstLine(text)));
    if (text.starts_with('{')) return faultInside(text);
    const auto object = text.find('{');
    if (object == text.npos) return fault("the answer holds no JSON object", cut(firstLine(text)));
    return fault("words before the JSON; send the JSON alone",
                 cut(Text::trimmed(text.substr(0, object))));
}

AnswerFault AnswerFault::of(const Json::DecodingError& error) {
    return {.rule = Rule::shape,
            .path = error.path(),
            .problem = error.problem(),
            .text = error.found()};
}

Json::Value encode(const AnswerFault& fault) {
    return Json::object({{"rule", fault.rule},
                         {"path", fault.path},
                         {"problem", fault.problem},
                         {"text", fault.text}});
}

std::string AnswerPath::item(std::string_view list, std::size_t index) {
    return std::string(list) + "[" + std::to_string(index) + "]";
}

std::string AnswerPath::inQuotes(std::string_view text) { return "\"" + cut(text) + "\""; }

AnswerFault notADay(std::string path, std::string_view value) {
    return {.rule = AnswerFault::Rule::day,
            .path = std::move(path),
            .problem = AnswerPath::inQuotes(value) + " is no day; write YYYY-MM-DD, or null",
            .text = cut(value)};
}
}  // namespace ombrix
