#include "OmbrixAnswerKit/Key/KeyPress.h"

#include <gmock/gmock.h>

#include "OmbrixPlatform/RandomText.h"
#include "OmbrixPlatform/Text.h"
#include "OmbrixPlatform/Utf8.h"

namespace ombrix {
namespace {

using namespace KeyPress;
using testing::ElementsAre;

const MeetingCandidate audit{"a", "Brand audit", "2026-07-20", {"brand", "audit", "tomas"}};
const MeetingCandidate pricing{"p", "Pricing", "2026-07-21", {"pricing", "recap", "tomas"}};
const std::string longDraft = std::string(141, 'x');
const std::string emoji = Text::replacingAll(std::string(70, 'x'), "x", "👋");

Press caret(std::string text) { return {.text = std::move(text)}; }

Plan ambiguous(std::vector<MeetingCandidate> choices, Kind asked) {
    return {.kind = Kind::ambiguous, .choices = std::move(choices), .asked = asked};
}

Plan skill(Plan plan, std::string name, std::string request) {
    plan.skill = std::move(name);
    plan.request = std::move(request);
    return plan;
}

TEST(KeyPress, TheFieldAndTheCandidatesDecideTheKindAndTheMeeting) {
    const std::vector<MeetingCandidate> none{}, one{audit}, both{audit, pricing};
    const auto guess = [](std::string from) {
        return Plan{.kind = Kind::guess, .lookedAt = std::move(from)};
    };
    const Plan noMeeting{.kind = Kind::skill};
    const struct {
        const char* why;
        std::vector<MeetingCandidate> candidates;
        Press press;
        Plan expected;
    } cases[] = {
        {"nothing to go by", none, caret(" \n"), guess("this window")},
        {"empty, one meeting", one, caret(""), {.kind = Kind::empty, .matched = audit}},
        {"empty, two", both, caret("\t"), ambiguous(both, Kind::empty)},
        {"a word of one", both, caret("the Audits"), {.kind = Kind::instruction, .matched = audit}},
        {"part of a term", both, caret(" pric "), {.kind = Kind::instruction, .matched = pricing}},
        {"a word of both", both, caret("for Tomas"), ambiguous(both, Kind::instruction)},
        {"two letters fit nothing", both, caret("to Q3"), guess("to Q3")},
        {"long, a word of one",
         both,
         caret(longDraft + " recap"),
         {.kind = Kind::unchanged, .matched = pricing}},
        {"long, of both", both, caret(longDraft + " tomas"), ambiguous(both, Kind::unchanged)},
        {"long, of none", both, caret(longDraft), {.kind = Kind::unchanged, .matched = audit}},
        {"long, nothing to go by", none, caret(longDraft), {.kind = Kind::unchanged}},
        {"140 units without the blanks", none, caret(longDraft.substr(1) + "  "),
         guess(longDraft.substr(1))},
        {"70 emoji are 140 units", none, caret(emoji), guess(emoji)},
        {"selected word of one",
         both,
         {"see audit now", 4, 9},
         {.kind = Kind::selection, .matched = audit}},
        {"selected word of none", both, {"see that now", 4, 8}, ambiguous(both, Kind::selection)},
        {"the same, one meeting",
         one,
         {"see that now", 4, 8},
         {.kind = Kind::selection, .matched = audit}},
        {"selected, nothing to go by", none, {"see  that now", 3, 10}, guess("that")},
        {"past the end and the wrong way",
         one,
         {"see that", 99, -5},
         {.kind = Kind::selection, .matched = audit}},
        {"a selected blank is no selection",
         one,
         {"see audit", 3, 4},
         {.kind = Kind::instruction, .matched = audit}},
        {"a skill before a selection",
         one,
         {"/EMAIL send the recap", 0, 6},
         skill(noMeeting, "email", "send the recap")},
        {"a skill with a word of one", both, caret(" /email send the recap\n"),
         skill({.kind = Kind::skill, .matched = pricing}, "email", "send the recap")},
        {"a skill with a word of both", both, caret("/email\n tomas"),
         skill(ambiguous(both, Kind::skill), "email", "tomas")},
        {"a skill alone, two", both, caret("/notes"),
         skill(ambiguous(both, Kind::skill), "notes", "")},
        {"a skill alone, one", one, caret("/notes"),
         skill({.kind = Kind::skill, .matched = audit}, "notes", "")},
        {"a skill alone, none", none, caret("/notes"), skill(noMeeting, "notes", "")},
        {"a blank after the slash", none, caret("/ notes"), guess("/ notes")},
        {"more than a name", none, caret("/notes! go"), guess("/notes! go")},
    };
    for (const auto& [why, candidates, press, expected] : cases)
        EXPECT_EQ(plan({candidates}, press), expected) << why;
}

TEST(KeyPress, AChoiceCompletesTheAskedPlanAndLeavesOthers) {
    const Plan asked = skill(ambiguous({audit, pricing}, Kind::skill), "email", "tomas");
    EXPECT_EQ(resolveAsked(asked, pricing),
              skill({.kind = Kind::skill, .matched = pricing}, "email", "tomas"));
    EXPECT_EQ(resolveAsked({.kind = Kind::ambiguous}, audit),
              (Plan{.kind = Kind::empty, .matched = audit}));
    const Plan settled{.kind = Kind::guess, .lookedAt = "x"};
    EXPECT_EQ(resolveAsked(settled, audit), settled);

    const auto kindOf = [](const Press& press) { return pulled(audit, press).kind; };
    EXPECT_EQ(kindOf({"some text", 0, 4}), Kind::selection);
    EXPECT_EQ(kindOf({"some text", 4, 5}), Kind::instruction);
    EXPECT_EQ(kindOf(caret("/notes")), Kind::instruction);
    EXPECT_EQ(kindOf(caret(longDraft)), Kind::unchanged);
    EXPECT_EQ(kindOf(caret(" ")), Kind::empty);
}

TEST(KeyPress, OffsetsOfALandingAreUtf16Units) {
    const Plan rewrite{.kind = Kind::selection};
    // Units: 👋 is two, é as two scalars is two.
    const FieldSnapshot field{"👋 e\u0301!", 3, 5};
    EXPECT_EQ(replacedRange(rewrite, field), (Range{3, 5}));
    EXPECT_EQ(landing(rewrite, field, Drafts::single("👋👋")), (Landing{"👋 👋👋!", 3, 7}));
    // From inside 👋: the scalar is never cut.
    EXPECT_EQ(landing(rewrite, {"👋 x", 1, 2}, Drafts::single("y")), (Landing{"y x", 0, 1}));
    EXPECT_EQ(slice("a👋b", -3, 3), "a👋");
    EXPECT_EQ(slice("a👋b", 3, 1), "");
}

TEST(KeyPress, OnlyWhatTheKindAllowsLands) {
    const FieldSnapshot selected{"old text", 0, 3};
    const FieldSnapshot unselected{"old text", 8, 8};
    const Drafts drafts{.draft = "draft", .selection = "sel", .skill = "skill", .guess = "guess"};
    const struct {
        Kind kind;
        FieldSnapshot before;
        std::optional<Landing> landed;
        std::optional<Range> replaced;
        bool undoes;
    } cases[] = {
        {Kind::empty, selected, Landing{"draft", 5, 5}, Range{0, 8}, true},
        {Kind::instruction, unselected, Landing{"draft", 5, 5}, Range{0, 8}, true},
        {Kind::selection, selected, Landing{"sel text", 0, 3}, Range{0, 3}, true},
        {Kind::skill, selected, Landing{"skill", 5, 5}, Range{0, 8}, true},
        {Kind::guess, unselected, Landing{"guess", 5, 5}, Range{0, 8}, true},
        {Kind::guess, selected, std::nullopt, std::nullopt, true},
        {Kind::guess, {"👋", 0, 1}, std::nullopt, std::nullopt, true},
        {Kind::ambiguous, unselected, std::nullopt, std::nullopt, false},
        {Kind::unchanged, unselected, std::nullopt, std::nullopt, false},
    };
    for (const auto& [kind, before, landed, replaced, undoes] : cases) {
        const Plan plan{.kind = kind};
        EXPECT_EQ(landing(plan, before, drafts), landed) << rawValue(kind);
        EXPECT_EQ(replacedRange(plan, before), replaced) << rawValue(kind);
        EXPECT_EQ(undo(plan, before), undoes ? std::optional(before) : std::nullopt);
    }
    EXPECT_EQ(landing({.kind = Kind::guess}, unselected, {}), std::nullopt) << "no guess";
}

TEST(KeyPress, ALandingKeepsWhatItDoesNotReplace) {
    test::RandomText random(7);
    for (int round = 0; round < 2000; ++round) {
        const std::string text = Utf8::repaired(random.any());
        const auto offset = [&] { return static_cast<std::int64_t>(random.below(80)) - 5; };
        const FieldSnapshot before{text, offset(), offset()};
        const Plan rewrite{.kind = Kind::selection};
        const auto range = replacedRange(rewrite, before);
        const auto landed = landing(rewrite, before, Drafts::single("👋"));
        ASSERT_TRUE(range && landed && range->start <= range->end) << test::visible(text);
        EXPECT_EQ(landed->text,
                  slice(text, 0, range->start) + "👋" + slice(text, range->end, 1 << 20));
        EXPECT_EQ(slice(landed->text, landed->selStart, landed->selEnd), "👋");
    }
}

TEST(KeyPress, TheMarkAndTheSourceTellWhatThePlanRestsOn) {
    const auto phases = [](const Plan& plan) {
        std::string all;
        for (const MarkPhase phase : markPhases(plan)) all.append(markLabel(phase)).append("|");
        return all;
    };
    EXPECT_EQ(phases({.kind = Kind::unchanged, .matched = audit}), "looking|");
    EXPECT_EQ(phases({.kind = Kind::guess}),
              "looking|going from this window|almost there|writing|");
    EXPECT_EQ(phases({.kind = Kind::ambiguous}), "looking|which meeting?|");
    EXPECT_EQ(phases({.kind = Kind::empty, .matched = audit}),
              "looking|reading the meeting|almost there|writing|");
    EXPECT_EQ(phases({.kind = Kind::skill}), "looking|almost there|writing|");

    const Plan plan{.kind = Kind::empty, .matched = audit};
    EXPECT_EQ(source(plan, {}), (SourceLine{"a", "Brand audit, Jul 20"}));
    EXPECT_EQ(source(plan, "Lumen"), (SourceLine{"a", "Lumen · Brand audit, Jul 20"}));
    EXPECT_EQ(source(plan, "Brand"), (SourceLine{"a", "Brand audit, Jul 20"}));
    EXPECT_EQ(source({.kind = Kind::guess}, "Lumen"), (SourceLine{{}, "Here's my best guess"}));
    EXPECT_EQ(source({.kind = Kind::unchanged, .matched = audit}, {}), std::nullopt);
    EXPECT_EQ(source({.kind = Kind::skill}, {}), std::nullopt);

    const std::pair<const char*, const char*> dates[] = {
        {"2026-08-05", "Aug 5"},      {"2026-13-05", "2026-13-05"},
        {"2026-08", "2026-08"},       {"", ""},
        {"2026-00-05", "2026-00-05"}, {"2026-08-5th", "2026-08-5th"}};
    for (const auto& [date, shown] : dates) EXPECT_EQ(formatDate(date), shown);
}

TEST(KeyPress, TapsUpToAThirdOfASecondApartAreDouble) {
    EXPECT_TRUE(isDoubleTap(true, false, 100.7, 101.0));  // 0.29999999999999716
    EXPECT_TRUE(isDoubleTap(true, false, 0.1, 0.4));      // 0.30000000000000004
    EXPECT_FALSE(isDoubleTap(true, false, 0.0, 0.31));
    EXPECT_FALSE(isDoubleTap(true, true, 0.0, 0.1));
    EXPECT_FALSE(isDoubleTap(false, false, 0.0, 0.1));
    EXPECT_FALSE(isDoubleTap(true, false, std::nullopt, 0.1));
}

TEST(KeyPress, ASlashQueryIsANameBeingTyped) {
    EXPECT_EQ(slashQuery("/"), "");
    EXPECT_EQ(slashQuery("/Slack-re"), "slack-re");
    EXPECT_EQ(slashQuery("/slack recap"), std::nullopt);
    EXPECT_EQ(slashQuery("a/slack"), std::nullopt);
}

TEST(KeyPress, RecordsReadBackAndHugeFieldsAreLinear) {
    const auto again = [](const auto& record) {
        using Record = std::decay_t<decltype(record)>;
        return Json::decode<Record>(Json::write(encode(record), Json::Style::file));
    };
    EXPECT_EQ(again(audit), audit);
    EXPECT_EQ(again(FieldSnapshot{"👋", 1, 2}), (FieldSnapshot{"👋", 1, 2}));

    std::string huge = "/email ";
    while (huge.size() < 2'000'000) huge += "w" + std::to_string(huge.size()) + " \n";
    EXPECT_EQ(plan({{audit, pricing}}, caret(huge)).kind, Kind::skill);
    EXPECT_EQ(plan({{audit, pricing}}, caret(huge.substr(1))).kind, Kind::unchanged);
}
}  // namespace
}  // namespace ombrix
