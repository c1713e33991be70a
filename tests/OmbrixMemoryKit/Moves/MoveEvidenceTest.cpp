#include "OmbrixMemoryKit/Moves/MoveEvidence.h"

#include <gtest/gtest.h>

#include "OmbrixMarkdownKit/Transcript/TranscriptTurnID.h"
#include "OmbrixMemoryKit/Moves/MoveLifecycle.h"
#include "RandomMoves.h"

namespace ombrix {
namespace {

using MoveEvidence::buildExchanges;

std::shared_ptr<const MoveSource> meeting(std::string key, std::vector<std::string> texts) {
    TranscriptDocument document;
    for (auto& text : texts) document.turns.push_back({"Ann", std::move(text)});
    return std::make_shared<MoveSource>(std::move(key), std::move(document), "Call", "2026-07-01",
                                        std::vector<std::string>{"Ann", "Bo"});
}

/// A meeting whose turns start at these seconds; -1 for a turn without a time.
std::shared_ptr<const MoveSource> timed(std::string key, std::vector<double> seconds) {
    auto source = std::make_shared<MoveSource>();
    source->id = std::move(key);
    for (const double at : seconds) {
        MoveTurn turn("t" + std::to_string(source->turns.size()));
        if (at >= 0) turn.atSec = at;
        source->turns.push_back(std::move(turn));
    }
    return source;
}

Claim citing(std::string id, std::string source, std::vector<std::string> turns) {
    return {.id = std::move(id), .refs = {{std::move(source), std::move(turns)}}};
}

std::string idOf(std::size_t position, std::string_view text) {
    return TranscriptTurnID::make(position, text);
}

/// "m1:0-2 m1:5" for exchanges over the turns 0 to 2 and 5 of one meeting.
std::string shape(const std::vector<ResolvedExchange>& exchanges) {
    std::string text;
    for (const auto& exchange : exchanges) {
        const auto& turns = exchange.source->turns;
        std::size_t first = 0;
        while (turns[first].id() != exchange.turns.front().id) ++first;
        text += (text.empty() ? "" : " ") + exchange.source->id + ":" + std::to_string(first);
        if (exchange.turns.size() > 1)
            text += "-" + std::to_string(first + exchange.turns.size() - 1);
    }
    return text;
}

TEST(MoveEvidence, FindsTurnsThatMovedAndSaysWhichOnesChanged) {
    const MoveSources sources{{"m", meeting("m", {"Hello.", "I call you.", "Fine, call me."})}};
    const struct {
        const char* why;
        std::string turnId;
        EvidenceStanding standing;
        const char* cited;  // the text of the cited turn; empty when none is found
        bool changed;
    } cases[] = {
        {"where it was", idOf(2, "I call you."), EvidenceStanding::verified, "I call you.", false},
        {"words count, not marks", idOf(2, "i CALL you"), EvidenceStanding::verified, "I call you.",
         false},
        {"moved", idOf(9, "I call you."), EvidenceStanding::verified, "I call you.", false},
        {"corrected", idOf(2, "I called you."), EvidenceStanding::stale, "I call you.", true},
        {"gone", idOf(9, "I called you."), EvidenceStanding::stale, "", false},
        {"no id", "second turn", EvidenceStanding::stale, "", false},
    };
    for (const auto& [why, turnId, standing, cited, changed] : cases) {
        const auto found = buildExchanges(std::vector{citing("c", "m", {turnId})}, sources);
        EXPECT_EQ(found.standing, standing) << why;
        std::string text;
        for (const auto& exchange : found.list)
            for (const auto& turn : exchange.turns)
                if (turn.cited) {
                    text += turn.text;
                    EXPECT_EQ(turn.changed, changed) << why;
                    EXPECT_EQ(turn.claimIds, std::vector<std::string>{"c"}) << why;
                }
        EXPECT_EQ(text, cited) << why;
    }
}

TEST(MoveEvidence, AMeetingThatIsGoneIsStale) {
    const std::vector lost{citing("c", "gone", {})};
    EXPECT_EQ(buildExchanges(lost, {}), (MoveEvidence::Exchanges{{}, EvidenceStanding::stale}));
    EXPECT_EQ(buildExchanges({}, {}).standing, EvidenceStanding::verified);
}

TEST(MoveEvidence, ContextIsWhatWasSaidWithinNinetySeconds) {
    const struct {
        const char* why;
        std::vector<double> seconds;
        std::vector<std::string> cited;
        const char* expected;
    } cases[] = {
        {"one turn on each side", {0, 10, 20, 30, 40}, {"t2"}, "m:1-3"},
        {"the ends of the meeting", {0, 10, 20}, {"t0", "t2"}, "m:0-2"},
        {"one turn between them", {0, 10, 20, 30, 40}, {"t1", "t3"}, "m:0-4"},
        {"stretches that touch are one", {0, 1, 2, 3, 4, 5, 6, 7}, {"t2", "t5"}, "m:1-6"},
        {"too far apart for that", {0, 1, 2, 3, 4, 5, 6, 7, 8}, {"t1", "t6"}, "m:0-2 m:5-7"},
        {"100 seconds away", {0, 100, 200}, {"t1"}, "m:1"},
        {"90 seconds away", {0, 90, 180}, {"t1"}, "m:0-2"},
        {"no times", {-1, -1, -1, -1}, {"t1"}, "m:0-2"},
        {"a neighbour without a time", {-1, 100, 300}, {"t1"}, "m:0-1"},
        {"neighbours stay cited", {0, 200, 400}, {"t0", "t1"}, "m:0-1"},
    };
    for (const auto& [why, seconds, cited, expected] : cases) {
        const MoveSources sources{{"m", timed("m", seconds)}};
        EXPECT_EQ(shape(buildExchanges(std::vector{citing("c", "m", cited)}, sources).list),
                  expected)
            << why;
    }
}

TEST(MoveEvidence, TheMovesOwnMeetingComesFirst) {
    const std::vector<double> times{0, 500, 1000, 1500};
    const MoveSources sources{
        {"a", timed("a", times)}, {"b", timed("b", times)}, {"own", timed("own", times)}};
    std::vector claims{citing("c1", "b", {"t3", "t1"}), citing("c2", "a", {"t0"}),
                       citing("c3", "own", {"t2"})};
    claims[1].earlier = true;
    claims[2].superseded = true;
    const auto found = buildExchanges(claims, sources, "own").list;
    EXPECT_EQ(shape(found), "own:2 b:1 b:3 a:0");
    EXPECT_TRUE(found[0].superseded && !found[0].earlier);
    EXPECT_TRUE(found[3].earlier && !found[3].superseded);
    EXPECT_EQ(found[1].anchors, std::vector<std::size_t>{1});
    EXPECT_EQ(MoveEvidence::exchange("c2", found), &found[3]);
    EXPECT_EQ(MoveEvidence::exchange("c9", found), nullptr);
}

TEST(MoveEvidence, AnEditShowsItselfAndWhatItHides) {
    PreparedMove move{.id = "mv-1",
                      .sourceId = "m",
                      .title = "Prepared",
                      .blocks = {{"b", "Ask", {{"l1", "one", {"c1"}}, {"l2", "two", {"c2"}}}}},
                      .claims = {citing("c1", "m", {"t0"}), citing("c2", "m", {"t3"})}};
    MoveState state = MoveLifecycle::initial(move, Preparation::ready);
    state.revisions.push_back(
        {.id = "r",
         .title = "Later",
         .blocks = {{"b", "Ask", {{"l2", "two", {"c3"}}, {"l1", "uno", {"c1"}}, {"l4", "4", {}}}}},
         .claims = {citing("c3", "m", {"t3"})}});
    state.edits["l1"] = "mine";
    state.conflicts["l1"] = "newer";
    const MoveSources sources{{"m", timed("m", {0, 500, 1000, 1500})}};

    state.candidate = 1;
    const auto offered = MoveEvidence::resolve(move, state, sources);
    EXPECT_EQ(offered.title, "Prepared");
    EXPECT_EQ(offered.candidate, state.revisions[1]);
    using enum LineChange::Kind;
    EXPECT_EQ(offered.changes, (std::vector<LineChange>{{"l1", "Ask", changed, "one", "uno"},
                                                        {"l4", "Ask", added, {}, "4"}}));
    EXPECT_EQ(MoveEvidence::diffRevisions(state.revisions[1], state.revisions[0]).back(),
              (LineChange{"l4", "Ask", removed, "4", {}}));

    state.candidate.reset();
    state.current = 1;
    const auto shown = MoveEvidence::resolve(move, state, sources);
    EXPECT_EQ(shown.title, "Later");
    ASSERT_EQ(shown.claims.size(), 2u) << "the revision's claim, and of the move's the one in use";
    EXPECT_EQ(shown.claims[0].claim.id, "c3");
    EXPECT_EQ(shown.claims[1].claim.id, "c1");
    EXPECT_EQ(shown.claims[1].n, 2u);
    const ResolvedLine line{"l1", "mine", "uno", true, "newer", {"c1"}, {0}};
    EXPECT_EQ(*shown.lines()[1], line);
    EXPECT_EQ(shown.lines()[0]->anchors, std::vector<std::size_t>{1});
    EXPECT_FALSE(shown.changes.has_value());
}

TEST(MoveEvidence, TheOutlineIsWhatResolvingGives) {
    for (unsigned seed = 0; seed < 300; ++seed) {
        test::RandomMoves random(seed);
        MoveSources sources;
        for (const char* key : {"m0", "m1"}) sources[key] = timed(key, {0, 10, 200, -1});
        const PreparedMove move = random.move();
        MoveState state = random.state(move);
        if (random.chance(4)) state.current = 99;
        const auto outline = MoveEvidence::outline(move, state, sources);
        const auto whole = MoveEvidence::resolve(move, state, sources);
        EXPECT_EQ(outline.title, whole.title);
        EXPECT_EQ(outline.evidence, whole.evidence);
        EXPECT_EQ(outline.hasCandidate, whole.candidate.has_value());
        EXPECT_EQ(outline.source, whole.source);
        for (const ResolvedLine* line : whole.lines())
            for (const std::size_t anchor : line->anchors)
                ASSERT_LT(anchor, whole.exchanges.size()) << seed;
    }
}

TEST(MoveSource, ReadsBackWithTheIdsItMade) {
    const auto source = meeting("m", {"Hello.", "I call you."});
    EXPECT_EQ(source->turns[1].id(), idOf(2, "I call you."));
    const auto text = Json::write(encode(*source), Json::Style::file);
    const auto again = Json::decode<MoveSource>(text);
    EXPECT_EQ(again, *source);
    EXPECT_EQ(again.turnIndex(idOf(2, "I call you.")), 1u);
    EXPECT_EQ(source->turnIndex(idOf(2, "I call you.")), 1u);
    EXPECT_EQ(source->turnIndex(idOf(1, "I call you.")), std::nullopt);
}
}  // namespace
}  // namespace ombrix
