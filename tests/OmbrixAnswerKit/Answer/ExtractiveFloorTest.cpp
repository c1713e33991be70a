#include "OmbrixAnswerKit/Answer/ExtractiveFloor.h"

#include <gtest/gtest.h>
#include <sys/resource.h>

namespace ombrix {
namespace {

RetrievedCitation source(std::string id, std::string date, std::vector<std::string> snippets) {
    return {std::move(id), "T", std::move(date), {}, std::move(snippets)};
}

TranscriptDocument meeting(std::string date, std::vector<TranscriptDocument::Turn> turns,
                           std::string actionItems = {}) {
    return {.title = "T",
            .date = std::move(date),
            .participants = {"Ann Jones", "Me", "Tomas Hill"},
            .turns = std::move(turns),
            .actionItems = std::move(actionItems)};
}

/// Two meetings in which the user promised something, was promised something, and others did.
ExtractiveFloor floorOfTwoMeetings(ExtractiveFloor::Caps caps = {}) {
    std::vector<std::pair<std::string, TranscriptDocument>> documents;
    documents.emplace_back("old",
                           meeting("2026-03-02", {{"Me", "I'll draft\nthe plan tomorrow."},
                                                  {"Ann Jones", "I'll send you the deck."}}));
    documents.emplace_back("new", meeting("2026-03-09", {{"Me", "I will call the lawyer."}},
                                          "- Tomas Hill: book the room\n- clean the fridge"));
    documents.emplace_back("new", meeting("2026-04-01", {{"Me", "I'll never be read."}}));
    return {std::move(documents), {"Sam Reed"}, caps};
}

const std::vector<RetrievedCitation> twoMeetings = {source("gone", "2026-03-30", {}),
                                                    source("old", "2026-03-02", {"the  plan"}),
                                                    source("new", "2026-03-09", {"the lawyer"})};

ExtractiveFloor bareFloor(std::int64_t snippetCap) { return {{}, {}, {.snippetCap = snippetCap}}; }

TEST(ExtractiveFloor, TheSnippetListTakesTwoSnippetsOfASourceUpToItsCap) {
    std::vector<RetrievedCitation> six;
    for (const auto* id : {"a", "b", "c", "d", "e", "f"})
        six.push_back(source(id, "", {std::string(id) + "1", std::string(id) + "2", "third"}));
    six[1].snippets.clear();          // no line, but it keeps its number
    six[2].snippets = {" c1\n c1 "};  // one line, flattened
    const std::pair<std::int64_t, const char*> cases[] = {
        {8, "- a1 [1]\n- a2 [1]\n- c1 c1 [3]\n- d1 [4]\n- d2 [4]\n- e1 [5]\n- e2 [5]\n- f1 [6]"},
        {1, "- a1 [1]"},
        {0, ""},
        {-1, ""}};
    for (const auto& [cap, text] : cases) {
        EXPECT_EQ(bareFloor(cap).markdown(six, AnswerShape::prose, AskIntent::freeform), text)
            << cap;
    }
    EXPECT_EQ(bareFloor(8).markdown({}, AnswerShape::prose, AskIntent::freeform), "");
}

TEST(ExtractiveFloor, TheTimelineIsOldestFirstUnderTheSourcesOwnNumbers) {
    const std::vector<RetrievedCitation> sources = {
        source("a", "2026-03-09", {"late\nline", "second"}), source("b", "2026-03-02", {"early"}),
        source("c", "", {"sometime"}), source("d", "2026-01-01", {}),
        source("e", "2026-03-02", {"early too"})};
    const auto timeline = [&](std::int64_t cap) {
        return bareFloor(cap).markdown(sources, AnswerShape::timeline, AskIntent::decisions);
    };
    EXPECT_EQ(timeline(8),
              "## Timeline\n- undated — sometime [3]\n- 2026-03-02 — early [2]\n"
              "- 2026-03-02 — early too [5]\n- 2026-03-09 — late\nline [1]");
    EXPECT_EQ(timeline(2), "## Timeline\n- undated — sometime [3]\n- 2026-03-02 — early [2]");
    EXPECT_EQ(timeline(-1), "## Timeline");
    EXPECT_EQ(bareFloor(8).markdown({sources[3]}, AnswerShape::timeline, AskIntent::decisions),
              "## Timeline\n(none)");
}

TEST(ExtractiveFloor, TheCommitmentListFollowsTheDirectionOfTheIntent) {
    const auto floor = floorOfTwoMeetings();
    const std::string mine =
        "2 commitments across 2 meetings, quoted from your transcripts.\n## Commitments\n"
        "- Sam Reed — I will call the lawyer. [3]\n- Sam Reed — I'll draft the plan tomorrow. [2]";
    const std::string owed =
        "1 commitment across 1 meeting, quoted from your transcripts.\n## Commitments\n"
        "- Ann Jones — I'll send you the deck. [2]";
    const std::string all =
        "5 commitments across 2 meetings, quoted from your transcripts.\n## Commitments\n"
        "- Sam Reed — I will call the lawyer. [3]\n- Tomas Hill — book the room [3]\n"
        "- unowned — clean the fridge [3]\n- Sam Reed — I'll draft the plan tomorrow. [2]\n"
        "- Ann Jones — I'll send you the deck. [2]";
    const std::pair<AskIntent, std::string> cases[] = {{AskIntent::plan, mine},
                                                       {AskIntent::myCommitments, mine},
                                                       {AskIntent::owedToMe, owed},
                                                       {AskIntent::freeform, all}};
    for (const auto& [intent, text] : cases) {
        EXPECT_EQ(floor.markdown(twoMeetings, AnswerShape::commitments, intent), text)
            << rawValue(intent);
    }

    EXPECT_EQ(floorOfTwoMeetings({.commitmentCap = 1})
                  .markdown(twoMeetings, AnswerShape::commitments, AskIntent::plan),
              "1 commitment across 1 meeting, quoted from your transcripts.\n## Commitments\n"
              "- Sam Reed — I will call the lawyer. [3]");
}

TEST(ExtractiveFloor, WithoutCommitmentsTheListSaysSoAndWithoutDocumentsItHasSnippets) {
    const std::vector gone = {source("gone", "", {"quoted"})};
    const auto shape = AnswerShape::commitments;
    EXPECT_EQ(floorOfTwoMeetings().markdown(gone, shape, AskIntent::plan),
              "## Commitments\n(none)");
    EXPECT_EQ(bareFloor(8).markdown(gone, shape, AskIntent::plan), "- quoted [1]");
}

TEST(ExtractiveFloor, TheQuestionPlansTheAnswerAndEverySourceIsCited) {
    const auto floor = floorOfTwoMeetings();
    const std::pair<const char*, AnswerShape> questions[] = {
        {"what are my priorities", AnswerShape::commitments},
        {"what was decided", AnswerShape::timeline},
        {"who mentioned the lawyer", AnswerShape::prose}};
    for (const auto& [question, shape] : questions) {
        const AskIntent intent = AskIntentRouter::classify(question).intent;
        EXPECT_EQ(
            floor.synthesize(question, twoMeetings),
            (SynthesizedAnswer{floor.markdown(twoMeetings, shape, intent), {"gone", "old", "new"}}))
            << question;
    }
    // A given shape replaces the plan's; the direction is still the question's.
    const auto owed = floor.synthesize("who owes me what", twoMeetings, AnswerShape::commitments);
    EXPECT_EQ(owed, (StructuredAnswer{
                        .shape = AnswerShape::commitments,
                        .summary = "1 commitment across 1 meeting, quoted from your transcripts.",
                        .items = {{{}, "Ann Jones", "I'll send you the deck. [2]", {2}}},
                        .citationIDs = {"gone", "old", "new"}}));
    const auto prose = floor.synthesize("who owes me what", twoMeetings, AnswerShape::prose);
    EXPECT_EQ(prose.proseText, "- the plan [2]\n- the lawyer [3]");
    EXPECT_EQ(floor.synthesize("x", twoMeetings, AnswerShape::timeline).items.size(), 2u);

    EXPECT_THROW(floor.synthesize("x", {}, AnswerShape::prose), AnswerSynthesisError);
    EXPECT_TRUE(floor.isAvailable());
}

long peakMegabytes() {
    rusage usage{};
    getrusage(RUSAGE_SELF, &usage);
    return usage.ru_maxrss / 1024;
}

TEST(ExtractiveFloor, MemoryFollowsTheDocumentAndNotWhatIsLeftOutOfTheList) {
    // A copy of the title for each item would take 2 GB, a list of the lines 320 MB.
    TranscriptDocument document = meeting("2026-03-02", {});
    document.title = std::string(1'000'000, 't');
    for (int i = 0; i < 2'000; ++i) document.actionItems += "- go\n";
    document.notes = std::string(20'000'000, '\n');
    std::vector<std::pair<std::string, TranscriptDocument>> documents;
    documents.emplace_back("a", std::move(document));
    const ExtractiveFloor floor(std::move(documents), {}, {.commitmentCap = 1});
    const long before = peakMegabytes();
    EXPECT_EQ(floor.markdown({source("a", "", {})}, AnswerShape::commitments, AskIntent::freeform),
              "1 commitment across 1 meeting, quoted from your transcripts.\n## Commitments\n"
              "- unowned — go [1]");
    StructuredAnswerParser::parse("x" + std::string(20'000'000, '\n') + "x", AnswerShape::timeline,
                                  {});
    EXPECT_LT(peakMegabytes() - before, 200);
}
}  // namespace
}  // namespace ombrix
