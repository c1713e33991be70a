#include "OmbrixMarkdownKit/Import/TimedLines.h"

#include <algorithm>
#include <array>

#include "OmbrixMarkdownKit/Import/SpeakerLines.h"
#include "OmbrixMarkdownKit/Import/TalkNames.h"
#include "OmbrixPlatform/Text.h"

namespace ombrix::TranscriptImport {
namespace {

constexpr std::string_view boldMark = "**";
/// With the marks of Markdown for slanted text and code, and its escaped brackets.
constexpr auto openBrackets =
    std::to_array<std::string_view>({"[", "(", "【", "（", "［", "\\[", "`", "*", "_"});
constexpr auto closeBrackets =
    std::to_array<std::string_view>({"]", ")", "】", "）", "］", "\\]", "`", "*", "_"});
constexpr auto dashes = std::to_array<std::string_view>({"-", "–", "—", "|", "·"});
constexpr auto colons = std::to_array<std::string_view>({":", "："});

/// Where a name and a clock must have ended.
constexpr std::size_t longestBeginning = 200;

template <std::size_t count>
bool takeOneOf(std::string_view& text, const std::array<std::string_view, count>& pieces) {
    for (const auto piece : pieces) {
        if (!text.starts_with(piece)) continue;
        text.remove_prefix(piece.size());
        return true;
    }
    return false;
}

bool take(std::string_view& text, std::string_view piece) {
    if (!text.starts_with(piece)) return false;
    text.remove_prefix(piece.size());
    return true;
}

/// The target of a link, "(https://...)", whose text was just taken.
void skipLinkTarget(std::string_view& text) {
    const std::size_t end = text.find(')');
    if (!text.starts_with('(') || end == text.npos) return;
    const auto target = text.substr(1, end - 1);
    if (target.starts_with('#') || target.starts_with('?') || Text::contains(target, "://"))
        text.remove_prefix(end + 1);
}

struct NamePart {
    std::string_view name, organisation;
};

/// "ana ruiz": a name without capitals, as people write their own.
bool isModestName(std::string_view name) {
    return isPlausibleName(name) && std::ranges::count(name, ' ') <= 1 && !isNobody(name);
}

/// "Ana Ruiz, PhD", whose second part is dropped like an organisation, and "Ruiz, Ana".
std::optional<NamePart> partWithComma(const NamePart& part, std::size_t comma) {
    const auto first = trimmedName(part.name.substr(0, comma));
    const auto second = trimmedName(part.name.substr(comma + 1));
    if (!isTalkName(first) || second.empty()) return std::nullopt;
    if (Text::contains(first, " "))
        return NamePart{first, part.organisation.empty() ? second : part.organisation};
    return isTalkName(second) ? std::optional(part) : std::nullopt;
}

/// "Ana Ruiz" of "[Ana Ruiz]"; any other text as it is.
std::string_view withoutBrackets(std::string_view text) {
    const bool isInBrackets =
        text.size() > 2 && text.starts_with('[') && text.find(']') == text.size() - 1;
    return isInBrackets ? trimmedName(text.substr(1, text.size() - 2)) : text;
}

/// "Ana Ruiz", "Ana Ruiz (Acme)", each also bold or in brackets; nothing when nobody has such a
/// name. Names without capitals count only where the rest of the line is hardly anything else.
std::optional<NamePart> namePart(std::string_view text, bool isCertainPlace = false) {
    text = trimmedName(text);
    take(text, boldMark);
    if (text.ends_with(boldMark)) text.remove_suffix(boldMark.size());
    NamePart part{.name = withoutBrackets(trimmedName(text))};
    if (part.name.ends_with(')')) {
        const std::size_t open = part.name.rfind('(');
        if (open == part.name.npos) return std::nullopt;
        part.organisation = trimmedName(part.name.substr(open + 1));
        part.organisation.remove_suffix(1);
        part.organisation = trimmedName(part.organisation);
        part.name = trimmedName(part.name.substr(0, open));
        if (part.name.ends_with(boldMark)) part.name.remove_suffix(boldMark.size());
    }
    if (const std::size_t comma = part.name.find(','); comma != part.name.npos)
        return partWithComma(part, comma);
    if (!isTalkName(part.name) && !(isCertainPlace && isModestName(part.name))) return std::nullopt;
    part.name = normalizeSpeaker(part.name);
    return part;
}

/// Takes the colon and bold marks around it; a plain colon counts before a blank or at the end.
bool takeColon(std::string_view& text) {
    std::string_view rest = trimmedName(text);
    take(rest, boldMark);
    rest = trimmedName(rest);
    const bool isPlain = rest.starts_with(':');
    if (!takeOneOf(rest, colons)) return false;
    const bool hasBold = take(rest, boldMark);
    if (isPlain && !hasBold && !rest.empty() && trimmedName(rest).size() == rest.size())
        return false;
    text = trimmedName(rest);
    return true;
}

/// "Ana Ruiz: text" after a clock in front.
std::optional<TimedLine> speechAfterClock(std::string_view rest) {
    for (std::size_t at = 0; at < std::min(rest.size(), longestBeginning); ++at) {
        if (rest[at] != ':' && !rest.substr(at).starts_with(colons[1])) continue;
        std::string_view text = rest.substr(at);
        const auto name = namePart(rest.substr(0, at));
        if (!name || !takeColon(text)) return std::nullopt;
        return TimedLine{.form = TimedForm::clockThenSpeech,
                         .name = name->name,
                         .organisation = name->organisation,
                         .text = text,
                         .hasColon = true};
    }
    return std::nullopt;
}

/// "[SPEAKER_00] text" after a clock in front: only labels need no colon.
std::optional<TimedLine> labelAfterClock(std::string_view rest) {
    const std::size_t close = rest.starts_with('[') ? rest.find(']') : rest.npos;
    if (close == rest.npos) return std::nullopt;
    const auto label = withoutBrackets(rest.substr(0, close + 1));
    const auto text = trimmedName(rest.substr(close + 1));
    if (!isSpeakerLabel(label) || text.empty() || text.starts_with(':')) return std::nullopt;
    return TimedLine{.form = TimedForm::clockThenSpeech, .name = label, .text = text};
}

std::optional<TimedLine> clockInFront(std::string_view line) {
    take(line, boldMark);
    line = trimmedName(line);
    const auto part = takeClockMark(line);
    if (!part) return std::nullopt;
    const bool wasBold = take(line, boldMark);
    std::string_view rest = trimmedName(line);
    const bool hasGap = rest.size() < line.size() || part->isInBrackets || wasBold;
    const bool hasDash = takeOneOf(rest, dashes);
    rest = trimmedName(rest);
    if (!hasGap && !hasDash && !rest.empty()) return std::nullopt;
    auto found = labelAfterClock(rest);
    if (!found) found = speechAfterClock(rest);
    if (!found && (hasDash || part->isInBrackets)) {
        if (const auto name = namePart(rest)) {
            found = TimedLine{.form = TimedForm::clockThenName,
                              .name = name->name,
                              .organisation = name->organisation,
                              .text = rest};
        }
    }
    if (!found) found = TimedLine{.form = TimedForm::clockOnly, .text = rest};
    found->clock = part->clock;
    found->isInBrackets = part->isInBrackets;
    return found;
}

/// The line from a clock on at which a name could have ended.
std::optional<TimedLine> clockAfterName(std::string_view name, std::string_view rest) {
    const auto part = takeClockMark(rest);
    if (!part) return std::nullopt;
    TimedLine found{
        .form = TimedForm::nameThenClock, .clock = part->clock, .isInBrackets = part->isInBrackets};
    found.hasColon = takeColon(rest);
    if (!found.hasColon) {
        rest = trimmedName(rest);
        take(rest, boldMark);
        rest = trimmedName(rest);
        if (!rest.empty() && !part->isInBrackets) return std::nullopt;
    }
    if (!rest.empty()) found.form = TimedForm::nameThenSpeech;
    found.text = rest;
    name = trimmedName(name);
    for (const std::string_view mark : {"-", "–", "—", "|", "·", ","})
        if (name.ends_with(mark)) name.remove_suffix(mark.size());
    const auto whose = namePart(name, found.hasColon && part->isInBrackets);
    if (!whose) return std::nullopt;
    const bool isLabel = isNumbered(whose->name) || isSpeakerLabel(whose->name);
    if (!rest.empty() && !found.hasColon && !isLabel) return std::nullopt;
    found.name = whose->name;
    found.organisation = whose->organisation;
    return found;
}

bool opensBracket(std::string_view text) {
    return std::ranges::any_of(openBrackets, [&](auto open) { return text.starts_with(open); });
}

std::optional<TimedLine> clockAfterName(std::string_view line) {
    for (std::size_t at = 1; at < std::min(line.size(), longestBeginning); ++at) {
        const auto rest = line.substr(at);
        const bool followsGap = line[at - 1] == ' ' || line[at - 1] == '\t' ||
                                line[at - 1] == '*' || !Text::isAscii(line[at - 1]);
        const bool isDigit = Text::isAsciiDigit(rest[0]) || !Text::isAscii(rest[0]);
        if (!opensBracket(rest) && !(followsGap && isDigit)) continue;
        if (auto found = clockAfterName(line.substr(0, at), rest)) return found;
    }
    return std::nullopt;
}

/// The line without a bullet and the marks of a heading.
std::string_view withoutHeadingMarks(std::string_view line) {
    if (line.starts_with('#'))
        line.remove_prefix(std::min(line.find_first_not_of('#'), line.size()));
    return trimmedName(stripBullet(line));
}
}  // namespace

bool mayHoldClock(std::string_view text) {
    const auto isDigitOfAnyScript = [](char c) {
        return Text::isAsciiDigit(c) || !Text::isAscii(c);
    };
    for (std::size_t at = text.find(':'); at != text.npos; at = text.find(':', at + 1)) {
        if (at == 0 || at + 1 == text.size()) continue;
        if (isDigitOfAnyScript(text[at - 1]) && isDigitOfAnyScript(text[at + 1])) return true;
    }
    return false;
}

std::optional<ClockMark> takeClockMark(std::string_view& text) {
    constexpr auto ranges = std::to_array<std::string_view>({"-->", "->", "-", "–", "—", "→"});
    std::string_view rest = text;
    ClockMark mark{.isInBrackets = takeOneOf(rest, openBrackets)};
    if (mark.isInBrackets) rest = trimmedName(rest);
    const auto clock = takeClock(rest);
    if (!clock) return std::nullopt;
    mark.clock = *clock;
    std::string_view end = trimmedName(rest);
    if (takeOneOf(end, ranges)) {
        end = trimmedName(end);
        if (takeClock(end)) rest = end;
    }
    if (mark.isInBrackets) {
        rest = trimmedName(rest);
        if (!takeOneOf(rest, closeBrackets)) return std::nullopt;
        skipLinkTarget(rest);
    }
    text = rest;
    return mark;
}

std::optional<TimedLine> timedLine(std::string_view line) {
    if (!mayHoldClock(line.substr(0, longestBeginning))) return std::nullopt;
    const bool isHeading = line.starts_with('#');
    line = withoutHeadingMarks(line);
    auto found = clockInFront(line);
    if (!found) found = clockAfterName(line);
    if (found && isHeading && found->form != TimedForm::nameThenClock &&
        found->form != TimedForm::clockThenName)
        return std::nullopt;
    return found;
}

bool isClockAlone(std::string_view line) {
    const auto found = timedLine(line);
    return found && found->form == TimedForm::clockOnly && found->text.empty();
}

bool isNameAlone(std::string_view line) {
    return line.size() <= longestBeginning && namePart(withoutHeadingMarks(line)).has_value();
}
}  // namespace ombrix::TranscriptImport
