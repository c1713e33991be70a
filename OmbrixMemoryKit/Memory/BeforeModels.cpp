#include "OmbrixMemoryKit/Memory/BeforeModels.h"

#include <algorithm>
#include <cstddef>
#include <iterator>
#include <utility>

#include "OmbrixMemoryKit/Identity/CommitmentID.h"
#include "OmbrixMemoryKit/Identity/ISODate.h"
#include "OmbrixPlatform/Characters.h"
#include "OmbrixPlatform/Text.h"

namespace ombrix {
namespace {

using Kind = BeforeCard::Kind;
using SourcedLines = std::vector<SourcedLine>;

constexpr std::size_t openerCount = 3;
constexpr std::size_t longestIdText = 80;  // characters

struct HeadingRow {
    std::string_view text;
    BeforeCard::Heading meaning;
};
/// What cards are written with, one row a kind, and below it what older ones have.
constexpr HeadingRow headings[] = {
    {"What to remember", {Kind::remember, Certainty::recorded}},
    {"What you owe them", {Kind::youOwe, Certainty::recorded}},
    {"What they owe you", {Kind::theyOwe, Certainty::recorded}},
    {"Still unanswered", {Kind::question, Certainty::recorded}},
    {"What changed since", {Kind::changed, Certainty::recorded}},
    {"Three things to open with", {Kind::opener, Certainty::recorded}},
    {"Not sure", {Kind::remember, Certainty::read}},
    {"Open questions", {Kind::question, Certainty::recorded}},
    {"Remember", {Kind::remember, Certainty::recorded}},
    {"Things to remember", {Kind::remember, Certainty::recorded}},
};

/// `text` without its brackets; nothing when it has none or no title.
std::optional<MemoryRegionParser::Source> source(std::string_view text) {
    text = Text::trimmed(text);
    if (text.size() < 2 || !text.starts_with('[') || !text.ends_with(']')) return std::nullopt;
    text = text.substr(1, text.size() - 2);
    MemoryRegionParser::Source result;
    if (const auto comma = text.rfind(", "); comma != text.npos) {
        const auto day = text.substr(comma + 2);
        if (ISODate::isValid(day)) {
            result.date = day;
            text = text.substr(0, comma);
        }
    }
    if (text.empty()) return std::nullopt;
    result.title = text;
    return result;
}
}  // namespace

CanonicalInput BeforeInput::canonical() const { return canonicalInput(encode(*this)); }

Json::Value encode(BeforeEntityText entity) {
    return Json::object({{"key", std::move(entity.key)},
                         {"display", std::move(entity.display)},
                         {"engine_region_text", std::move(entity.engineRegionText)}});
}

Json::Value encode(BeforeLastSummary summary) {
    return Json::object({{"title", std::move(summary.title)},
                         {"date", std::move(summary.date)},
                         {"summary", std::move(summary.summary)}});
}

Json::Value encode(BeforeInput input) {
    return Json::object({{"version", input.version},
                         {"hash", std::move(input.hash)},
                         {"people", std::move(input.people)},
                         {"thread", std::move(input.thread)},
                         {"open_follow_ups", std::move(input.openFollowUps)},
                         {"last_summary", std::move(input.lastSummary)},
                         {"user_name", std::move(input.userName)},
                         {"today", std::move(input.today)}});
}

std::string BeforeCard::Line::id() const {
    const std::string words = CommitmentID::normalize(text);
    std::string result(rawValue(kind));
    return result.append(":").append(Characters::prefix(words, longestIdText));
}

std::vector<BeforeCard::Line> BeforeCard::linesOf(Kind kind) const {
    std::vector<Line> result;
    std::ranges::copy_if(lines, std::back_inserter(result),
                         [&](const Line& line) { return line.kind == kind; });
    return result;
}

std::vector<std::string> BeforeCard::names() const {
    const std::string_view all = whoAndWhen;
    std::vector<std::string> names;
    for (const auto name : Text::split(all.substr(0, all.find(" · ")), " and "))
        if (const auto trimmed = Text::trimmed(name); !trimmed.empty()) names.emplace_back(trimmed);
    return names;
}

std::string_view BeforeCard::heading(Kind kind) {
    return std::ranges::find(headings, kind, [](const HeadingRow& row) { return row.meaning.kind; })
        ->text;
}

std::optional<BeforeCard::Heading> BeforeCard::fromHeading(std::string_view heading) {
    for (const auto& [text, meaning] : headings)
        if (text == heading) return meaning;
    return std::nullopt;
}

BeforeOutput BeforeOutput::decode(std::string_view data) {
    auto output = Json::decode<BeforeOutput>(data);
    if (output.version != 1 && output.version != 2)
        throw Json::DecodingError::ofContent(
            "before output version " + std::to_string(output.version), "version",
            std::to_string(output.version));
    if (output.openers.size() != openerCount)
        throw Json::DecodingError::ofContent("before output needs three openers", "openers",
                                             std::to_string(output.openers.size()));
    return output;
}

BeforeOutput BeforeOutput::decodeOrRefuse(std::string_view data) {
    try {
        return decode(data);
    } catch (const Json::SyntaxError&) {
        throw RefusedAnswer(AnswerFault::ofText(data));
    } catch (const Json::DecodingError& error) {
        auto fault = AnswerFault::of(error);
        if (error.what() == error.problem())  // the shape is right
            fault.rule =
                fault.path == "version" ? AnswerFault::Rule::version : AnswerFault::Rule::openers;
        throw RefusedAnswer(std::move(fault));
    }
}

std::vector<MemoryRegionParser::Source> BeforeOutput::sources(
    const std::vector<std::string>& strings) {
    std::vector<MemoryRegionParser::Source> result;
    for (const auto& each : strings)
        if (auto found = source(each)) result.push_back(std::move(*found));
    return result;
}

BeforeCard BeforeOutput::card(std::string title, Instant forDate, std::vector<std::string> people,
                              std::optional<std::string> thread, std::optional<std::string> writer,
                              std::optional<Instant> at) const {
    BeforeCard card{.title = std::move(title),
                    .forDate = forDate,
                    .people = std::move(people),
                    .thread = std::move(thread),
                    .whoAndWhen = whoAndWhen,
                    .writer = std::move(writer),
                    .writtenAt = at};
    const auto append = [&](Kind kind, const SourcedLines& items,
                            Certainty certainty = Certainty::recorded) {
        for (const auto& item : items) {
            const auto text = Text::trimmed(item.text);
            auto cited = sources(item.sources);
            if (text.empty() || (cited.empty() && kind != Kind::opener)) continue;
            card.lines.push_back({.kind = kind,
                                  .text = std::string(text),
                                  .sources = std::move(cited),
                                  .certainty = certainty});
        }
    };
    append(Kind::remember, notSure, Certainty::read);
    append(Kind::remember, remember.value_or(SourcedLines()));
    append(Kind::youOwe, youOwe);
    append(Kind::theyOwe, theyOwe);
    append(Kind::question, unanswered);
    append(Kind::question, question.value_or(SourcedLines()));
    append(Kind::changed, changedSince);
    append(Kind::opener, openers);
    return card;
}

Json::Value encode(BeforeOutput output) {
    return Json::object({{"version", output.version},
                         {"who_and_when", std::move(output.whoAndWhen)},
                         {"not_sure", std::move(output.notSure)},
                         {"you_owe", std::move(output.youOwe)},
                         {"they_owe", std::move(output.theyOwe)},
                         {"unanswered", std::move(output.unanswered)},
                         {"changed_since", std::move(output.changedSince)},
                         {"openers", std::move(output.openers)},
                         {"remember", std::move(output.remember)},
                         {"question", std::move(output.question)}});
}

BeforeOutput decode(Json::As<BeforeOutput>, const Json::Object& in) {
    return {.version = in.required<std::int64_t>("version"),
            .whoAndWhen = in.required<std::string>("who_and_when"),
            .notSure = in.required<SourcedLines>("not_sure"),
            .youOwe = in.required<SourcedLines>("you_owe"),
            .theyOwe = in.required<SourcedLines>("they_owe"),
            .unanswered = in.required<SourcedLines>("unanswered"),
            .changedSince = in.required<SourcedLines>("changed_since"),
            .openers = in.required<SourcedLines>("openers"),
            .remember = in.optional<SourcedLines>("remember"),
            .question = in.optional<SourcedLines>("question")};
}
}  // namespace ombrix
