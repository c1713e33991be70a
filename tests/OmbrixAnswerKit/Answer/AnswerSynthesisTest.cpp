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

/// How the mock fails; `cancelled`, which it never reports, when it answers.
Reason failure(bool available, const char* response,
               const std::vector<RetrievedCitation>& citations) {
    MockAnswerSynthesizer mock;
    mock.available = available;
    if (response != nullptr) mock.response = response;
    try {
        mock.synthesize("q", citations);
    } catch (const AnswerSynthesisError& error) {
        return error.reason();
    }
    return Reason::cancelled;
}

TEST(AnswerSynthesis, TheMockAnswersOnlyWhenItCan) {
    EXPECT_EQ(failure(false, nullptr, {}), Reason::unavailable);
    EXPECT_EQ(failure(true, nullptr, {}), Reason::emptyInput);
    EXPECT_EQ(failure(true, nullptr, sources), Reason::emptyOutput);
    EXPECT_EQ(failure(true, "", sources), Reason::emptyOutput);
}

TEST(AnswerSynthesis, AShapeIsAskedForAfterTheQuestionAndReadBack) {
    const Echo echo;
    const std::vector<std::string> ids = {"one", "two"};  // what the numbers in the text mean
    EXPECT_EQ(echo.synthesize(" Why? ", sources, AnswerShape::prose),
              (StructuredAnswer{.proseText = "Why?", .citationIDs = ids}));

    const auto timeline = echo.synthesize("Why?", sources, AnswerShape::timeline);
    EXPECT_EQ(timeline.summary, "Why? Format the answer exactly as:");
    EXPECT_EQ(timeline.citationIDs, ids);

    MockAnswerSynthesizer mock;
    mock.response = "I cannot say.";
    EXPECT_EQ(mock.synthesize("Why?", sources), (SynthesizedAnswer{"I cannot say.", ids}));
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
    using GroundedAnswerPrompt::shapeInstructions;
    const std::array<std::string_view, 3> texts[] = {
        {GroundedAnswerPrompt::instructions, "You answer questions about the user's own",
         "- Be concise: 2–4 sentences. Plain, factual, no preamble."},
        {*shapeInstructions(AnswerShape::timeline), "Format", ", write exactly: (none)"},
        {*shapeInstructions(AnswerShape::commitments), "Format", ", write exactly: (none)"}};
    for (const auto& [text, start, end] : texts) {
        EXPECT_TRUE(text.starts_with(start) && text.ends_with(end)) << text;
        EXPECT_EQ(std::ranges::count(text, '\n'), 4) << text;
    }
    EXPECT_EQ(shapeInstructions(AnswerShape::prose), std::nullopt);
}
}  // namespace
}  // namespace ombrix
