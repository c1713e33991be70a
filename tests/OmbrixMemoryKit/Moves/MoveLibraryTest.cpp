#include "OmbrixMemoryKit/Moves/MoveLibrary.h"

#include <gtest/gtest.h>

#include "OmbrixMemoryKit/Moves/MoveLifecycle.h"

namespace ombrix {
namespace {

using Kind = MoveCorrection::Kind;

PrepareMove work(std::string key, PrepareStance stance = PrepareStance::stated) {
    return {.key = key, .commitmentIDs = {"c-" + key}, .stance = stance, .title = key};
}

PrepareSidecar sidecar(std::string key, const char* date, const char* preparedAt,
                       std::vector<PrepareMove> moves) {
    return {.meetingKey = std::move(key),
            .date = date,
            .preparedAt = *parseIsoInstant(preparedAt),
            .output = {.moves = std::move(moves)}};
}

std::string titles(const std::vector<ResolvedMove>& moves) {
    std::string text;
    for (const auto& each : moves) text += each.title + " ";
    return text;
}

TEST(MoveLibrary, TheNewestMeetingComesFirstAndStatedWorkBeforeSuggested) {
    const auto suggested = PrepareStance::suggested;
    const std::vector sidecars{
        sidecar("m-1", "2026-06-01", "2026-06-01T09:00:00Z", {work("old")}),
        sidecar("m-2", "2026-07-01", "2026-07-01T09:00:00Z",
                {work("d", suggested), work("b"), work("e", suggested), work("c")}),
        sidecar("m-3", "2026-07-01", "2026-07-01T10:00:00Z", {work("a")}),
        sidecar("m-4", "2026-08-01", "2026-08-01T10:00:00Z", {}),
    };
    const auto moves = MoveLibrary::resolve(sidecars, {}, {});
    EXPECT_EQ(titles(moves), "a b c d e old ");
    EXPECT_EQ(moves[0].move.preparedAt, "2026-07-01T10:00:00Z");
    EXPECT_EQ(MoveLibrary::byMeeting(moves).at("m-3"), std::vector{moves[0].move.id});
    EXPECT_TRUE(MoveLibrary::resolve({}, {}, {}).empty());
}

TEST(MoveLibrary, RecordsGiveTheStateAndCorrectionsTheLastWord) {
    const auto move = PrepareMapping::move(work("a"), "m-1", "t");
    const auto dismissed = MoveLifecycle::reduce(MoveLifecycle::initial(move, Preparation::failed),
                                                 MoveActions::Dismiss{"t1"});
    MoveLibrary::Knowledge known;
    known.records.emplace(move.id, MoveStateRecord(dismissed, "m-1"));
    known.records.emplace("mv-00000000", MoveStateRecord(dismissed, "m-9"));
    known.preparation = Preparation::preparing;
    const std::vector sidecars{
        sidecar("m-1", "2026-07-01", "2026-07-01T09:00:00Z", {work("a"), work("b")})};

    auto moves = MoveLibrary::resolve(sidecars, known, {});
    ASSERT_EQ(moves.size(), 2u) << "a record without a move is none";
    EXPECT_TRUE(moves[0].state.dismissed);
    EXPECT_EQ(moves[0].state.preparation, Preparation::ready);
    EXPECT_EQ(moves[1].state.preparation, Preparation::preparing);
    EXPECT_EQ(MoveLibrary::head(moves), &moves[1]);

    known.corrections[move.id] = {{Kind::restore, move.id, ""},
                                  {Kind::done, "mv-another", "2026-07-03"},
                                  {Kind::done, move.id, "2026-07-02"}};
    moves = MoveLibrary::resolve(sidecars, known, {});
    EXPECT_FALSE(moves[0].state.dismissed);
    EXPECT_EQ(moves[0].state.obligation, Obligation::done);
    const auto& events = moves[0].state.events;
    ASSERT_EQ(events.size(), 3u);
    EXPECT_EQ(events[1].at, "2026-07-01T09:00:00Z") << "a restore happens when it was prepared";
    EXPECT_EQ(events[2], (MoveEvent{"2026-07-02", MoveEventKind::done, "you"}));
    known.corrections[move.id].push_back({Kind::discard, move.id, ""});
    EXPECT_TRUE(MoveLibrary::resolve(sidecars, known, {})[0].state.dismissed) << "order counts";
}

TEST(MoveLibrary, TheHeadIsStatedIfAnyStatedMoveIsOpen) {
    auto moves = MoveLibrary::resolve(
        {sidecar("m-2", "2026-07-02", "2026-07-02T09:00:00Z",
                 {work("guess", PrepareStance::suggested)}),
         sidecar("m-1", "2026-07-01", "2026-07-01T09:00:00Z", {work("promise")})},
        {}, {});
    ASSERT_EQ(titles(moves), "guess promise ");
    EXPECT_EQ(MoveLibrary::head(moves), &moves[1]);
    moves[1].state.obligation = Obligation::done;
    EXPECT_EQ(MoveLibrary::head(moves), &moves[0]);
    moves[0].state.dismissed = true;
    EXPECT_EQ(MoveLibrary::head(moves), nullptr);
    const std::vector<FollowUpRow> rows{
        {.id = "c-again",
         .recurrence = FollowUpRow::Recurrence{.memberIDs = {"c-again", "c-promise"}}},
        {.id = "c-x", .recurrence = FollowUpRow::Recurrence{.memberIDs = {"c-guess"}}},
        {.id = "c-alone"}};
    EXPECT_EQ(MoveLibrary::servedCommitmentIDs(moves, rows),
              (std::set<std::string>{"c-again", "c-promise"}));
}
}  // namespace
}  // namespace ombrix
