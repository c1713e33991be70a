#include "OmbrixAnswerKit/Answer/AnswerSynthesis.h"

#include <gtest/gtest.h>

#include "OmbrixAnswerKit/Answer/GroundedAnswerPrompt.h"

namespace ombrix {
namespace {

using Reason = AnswerSynthesisError::Reason;

const std::vector<RetrievedCitation> sources = {
    {.id = "one",
     .title = "Weekly: pricing",
     .date = "2026-03-02",
     .participants = {"Ann Jones", "Tomás"},
     .snippets = {"We keep  the price.", "Until\nApril."}},
    {.id = "two", .title = "Planning", .date = "", .participants = {}, .snippets = {}},
};

/// Says what it was asked, and cites one source only.
class Echo final : public AnswerSynthesizer {
  public:
    std::string_view label() const override { return "echo"; }
    std::string_view displayName() const override { return "Echo"; }
    bool isAvailable() const override { return true; }
    using AnswerSynthesizer::synthesize;
    SynthesizedAnswer synthesize(std::string_view question,
                                 const std::vector<RetrievedCitation>&) const override {
        return {std::string(question), {"two"}};
    }
};

std::optional<Reason> failure(const AnswerSynthesizer& synthesizer,
                              const std::vector<RetrievedCitation>& citations) {
    try {
        synthesizer.synthesize("q", citations);
    } catch (const AnswerSynthesisError& error) {
        return error.reason();
    }
    return std::nullopt;
}

TEST(AnswerSynthesis, TheMockAnswersOnlyWhenItCan) {
    MockAnswerSynthesizer mock;
    mock.available = false;
    EXPECT_FALSE(mock.isAvailable());
    EXPECT_EQ(failure(mock, {}), Reason::unavailable);
    mock.available = true;
    EXPECT_EQ(failure(mock, {}), Reason::emptyInput);
    EXPECT_EQ(failure(mock, sources), Reason::emptyOutput);
    mock.response = "";
    EXPECT_EQ(failure(mock, sources), Reason::emptyOutput);
    mock.response = "Kept [1].";
    EXPECT_EQ(failure(mock, {}), Reason::emptyInput);
    EXPECT_EQ(mock.synthesize("q", sources), (SynthesizedAnswer{"Kept [1].", {"one", "two"}}));
}

TEST(AnswerSynthesis, AShapeIsAskedForBehindTheQuestionAndReadBack) {
    const Echo echo;
    const std::vector<std::string> ids = {"one", "two"};  // what the numbers in the text mean
    EXPECT_EQ(echo.synthesize(" Why? ", sources, AnswerShape::prose),
              (StructuredAnswer{.proseText = "Why?", .citationIDs = ids}));

    const auto timeline = echo.synthesize("Why?", sources, AnswerShape::timeline);
    EXPECT_EQ(timeline.shape, AnswerShape::timeline);
    EXPECT_EQ(timeline.summary, "Why? Format the answer exactly as:");
    EXPECT_EQ(timeline.citationIDs, ids);

    MockAnswerSynthesizer mock;
    mock.response = "I cannot say.";
    EXPECT_EQ(mock.synthesize("Why?", sources, AnswerShape::commitments),
              (StructuredAnswer{.proseText = "I cannot say.", .citationIDs = ids}));
}

TEST(GroundedAnswerPrompt, TheMessageNumbersTheSourcesAndKeepsTheirText) {
    EXPECT_EQ(GroundedAnswerPrompt::build("What about \"pricing\"?", sources),
              "Question: What about \"pricing\"?\n"
              "\n"
              "Sources:\n"
              "[1] Weekly: pricing — 2026-03-02 — with Ann Jones, Tomás\n"
              "    • We keep  the price.\n"
              "    • Until\nApril.\n"
              "[2] Planning — \n"
              "\n"
              "Answer the question using only these sources, citing them by number. If they do not "
              "contain the answer, say so.");
}

TEST(GroundedAnswerPrompt, EmbeddedTextsArriveWholeAndWithoutALineFeedAtTheirEnd) {
    const auto system = GroundedAnswerPrompt::instructions;
    EXPECT_TRUE(
        system.starts_with("You answer questions about the user's own meetings using ONLY"));
    EXPECT_TRUE(system.ends_with("\n- Be concise: 2–4 sentences. Plain, factual, no preamble."));
    EXPECT_EQ(std::ranges::count(system, '\n'), 4);
    for (const auto shape : {AnswerShape::timeline, AnswerShape::commitments}) {
        const auto format = GroundedAnswerPrompt::shapeInstructions(shape);
        ASSERT_TRUE(format);
        EXPECT_TRUE(format->ends_with(", write exactly: (none)"));
        EXPECT_EQ(std::ranges::count(*format, '\n'), 4);
    }
    EXPECT_EQ(GroundedAnswerPrompt::shapeInstructions(AnswerShape::prose), std::nullopt);
}
}  // namespace
}  // namespace ombrix
