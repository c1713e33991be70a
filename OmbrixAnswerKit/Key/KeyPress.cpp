#include "OmbrixAnswerKit/Key/KeyPress.h"

#include <algorithm>
#include <array>
#include <limits>
#include <utility>

#include "OmbrixAnswerKit/Key/KeyWords.h"
#include "OmbrixPlatform/Numbers.h"
#include "OmbrixPlatform/Regex.h"
#include "OmbrixPlatform/Text.h"
#include "OmbrixPlatform/Utf8.h"

namespace ombrix::KeyPress {
namespace {

using Candidates = std::vector<MeetingCandidate>;

std::int64_t units(std::string_view text) {
    return static_cast<std::int64_t>(Utf8::utf16Length(text));
}

/// The byte offset of a unit, clamped into the text.
std::size_t byteOf(std::string_view text, std::int64_t unit) {
    return Utf8::byteOffset(text, static_cast<std::size_t>(std::max<std::int64_t>(unit, 0)));
}

/// The field's selection as it is meant, in bytes.
ByteRange selectedBytes(const FieldSnapshot& field) {
    const auto [first, last] = std::minmax(field.selStart, field.selEnd);
    return {byteOf(field.text, first), byteOf(field.text, last)};
}

std::string_view trimmedSelection(const FieldSnapshot& field) {
    return Text::trimmed(selectedBytes(field).of(field.text));
}

// ---- which meetings fit -----------------------------------------------------------------------

/// Finds the candidates of which a term and one of the words stand in one another.
class Fitting {
  public:
    explicit Fitting(std::string_view text) : lowered_(Text::lowercased(text)) {
        constexpr std::size_t shortestWord = 3;  // in units
        words_ = KeyWords::inLowered(lowered_);
        std::erase_if(words_,
                      [](std::string_view word) { return Utf8::utf16Length(word) < shortestWord; });
        std::ranges::sort(words_);
        words_.erase(std::ranges::unique(words_).begin(), words_.end());
    }

    Candidates of(const Candidates& candidates) const {
        Candidates fitting;
        if (words_.empty()) return fitting;
        std::ranges::copy_if(candidates, std::back_inserter(fitting), [&](const auto& candidate) {
            return std::ranges::any_of(candidate.terms,
                                       [&](const auto& term) { return has(term); });
        });
        return fitting;
    }

  private:
    bool has(std::string_view term) const {
        return !term.empty() && std::ranges::any_of(words_, [&](std::string_view word) {
            return word.size() < term.size() ? Text::contains(term, word)
                                             : Text::contains(word, term);
        });
    }

    std::string lowered_;
    std::vector<std::string_view> words_;  // of `lowered_`, each once
};

/// Completes a plan of that kind by the meetings it may rest on: two or more leave the choice to
/// the person.
Plan restingOn(Candidates meetings, Plan plan) {
    if (meetings.size() == 1) plan.matched = std::move(meetings.front());
    if (meetings.size() > 1) {
        plan.asked = std::exchange(plan.kind, Kind::ambiguous);
        plan.choices = std::move(meetings);
    }
    return plan;
}

Plan guessFrom(std::string_view text) {
    return {.kind = Kind::guess, .lookedAt = std::string(text)};
}

Plan planOfSkill(const Candidates& candidates, const SkillText& found) {
    std::string request(Text::trimmed(found.request.value_or("")));
    Candidates meetings = Fitting(request).of(candidates);
    if (request.empty()) meetings = candidates;
    return restingOn(std::move(meetings),
                     {.kind = Kind::skill, .skill = found.skill, .request = std::move(request)});
}

Plan planOfSelection(const Candidates& candidates, std::string_view selected) {
    if (candidates.empty()) return guessFrom(selected);
    Candidates meetings = Fitting(selected).of(candidates);
    if (meetings.empty()) meetings = candidates;
    return restingOn(std::move(meetings), {.kind = Kind::selection});
}

Plan planOfText(const Candidates& candidates, std::string_view text) {
    Candidates meetings = Fitting(text).of(candidates);
    if (isShort(text)) {
        if (meetings.empty()) return guessFrom(text);
        return restingOn(std::move(meetings), {.kind = Kind::instruction});
    }
    if (meetings.empty() && !candidates.empty()) meetings = {candidates.front()};
    return restingOn(std::move(meetings), {.kind = Kind::unchanged});
}

// ---- landing ----------------------------------------------------------------------------------

Landing whole(std::string text) {
    const std::int64_t end = units(text);
    return {.text = std::move(text), .selStart = end, .selEnd = end};
}

Landing inSelection(const FieldSnapshot& before, const std::string& draft) {
    const std::string_view text = before.text;
    const ByteRange selected = selectedBytes(before);
    const std::int64_t start = units(text.substr(0, selected.begin));
    return {.text = std::string(text.substr(0, selected.begin)) + draft +
                    std::string(text.substr(selected.end)),
            .selStart = start,
            .selEnd = start + units(draft)};
}
}  // namespace

bool isShort(std::string_view text) {
    // A unit takes at most three bytes, so a very long text need not be counted.
    return text.size() < longTextUnits * 3 && Utf8::utf16Length(text) < longTextUnits;
}

Json::Value encode(const MeetingCandidate& candidate) {
    return Json::object({{"id", candidate.id},
                         {"title", candidate.title},
                         {"date", candidate.date},
                         {"terms", candidate.terms}});
}

MeetingCandidate decode(Json::As<MeetingCandidate>, const Json::Object& in) {
    return {.id = in.required<std::string>("id"),
            .title = in.required<std::string>("title"),
            .date = in.required<std::string>("date"),
            .terms = in.required<std::vector<std::string>>("terms")};
}

Json::Value encode(const FieldSnapshot& field) {
    return Json::object(
        {{"text", field.text}, {"selStart", field.selStart}, {"selEnd", field.selEnd}});
}

FieldSnapshot decode(Json::As<FieldSnapshot>, const Json::Object& in) {
    return {.text = in.required<std::string>("text"),
            .selStart = in.required<std::int64_t>("selStart"),
            .selEnd = in.required<std::int64_t>("selEnd")};
}

Plan plan(const World& world, const Press& press) {
    const auto text = Text::trimmed(press.text);
    if (const auto skill = skillText(text)) return planOfSkill(world.candidates, *skill);
    const auto selected = trimmedSelection(press);
    if (!selected.empty()) return planOfSelection(world.candidates, selected);
    if (!text.empty()) return planOfText(world.candidates, text);
    if (world.candidates.empty()) return guessFrom("this window");
    return restingOn(world.candidates, {.kind = Kind::empty});
}

Plan resolveAsked(const Plan& plan, const MeetingCandidate& chosen) {
    if (plan.kind != Kind::ambiguous) return plan;
    return {.kind = plan.asked.value_or(Kind::empty),
            .skill = plan.skill,
            .request = plan.request,
            .matched = chosen};
}

Plan pulled(const MeetingCandidate& chosen, const Press& press) {
    const auto text = Text::trimmed(press.text);
    const auto kind = [&] {
        if (!trimmedSelection(press).empty()) return Kind::selection;
        if (text.empty()) return Kind::empty;
        return isShort(text) ? Kind::instruction : Kind::unchanged;
    };
    return {.kind = kind(), .matched = chosen};
}

std::optional<Landing> landing(const Plan& plan, const FieldSnapshot& before,
                               const Drafts& drafts) {
    switch (plan.kind) {
        case Kind::empty:
        case Kind::instruction:
            return whole(drafts.draft);
        case Kind::selection:
            return inSelection(before, drafts.selection);
        case Kind::skill:
            return whole(drafts.skill);
        case Kind::guess:
            if (before.selStart != before.selEnd || !drafts.guess) return std::nullopt;
            return whole(*drafts.guess);
        case Kind::ambiguous:
        case Kind::unchanged:
            break;
    }
    return std::nullopt;
}

std::optional<Range> replacedRange(const Plan& plan, const FieldSnapshot& before) {
    const std::string_view text = before.text;
    const ByteRange selected = selectedBytes(before);
    switch (plan.kind) {
        case Kind::selection:
            return Range{units(text.substr(0, selected.begin)),
                         units(text.substr(0, selected.end))};
        case Kind::guess:
            if (before.selStart != before.selEnd) return std::nullopt;
            [[fallthrough]];
        case Kind::empty:
        case Kind::instruction:
        case Kind::skill:
            return Range{0, units(text)};
        case Kind::ambiguous:
        case Kind::unchanged:
            break;
    }
    return std::nullopt;
}

std::optional<FieldSnapshot> undo(const Plan& plan, const FieldSnapshot& before) {
    if (plan.kind == Kind::ambiguous || plan.kind == Kind::unchanged) return std::nullopt;
    return before;
}

std::vector<MarkPhase> markPhases(const Plan& plan) {
    using enum MarkPhase;
    if (plan.kind == Kind::unchanged) return {looking};
    if (plan.kind == Kind::guess) return {looking, guess, almost, writing};
    if (plan.kind == Kind::ambiguous) return {looking, asked};
    if (plan.matched) return {looking, reading, almost, writing};
    return {looking, almost, writing};
}

std::string_view markLabel(MarkPhase phase) {
    switch (phase) {
        case MarkPhase::looking:
            return "looking";
        case MarkPhase::reading:
            return "reading the meeting";
        case MarkPhase::guess:
            return "going from this window";
        case MarkPhase::almost:
            return "almost there";
        case MarkPhase::writing:
            return "writing";
        case MarkPhase::asked:
            return "which meeting?";
    }
    return {};
}

std::optional<SourceLine> source(const Plan& plan, const std::optional<std::string>& threadName) {
    if (plan.kind == Kind::guess) return SourceLine{std::nullopt, std::string(bestGuess)};
    if (plan.kind == Kind::unchanged || plan.kind == Kind::ambiguous || !plan.matched)
        return std::nullopt;
    const MeetingCandidate& meeting = *plan.matched;
    std::string label = meeting.title + ", " + formatDate(meeting.date);
    if (threadName && !meeting.title.starts_with(*threadName)) label = *threadName + " · " + label;
    return SourceLine{meeting.id, std::move(label)};
}

std::string formatDate(std::string_view date) {
    constexpr std::array<std::string_view, 12> months{"Jan", "Feb", "Mar", "Apr", "May", "Jun",
                                                      "Jul", "Aug", "Sep", "Oct", "Nov", "Dec"};
    const auto parts = Text::split(date, "-");
    if (parts.size() < 3) return std::string(date);
    const auto month = Numbers::parseInteger<std::int64_t>(parts[1]);
    const auto day = Numbers::parseInteger<std::int64_t>(parts[2]);
    if (!month || !day || *month < 1 || *month > 12) return std::string(date);
    return std::string(months.at(static_cast<std::size_t>(*month - 1))) + " " +
           std::to_string(*day);
}

bool isDoubleTap(bool isRightCommand, bool isRepeat, std::optional<double> last, double now) {
    constexpr double longestGap = 0.300000001;  // 0.3 seconds and what subtracting may add
    return isRightCommand && !isRepeat && last && now - *last <= longestGap;
}

std::optional<SkillText> skillText(std::string_view text) {
    static const Regex skillPattern(R"(^/([a-z0-9-]+)(?:\s+([\s\S]*))?$)", Regex::Case::ignored);
    if (!text.starts_with('/')) return std::nullopt;
    const auto match = skillPattern.firstMatch(text);
    if (!match) return std::nullopt;
    std::optional<std::string> request;
    if (match->has(2)) request.emplace(match->group(2, text));
    return SkillText{.skill = Text::lowercased(match->group(1, text)),
                     .request = std::move(request)};
}

std::optional<std::string> slashQuery(std::string_view text) {
    static const Regex slashQueryPattern(R"(^/([a-z0-9-]*)$)", Regex::Case::ignored);
    if (!text.starts_with('/')) return std::nullopt;
    const auto match = slashQueryPattern.firstMatch(text);
    if (!match) return std::nullopt;
    return Text::lowercased(match->group(1, text));
}

std::string slice(std::string_view text, std::int64_t start, std::int64_t end) {
    const std::size_t from = byteOf(text, start);
    const std::size_t to = byteOf(text, end);
    return std::string(from < to ? text.substr(from, to - from) : std::string_view());
}
}  // namespace ombrix::KeyPress
