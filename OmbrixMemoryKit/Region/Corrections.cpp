#include "OmbrixMemoryKit/Region/Corrections.h"

#include <array>
#include <cstddef>
#include <utility>

#include "OmbrixMemoryKit/Identity/CommitmentID.h"
#include "OmbrixPlatform/Characters.h"
#include "OmbrixPlatform/LineCursor.h"
#include "OmbrixPlatform/Regex.h"
#include "OmbrixPlatform/Text.h"

namespace ombrix::Corrections {
namespace {

using Kind = Correction::Kind;

constexpr std::string_view heading = "## Corrections\n";
constexpr std::string_view nextHeading = "\n## ";
constexpr std::string_view privateLine = "private";

// The keywords, in the order in which they are looked for: the first must come before "not:".
constexpr auto keywords = std::to_array<std::pair<Kind, std::string_view>>({
    {Kind::notACommitment, "not a commitment:"},
    {Kind::alias, "alias:"},
    {Kind::notSame, "not:"},
    {Kind::done, "done:"},
    {Kind::important, "important:"},
    {Kind::reword, "reword:"},
});

std::optional<Correction> ofID(Kind kind, std::string_view id) {
    if (!CommitmentID::isValid(id)) return std::nullopt;
    return Correction{.kind = kind, .id = std::string(id)};
}

std::optional<Correction> ofText(Kind kind, std::string_view text) {
    if (text.empty()) return std::nullopt;
    return Correction{.kind = kind, .text = std::string(text)};
}

std::optional<Correction> done(std::string_view payload) {
    const auto pieces = Text::split(payload, " on ");
    if (pieces.size() != 2) return std::nullopt;
    const auto day = Text::trimmedBlanks(pieces[1]);
    auto correction = ofID(Kind::done, Text::trimmedBlanks(pieces[0]));
    if (!correction || !isISODate(day)) return std::nullopt;
    correction->on = day;
    return correction;
}

std::optional<Correction> reword(std::string_view payload) {
    const auto colon = payload.find(':');
    if (colon == payload.npos) return std::nullopt;
    const auto words = Text::trimmedBlanks(payload.substr(colon + 1));
    auto correction = ofID(Kind::reword, Text::trimmedBlanks(payload.substr(0, colon)));
    if (!correction || words.empty()) return std::nullopt;
    correction->text = words;
    return correction;
}

std::optional<Correction> ofKind(Kind kind, std::string_view payload) {
    switch (kind) {
        case Kind::alias:
        case Kind::notSame:
            return ofText(kind, payload);
        case Kind::done:
            return done(payload);
        case Kind::reword:
            return reword(payload);
        default:
            return ofID(kind, payload);
    }
}

std::optional<Correction> correction(std::string_view line) {
    std::string_view body = Text::trimmedBlanks(line);
    if (!body.starts_with('-')) return std::nullopt;
    body = Text::trimmedBlanks(body.substr(1));
    // No letter outside ASCII is one of the keywords' in lower case.
    if (body.size() == privateLine.size() && Text::startsWithIgnoringAsciiCase(body, privateLine))
        return Correction{.kind = Kind::isPrivate};
    for (const auto& [kind, keyword] : keywords)
        if (Text::startsWithIgnoringAsciiCase(body, keyword))
            return ofKind(kind, Text::trimmedBlanks(body.substr(keyword.size())));
    return std::nullopt;
}

std::string line(const Correction& correction) {
    const auto& [kind, id, text, on] = correction;
    switch (kind) {
        case Kind::notACommitment:
            return "not a commitment: " + id;
        case Kind::alias:
            return "alias: " + text;
        case Kind::notSame:
            return "not: " + text;
        case Kind::done:
            return "done: " + id + " on " + on;
        case Kind::reword:
            return "reword: " + id + ": " + text;
        case Kind::important:
            return "important: " + id;
        case Kind::isPrivate:
            break;
    }
    return std::string(privateLine);
}
}  // namespace

bool isISODate(std::string_view text) {
    static const Regex day(R"(^\d{4}-\d{2}-\d{2}$)");
    return Characters::count(text) == 10 && day.found(text);
}

std::optional<std::string> section(std::string_view in) {
    const std::string text = Text::withLineFeeds(in);
    std::size_t place = text.find("\n" + std::string(heading));
    if (place != text.npos)
        place += 1;
    else if (text.starts_with(heading))
        place = 0;
    else
        return std::nullopt;
    const std::size_t begin = place + heading.size();
    // A heading may begin right here, after the line feed of this one.
    const std::size_t end = text.find(nextHeading, begin - 1);
    return end < begin ? std::string() : text.substr(begin, end - begin);
}

std::vector<Correction> parse(std::string_view section) {
    std::vector<Correction> corrections;
    LineCursor lines(section);
    while (const auto line = lines.next())
        if (auto read = correction(*line)) corrections.push_back(std::move(*read));
    return corrections;
}

std::vector<std::string> lines(const std::vector<Correction>& corrections) {
    std::vector<std::string> result;
    for (const auto& correction : corrections) result.push_back(line(correction));
    return result;
}

std::vector<Correction> forRecipe(std::vector<Correction> corrections) {
    std::erase_if(corrections, [](const auto& each) { return each.kind == Kind::important; });
    return corrections;
}
}  // namespace ombrix::Corrections
