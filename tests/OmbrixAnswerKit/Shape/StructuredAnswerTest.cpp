#include "OmbrixAnswerKit/Shape/StructuredAnswer.h"

#include <gtest/gtest.h>

#include <random>

#include "OmbrixAnswerKit/Answer/GroundedAnswerPrompt.h"

namespace ombrix {
namespace {

using Item = StructuredAnswer::Item;
using StructuredAnswerParser::parse;

const std::vector<std::string> ids = {"a", "b"};

StructuredAnswer prose(std::string text) {
    return {.proseText = std::move(text), .citationIDs = ids};
}

TEST(StructuredAnswer, AListAfterItsHeadingIsReadWithTheTextBeforeIt) {
    const struct {
        const char* text;
        StructuredAnswer expected;
    } cases[] = {
        {"\n First.\n\n\tSecond. \n  ## COMMITMENTS \n\n* Ann — book it [2][1] \nnoise\n## "
         "Timeline\n-no\n"
         "- Bo — two [10]",
         {AnswerShape::commitments,
          "First. Second.",
          {{{}, "Ann", "book it [2][1]", {2, 1}}, {{}, "Bo", "two [10]", {10}}},
          {},
          ids}},
        {"## Commitments\n(none)", {AnswerShape::commitments, {}, {}, {}, ids}},
        {"## Commitments\n- Ann — a\n (none)\n- Ann — b",
         {AnswerShape::commitments, {}, {{{}, "Ann", "a", {}}}, {}, ids}},
        // The first heading counts; a second one is a line like any other.
        {"## Commitments\n## Commitments\n- x",
         {AnswerShape::commitments, {}, {{{}, {}, "x", {}}}, {}, ids}},
    };
    for (const auto& [text, expected] : cases)
        EXPECT_EQ(parse(text, AnswerShape::commitments, ids), expected) << text;
}

TEST(StructuredAnswer, WhatHasNoListStaysProse) {
    const struct {
        const char* text;
        AnswerShape shape;
        StructuredAnswer expected;
    } cases[] = {
        {" \n\t", AnswerShape::timeline, {.citationIDs = ids}},
        {"\n## Timeline\n- x \n", AnswerShape::prose, prose("## Timeline\n- x")},
        {"## Timeline\n- x", AnswerShape::commitments, prose("## Timeline\n- x")},
        {"## Timeline: all\n- x", AnswerShape::timeline, prose("## Timeline: all\n- x")},
        {"Overview.\n## Timeline\n\n", AnswerShape::timeline, prose("Overview.\n## Timeline")},
    };
    for (const auto& [text, shape, expected] : cases)
        EXPECT_EQ(parse(text, shape, ids), expected) << text;
}

Item onlyItem(const std::string& bullet, AnswerShape shape) {
    const std::string heading = shape == AnswerShape::timeline ? "## timeline" : "## commitments";
    const auto answer = parse(heading + "\n- " + bullet, shape, {});
    return answer.items.size() == 1 ? answer.items.front() : Item{.text = "not one item"};
}

TEST(StructuredAnswer, ATimelineEntryHasADayBeforeItsDash) {
    const std::pair<const char*, Item> cases[] = {
        {"2026-03-02 — kept [1]", {"2026-03-02", {}, "kept [1]", {1}}},
        {"2026-13-99 — x", {"2026-13-99", {}, "x", {}}},  // by its form alone
        {"UNDATED — x — y", {{}, {}, "x — y", {}}},
        {"2026-03-021 — x", {{}, {}, "2026-03-021 — x", {}}},
        {"2026-03-0२ — x", {{}, {}, "2026-03-0२ — x", {}}},
        {"2026-03-02 – x", {{}, {}, "2026-03-02 – x", {}}},  // an en dash
    };
    for (const auto& [bullet, item] : cases)
        EXPECT_EQ(onlyItem(bullet, AnswerShape::timeline), item) << bullet;
}

TEST(StructuredAnswer, ACommitmentHasAnOwnerOfAtMostFortyCharactersBeforeItsDash) {
    std::string forty;
    for (int n = 0; n < 20; ++n) forty += "e\u0301n";
    const std::pair<std::string, Item> cases[] = {
        {"Ann Jones — send it", {{}, "Ann Jones", "send it", {}}},
        {"Unowned — send it", {{}, {}, "send it", {}}},
        {forty + " — send it", {{}, forty, "send it", {}}},
        {forty + "n — send it", {{}, {}, forty + "n — send it", {}}},
        {"\u3000 — send it", {{}, {}, "— send it", {}}},
    };
    for (const auto& [bullet, item] : cases)
        EXPECT_EQ(onlyItem(bullet, AnswerShape::commitments), item) << bullet;
}

TEST(StructuredAnswer, CitationsAreNumbersOfOneOrTwoDigitsInBrackets) {
    const std::pair<const char*, std::vector<std::int64_t>> cases[] = {
        {"x [2][1] y [10]", {2, 1, 10}}, {"x [123] [] [a] [1a] [-1] [1 ]", {}},
        {"x [[1]] [0] [07]", {1, 0, 7}}, {"x [1[2] [3", {2}},
        {"Ann [4] — x [5]", {4, 5}},     {"x [٣] [3]", {3}},
    };
    for (const auto& [bullet, numbers] : cases)
        EXPECT_EQ(onlyItem(bullet, AnswerShape::commitments).citationIndices, numbers) << bullet;
}

TEST(StructuredAnswer, AModelThatFollowsItsInstructionsIsUnderstood) {
    const std::pair<AnswerShape, Item> cases[] = {
        {AnswerShape::timeline, {"2026-08-12", {}, "<entry> [1]", {1}}},
        {AnswerShape::commitments, {{}, "<owner>", "<commitment> [1]", {1}}}};
    for (const auto& [shape, example] : cases) {
        const auto answer = parse(*GroundedAnswerPrompt::shapeInstructions(shape), shape, ids);
        EXPECT_EQ(answer.shape, shape);
        EXPECT_EQ(answer.items, std::vector{example});
    }
}

TEST(StructuredAnswer, NoTextIsLostOrDoesHarm) {
    const auto pieces = std::to_array<std::string>(
        {"## Timeline", "## Commitments", "\n", "\n", "- ", "* ", " — ", "(none)", "[1]", "[",
         "2026-03-02", "\r", "\t", "Ann", "undated", "\u0301", "\xFF", "\xE2\x80"});
    std::mt19937 random(7);
    for (int round = 0; round < 3000; ++round) {
        std::string text = "x";
        for (auto left = random() % 12; left > 0; --left) text += pieces[random() % pieces.size()];
        text += "x";
        for (const auto shape : {AnswerShape::timeline, AnswerShape::commitments}) {
            const auto answer = parse(text, shape, ids);
            ASSERT_EQ(answer.proseText, answer.shape == shape ? std::nullopt : std::optional(text));
        }
    }
    std::string long_ = "## Timeline\n- ";
    for (int n = 0; n < 300'000; ++n) long_ += "[ — ";
    EXPECT_EQ(parse(long_, AnswerShape::timeline, {}).items.size(), 1u);
}
}  // namespace
}  // namespace ombrix
