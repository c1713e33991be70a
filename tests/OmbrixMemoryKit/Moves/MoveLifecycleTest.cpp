#include "OmbrixMemoryKit/Moves/MoveLifecycle.h"

#include <gtest/gtest.h>

#include "OmbrixMemoryKit/Moves/MoveStateRecord.h"
#include "RandomMoves.h"

namespace ombrix {
namespace {

using namespace MoveActions;
using MoveLifecycle::reduce;

Revision withLines(std::string id, std::vector<MoveLine> lines) {
    return {.id = std::move(id), .blocks = {{"b", "Ask", std::move(lines)}}};
}

const PreparedMove move{.id = "mv-1a2b3c4d",
                        .sourceId = "m-1",
                        .preparedAt = "t0",
                        .blocks = {{"b", "Ask", {{"l1", "one", {"c"}}, {"l2", "two", {"c"}}}}}};

MoveState after(std::vector<MoveAction> actions) {
    auto state = MoveLifecycle::initial(move, Preparation::ready);
    for (auto& action : actions) state = reduce(std::move(state), std::move(action));
    return state;
}

std::vector<MoveEventKind> kinds(const MoveState& state) {
    std::vector<MoveEventKind> result;
    for (const auto& event : state.events) result.push_back(event.kind);
    return result;
}

TEST(MoveLifecycle, AMoveStartsOpenWithItsPreparedRevision) {
    const auto ready = MoveLifecycle::initial(move, Preparation::ready);
    const MoveState expected{
        .moveId = "mv-1a2b3c4d",
        .revisions = {{.id = "mv-1a2b3c4d#prepared",
                       .label = "Prepared",
                       .at = "t0",
                       .title = "",
                       .blocks = move.blocks}},
        .events = {{"t0", MoveEventKind::prepared, std::nullopt}},
    };
    EXPECT_EQ(ready, expected);
    EXPECT_TRUE(MoveLifecycle::initial(move, Preparation::preparing).events.empty());
}

TEST(MoveLifecycle, AnEditToTheSameWordsIsNone) {
    const MoveState edited = after({Edit{"l1", "  mine ", "t1"}});
    EXPECT_EQ(edited.edits, (std::map<std::string, std::string>{{"l1", "  mine "}}));
    for (const char* words : {"one", " one\n", "", " \t"}) {
        auto state = edited;
        state.conflicts["l1"] = "newer";
        state = reduce(state, Edit{"l1", words, "t2"});
        EXPECT_TRUE(state.edits.empty()) << words;
        EXPECT_TRUE(state.conflicts.empty()) << words;
        EXPECT_EQ(state.events.back(), (MoveEvent{"t2", MoveEventKind::edited, {}})) << words;
    }
}

TEST(MoveLifecycle, WhatMakesNoSenseChangesNothing) {
    auto dismissed = after({Dismiss{"t1"}});
    auto lost = after({Revise{withLines("r", {}), "t1"}});
    lost.current = 7;
    const struct {
        const char* why;
        MoveState state;
        MoveAction action;
    } cases[] = {
        {"no such line", after({}), Edit{"l9", "x", "t"}},
        {"no current revision", lost, Edit{"l1", "x", "t"}},
        {"nothing on offer", after({}), Adopt{"t"}},
        {"adopting from a revision that is not there", lost, Adopt{"t"}},
        {"a dismissed move is not made again", dismissed, Regenerate{withLines("r", {}), "t"}},
    };
    for (const auto& [why, state, action] : cases) EXPECT_EQ(reduce(state, action), state) << why;
}

TEST(MoveLifecycle, ANewRevisionWaitsForAUserWhoEdited) {
    const Revision next = withLines("r1", {{"l1", "uno", {"c"}}, {"l2", "two", {"c"}}});
    const MoveState taken = after({Regenerate{next, "t1"}});
    EXPECT_EQ(taken.current, 1);
    EXPECT_EQ(taken.candidate, std::nullopt);

    const MoveState offered =
        after({Edit{"l1", "mine", "t1"}, Edit{"l2", "also", "t2"}, Regenerate{next, "t3"}});
    EXPECT_EQ(offered.current, 0);
    EXPECT_EQ(offered.candidate, 1);

    const MoveState adopted = reduce(offered, Adopt{"t4"});
    EXPECT_EQ(adopted.current, 1);
    EXPECT_EQ(adopted.candidate, std::nullopt);
    EXPECT_EQ(adopted.edits, offered.edits);
    EXPECT_EQ(adopted.conflicts, (std::map<std::string, std::string>{{"l1", "uno"}}));
    EXPECT_TRUE(reduce(adopted, UseNewLine{"l1", "t5"}).conflicts.empty());
    EXPECT_EQ(reduce(adopted, UseNewLine{"l1", "t5"}).edits,
              (std::map<std::string, std::string>{{"l2", "also"}}));

    const MoveState kept = reduce(offered, KeepMine{"t4"});
    EXPECT_EQ(kept.candidate, std::nullopt);
    EXPECT_EQ(kept.revisions.size(), 2u);
}

TEST(MoveLifecycle, ARevisionWithClaimsBringsADismissedMoveBack) {
    Revision next = withLines("r1", {});
    EXPECT_TRUE(after({Dismiss{"t1"}, Revise{next, "t2"}}).dismissed);
    next.claims.push_back({.id = "c"});
    const MoveState back = after({Dismiss{"t1"}, Revise{next, "t2"}});
    EXPECT_FALSE(back.dismissed);
    EXPECT_EQ(back.candidate, 1);
}

TEST(MoveLifecycle, DeliveryAndObligationKeepTheLastWord) {
    const MoveState copied = after({CopyFailed{"t1"}, Copied{"t2"}});
    EXPECT_EQ(copied.delivery, (Delivery{Delivery::Kind::copied, ""}));
    const MoveState failed = reduce(copied, CopyFailed{"t3"});
    EXPECT_EQ(failed.delivery.kind, Delivery::Kind::copyFailed);
    EXPECT_EQ(failed.copiedAt, "t2");
    const MoveState done = reduce(failed, MarkDone{DoneBy::evidence, "t4"});
    EXPECT_EQ(done.doneBy, DoneBy::evidence);
    EXPECT_EQ(done.events.back(), (MoveEvent{"t4", MoveEventKind::done, "evidence"}));
    const MoveState given = reduce(reduce(done, Reopen{"t5"}), HandedOff{"Notes", "t6"});
    EXPECT_EQ(given.obligation, Obligation::open);
    EXPECT_EQ(given.doneBy, std::nullopt);
    EXPECT_EQ(given.delivery, (Delivery{Delivery::Kind::handedOff, "Notes"}));
    using Kind = MoveEventKind;
    EXPECT_EQ(kinds(given),
              (std::vector{Kind::prepared, Kind::copyFailed, Kind::copied, Kind::copyFailed,
                           Kind::done, Kind::reopened, Kind::handedOff}));
}

TEST(MoveLifecycle, LawsOfEveryAction) {
    for (unsigned seed = 0; seed < 300; ++seed) {
        test::RandomMoves random(seed);
        const PreparedMove prepared = random.move();
        MoveState state = MoveLifecycle::initial(prepared, random.any<Preparation>());
        for (int step = 0; step < 40; ++step) {
            const MoveState next = reduce(state, random.action("t"));
            EXPECT_NE(next.revision(next.current), nullptr);
            EXPECT_TRUE(!next.candidate || next.revision(next.candidate) != nullptr);
            EXPECT_TRUE(next == state || next.events.size() == state.events.size() + 1);
            for (const auto& [line, text] : next.conflicts)
                EXPECT_TRUE(next.edits.contains(line)) << "a conflict hides behind an edit";
            ASSERT_FALSE(HasFailure()) << "seed " << seed << ", step " << step;
            state = next;
        }
        EXPECT_EQ(MoveState::decode(state.encode()), state);
        const MoveStateRecord record(state, "m-1");
        const auto again = MoveStateRecord::decode(record.encode());
        EXPECT_EQ(again, record);
        EXPECT_EQ(again.state(state.preparation), state);
    }
}

TEST(MoveStateRecord, HoldsTheNewestEventsAlone) {
    MoveState state = after({});
    state.events.clear();
    for (int i = 0; i < 250; ++i)
        state.events.push_back({std::to_string(i), MoveEventKind::copied, std::nullopt});
    const auto kept = MoveStateRecord(state, "m-1").state(Preparation::ready).events;
    EXPECT_EQ(kept.size(), 200u);
    EXPECT_EQ(kept.front().at, "50");
    EXPECT_EQ(kept.back().at, "249");
}

TEST(MoveStateRecord, RefusesWhatItDoesNotKnow) {
    const std::string text = MoveStateRecord(after({Copied{"t1"}}), "m-1").encode();
    const auto replaced = [&](const char* from, const char* to) {
        EXPECT_TRUE(Text::contains(text, from)) << from;
        return Text::replacingAll(text, from, to);
    };
    try {
        MoveStateRecord::decode(replaced("move-state/v1", "move-state/v2"));
        ADD_FAILURE() << "another schema is read";
    } catch (const MoveStateRecord::DecodeError& error) {
        EXPECT_EQ(error.found(), "ombrix/move-state/v2");
    }
    const struct {
        const char *from, *to, *message;
    } cases[] = {
        {"\"kind\" : \"copied\"\n  }", "\"kind\" : \"lost\"\n  }",
         "delivery.kind: unknown delivery lost"},
        {"\"kind\" : \"copied\"\n  }", "\"kind\" : \"handed-off\"\n  }", "delivery.to: missing"},
        {"\"current\" : 0", "\"current\" : 0.5", "current: not an integer"},
    };
    for (const auto& [from, to, message] : cases) {
        try {
            MoveStateRecord::decode(replaced(from, to));
            ADD_FAILURE() << message;
        } catch (const Json::DecodingError& error) {
            EXPECT_STREQ(error.what(), message);
        }
    }
    for (std::size_t end = 0; end < text.size(); ++end)
        EXPECT_THROW(MoveStateRecord::decode(text.substr(0, end)), Json::SyntaxError) << end;
}
}  // namespace
}  // namespace ombrix
