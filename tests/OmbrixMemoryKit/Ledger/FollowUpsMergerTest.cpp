#include "OmbrixMemoryKit/Ledger/FollowUpsMerger.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <map>
#include <random>
#include <set>
#include <string>
#include <vector>

#include "OmbrixMemoryKit/Identity/CommitmentID.h"
#include "OmbrixMemoryKit/Identity/ISODate.h"

namespace ombrix {
namespace {

using Sidecars = std::vector<LandSidecar>;
using Kind = Correction::Kind;
using enum CommitmentDirection;

const std::string today = "2026-09-01";

std::string day(int fromToday) {
    return ISODate::string(*ISODate::date(today) + std::chrono::days(fromToday),
                           Calendar::gregorianUtc());
}

LandCommitment promise(const std::string& what, std::optional<std::string> due = std::nullopt) {
    return {.direction = userOwes,
            .who = "Ana Ruiz",
            .whoKey = "name:ana ruiz",
            .what = what,
            .quote = "I'll " + what,
            .dueRaw = "soon",
            .due = std::move(due),
            .certainty = Certainty::recorded};
}

LandSidecar meeting(const std::string& key, const std::string& date,
                    std::vector<LandCommitment> commitments,
                    std::vector<LandResolution> resolutions = {}) {
    LandSidecar sidecar{.meetingKey = key, .title = key, .date = date};
    sidecar.output.commitments = std::move(commitments);
    sidecar.output.resolutions = std::move(resolutions);
    return sidecar;
}

FollowUpsLedger merge(const Sidecars& sidecars, const std::vector<Correction>& corrections = {},
                      const PersonAliases& aliases = {}) {
    return FollowUpsMerger::merge(sidecars, corrections, today, aliases);
}

std::vector<std::pair<std::string, const FollowUpRows*>> lists(const FollowUpsLedger& l) {
    return {{"youOweLate", &l.youOweLate}, {"youOweLive", &l.youOweLive},
            {"owedLate", &l.owedLate},     {"owedLive", &l.owedLive},
            {"changed", &l.changed},       {"closed", &l.closed},
            {"notSure", &l.notSure},       {"older", &l.older}};
}

/// Every row as "list due status, ...", with the words when they are not "send it".
std::string shown(const FollowUpsLedger& ledger) {
    std::string text;
    for (const auto& [name, rows] : lists(ledger)) {
        for (const auto& row : *rows) {
            if (!text.empty()) text += ", ";
            text += name + " " + (row.what == "send it" ? "" : row.what + " ");
            text += row.due.value_or("-") + " ";
            if (const auto* late = row.statusAs<FollowUpRow::Late>())
                text += "late " + std::to_string(late->days);
            if (const auto* done = row.statusAs<FollowUpRow::Done>())
                text += done->confirmedOn + " '" + done->quote + "' " + done->sourceTitle;
            if (const auto* moved = row.statusAs<FollowUpRow::Renegotiated>())
                text += moved->from.value_or("-") + " to " + moved->to.value_or("-") + " " +
                        moved->sourceTitle + " " + moved->sourceDate;
            if (row.statusAs<FollowUpRow::Live>() != nullptr) text += "live";
            if (row.statusAs<FollowUpRow::NotSure>() != nullptr) text += "?";
        }
    }
    return text;
}

TEST(FollowUpsMerger, EveryCommitmentGoesWhereItsStoryEnds) {
    const std::string id = CommitmentID::make("m", "send it", "name:ana ruiz");
    const auto said = [](int on, const LandCommitment& commitment) {
        return meeting("m", day(on), {commitment});
    };
    const auto done = [&](const std::string& key, int on) {
        return meeting(key, day(on), {}, {{.id = id, .quote = "sent"}});
    };
    const auto moved = [&](const std::string& key, int on, std::optional<std::string> to) {
        return meeting(key, day(on), {},
                       {{.id = id, .status = LandResolution::Status::renegotiated, .newDue = to}});
    };
    const auto with = [](auto member, auto value) {
        auto commitment = promise("send it");
        commitment.*member = value;
        return commitment;
    };
    const auto due = [](int on) { return promise("send it", day(on)); };
    const LandCommitment undated = promise("send it");
    LandSidecar itself = said(-9, undated);
    itself.output.resolutions = {{.id = id}};
    const auto someoneIs = [&](auto member, const char* who) {
        return said(-9, with(member, who));
    };
    const auto on = [&](Kind kind, const std::string& day, const char* text = "") {
        return Correction{.kind = kind, .id = id, .text = text, .on = day};
    };
    const struct {
        const char* why;
        std::string shown;
        Sidecars sidecars;
        std::vector<Correction> corrections{};
    } cases[] = {
        {"due today", "youOweLive 2026-09-01 live", {said(-9, due(0))}},
        {"due yesterday", "youOweLate 2026-08-31 late 1", {said(-9, due(-1))}},
        {"to the user",
         "owedLive - live",
         {said(-9, with(&LandCommitment::direction, owedToUser))}},
        {"between others", "", {said(-9, with(&LandCommitment::direction, other))}},
        {"its own meeting cannot do it", "youOweLive - live", {itself}},
        {"nor can an earlier one", "youOweLive - live", {done("n", -10), said(-9, undated)}},
        {"one of that day can", "closed - 2026-08-23 'sent' N", {said(-9, undated), done("N", -9)}},
        {"a month ago", "closed - 2026-08-02 'sent' N", {said(-40, undated), done("N", -30)}},
        {"31 days ago", "", {said(-40, undated), done("N", -31)}},
        {"done is never opened again",
         "closed - 2026-08-27 'sent' N",
         {said(-9, undated), done("N", -5), moved("O", -2, day(9))}},
        {"the last move counts",
         "changed 2026-09-08 2026-08-29 to 2026-09-08 O 2026-08-30",
         {said(-9, due(-3)), moved("O", -2, day(7)), moved("N", -5, day(9))}},
        {"moved to no day",
         "changed 2026-08-29 2026-08-29 to - N 2026-08-27",
         {said(-9, due(-3)), moved("N", -5, std::nullopt)}},
        {"inferred, whatever is said later",
         "notSure - ?",
         {said(-9, with(&LandCommitment::certainty, Certainty::read)), done("N", -5)}},
        {"nobody's", "notSure - ?", {someoneIs(&LandCommitment::who, "Speaker 2")}},
        {"nobody's key", "notSure - ?", {someoneIs(&LandCommitment::whoKey, "name:someone in it")}},
        {"a key as written",
         "youOweLive - live",
         {someoneIs(&LandCommitment::whoKey, "Name:them")}},
        {"the user's last word is above all",
         "closed 2026-08-23 2026-08-31 '' marked by you",
         {said(-40, due(-9)), done("N", -35)},
         {on(Kind::done, day(-35)), on(Kind::done, day(-1))}},
        {"and counts on no day", "", {said(-9, undated)}, {on(Kind::done, "2026-99-99")}},
        {"reworded, the id is kept",
         "changed Other 2026-09-01 2026-08-31 to 2026-09-01 N 2026-08-27",
         {said(-9, due(-1)), moved("N", -5, day(0))},
         {on(Kind::reword, "", "Other")}},
        {"no commitment", "", {said(-9, undated)}, {on(Kind::notACommitment, "")}},
        {"a pin moves nothing",
         "youOweLive - live",
         {said(-9, undated)},
         {on(Kind::important, "")}},
        {"said 90 days ago", "youOweLive - live", {said(-90, undated)}},
        {"said 91 days ago", "older - live", {said(-91, undated)}},
        {"mentioned since",
         "changed - - to - N 2026-06-03",
         {said(-91, undated), moved("N", -90, std::nullopt)}},
        {"due today, said long ago", "youOweLive 2026-09-01 live", {said(-300, due(0))}},
        {"the same twice",
         "youOweLive - live",
         {meeting("m", day(-9), {undated, promise("Send, it!", day(3))})}},
    };
    for (const auto& [why, expected, sidecars, corrections] : cases) {
        const auto ledger = merge(sidecars, corrections);
        EXPECT_EQ(shown(ledger), expected) << why;
        EXPECT_EQ(ledger.meetingsRead, static_cast<std::int64_t>(sidecars.size())) << why;
    }
}

TEST(FollowUpsMerger, AListKeepsWhatIsMostUrgent) {
    std::vector<LandCommitment> late, unsure;
    for (int i = 1; i <= 21; ++i) late.push_back(promise("late " + std::to_string(i), day(-i)));
    Sidecars sidecars = {meeting("m", day(-30), late)};
    for (int i = 0; i < 11; ++i) {
        auto commitment = promise("unsure " + std::to_string(i));
        commitment.certainty = Certainty::read;
        sidecars.push_back(meeting("u" + std::to_string(i), day(-40 + i), {commitment}));
    }
    const auto ledger = merge(sidecars);
    ASSERT_EQ(ledger.youOweLate.size(), 20);
    EXPECT_EQ(ledger.youOweLate.front().what, "late 21");
    ASSERT_EQ(ledger.notSure.size(), 10);
    EXPECT_EQ(ledger.notSure.front().what, "unsure 10");
    ASSERT_EQ(ledger.older.size(), 2);
    EXPECT_EQ(ledger.older[0].what, "late 1");
    EXPECT_EQ(ledger.older[1].what, "unsure 0");
}

TEST(FollowUpsMerger, ARepeatedPromiseIsOneRowUnderOnePerson) {
    auto byAddress = promise("send it");
    byAddress.whoKey = "email:ana@example.com";
    auto toUser = promise("send it");
    toUser.direction = owedToUser;
    const Sidecars sidecars = {meeting("b", day(-8), {byAddress}), meeting("d", day(-1), {toUser}),
                               meeting("c", day(-3), {promise("Send it.")}),
                               meeting("a", day(-20), {promise("send it", day(2))})};
    const auto id = [](const char* key) {
        return CommitmentID::make(key, "send it", "email:ana@example.com");
    };
    EXPECT_EQ(merge(sidecars).youOweLive.size(), 2);  // two people, as far as anybody knows

    PersonAliases aliases;
    aliases.add("Ana Ruiz", "ana@example.com", "Ana");
    const std::vector<Correction> pin = {
        {.kind = Kind::important, .id = CommitmentID::make("c", "send it", "name:ana ruiz")}};
    const auto ledger = merge(sidecars, pin, aliases);
    ASSERT_EQ(ledger.youOweLive.size(), 1);
    EXPECT_EQ(ledger.owedLive.size(), 1);
    FollowUpRow expected{.id = id("c"),
                         .what = "Send it.",
                         .who = "Ana",
                         .whoKey = "email:ana@example.com",
                         .said = day(-3),
                         .dueRaw = "soon",
                         .quote = "I'll Send it.",
                         .sourceTitle = "c",
                         .sourceDate = day(-3),
                         .meetingKey = "c",
                         .whatRaw = "Send it.",
                         .important = true};
    expected.recurrence = {
        .count = 3, .firstSaid = day(-20), .memberIDs = {id("c"), id("b"), id("a")}};
    EXPECT_EQ(ledger.youOweLive.front(), expected);
    EXPECT_EQ(ledger.pinnedIDs, std::set{pin.front().id});

    FollowUpRow nobodys{.id = "c-2", .whoKey = "name:Speaker 2", .said = "2", .whatRaw = "send it"};
    FollowUpRow named{.id = "c-3", .what = "send it", .whoKey = "name:ana", .said = "1"};
    FollowUpRow again = named;
    again.id = "c-1";
    again.whoKey = "Name:Ana";
    const auto rows = FollowUpsMerger::collapseRecurrences({named, nobodys, again, nobodys});
    again.recurrence = {.count = 2, .firstSaid = "1", .memberIDs = {"c-1", "c-3"}};
    EXPECT_EQ(rows, (FollowUpRows{nobodys, nobodys, again}));
}

TEST(FollowUpsLedger, OpenRowsOfSomePeopleComeInTheirOrder) {
    const auto row = [](const std::string& id, const std::string& key) {
        return FollowUpRow{
            .id = id, .direction = owedToUser, .what = "w", .who = "A", .whoKey = key};
    };
    const FollowUpsLedger ledger{.youOweLate = {row("1", "a")},
                                 .youOweLive = {row("2", "b"), row("3", "a")},
                                 .owedLate = {row("4", "c")},
                                 .owedLive = {row("5", "a")},
                                 .changed = {row("6", "c")},
                                 .closed = {row("7", "a")},
                                 .notSure = {row("8", "a")},
                                 .older = {row("9", "c")}};
    const auto ids = [](const auto& rows) {
        std::string text;
        for (const auto& each : rows) text += each.id;
        return text;
    };
    using Older = FollowUpsLedger::Older;
    EXPECT_EQ(ids(ledger.openRows({"a", "c"})), "13456");
    EXPECT_EQ(ids(ledger.openRows({"a", "c"}, 99, Older::added)), "134569");
    EXPECT_EQ(ids(ledger.openRows({"a", "c"}, 2)), "13");
    EXPECT_EQ(ids(ledger.open({"a", "c"}, 4)), "1435");
    EXPECT_EQ(ids(ledger.open({"a", "c"}, -1)) + ids(ledger.openRows({}, 5)), "");
    const LandOpenFollowUp first{.id = "1", .direction = "owed_to_user", .who = "A", .what = "w"};
    EXPECT_EQ(ledger.open({"a"}, 1), std::vector{first});
}

// ---- laws over random libraries ---------------------------------------------------------------

/// Few words, people and days, so that everything meets everything.
class RandomLibrary {
  public:
    explicit RandomLibrary(unsigned seed) : random_(seed) {
        aliases.add("Ana Ruiz", "ana@example.com", "Ana");
        for (int i = 0; i < 30; ++i) addMeeting(i);
        for (int i = 0; i < 25; ++i) {
            corrections.push_back({.kind = static_cast<Kind>(below(7)),
                                   .id = anyID(),
                                   .text = "Other words",
                                   .on = day(-static_cast<int>(below(60)))});
        }
    }

    std::size_t below(std::size_t bound) { return random_() % bound; }
    template <typename List>
    const auto& of(const List& list) {
        return list[below(std::size(list))];
    }
    template <typename List>
    void shuffle(List& list) {
        std::ranges::shuffle(list, random_);
    }
    std::string idOf(const LandSidecar& sidecar, const LandCommitment& commitment) const {
        return CommitmentID::make(sidecar.meetingKey, commitment.what,
                                  aliases.canonical(commitment.whoKey));
    }

    Sidecars sidecars;
    std::vector<Correction> corrections;
    PersonAliases aliases;

  private:
    std::string anyID() {
        const auto& sidecar = of(sidecars);
        if (sidecar.output.commitments.empty()) return "c-00000000";
        const auto& commitment = of(sidecar.output.commitments);
        return below(2) == 0
                   ? idOf(sidecar, commitment)
                   : CommitmentID::make(sidecar.meetingKey, commitment.what, commitment.whoKey);
    }

    void addMeeting(int number) {
        static const std::string words[] = {"send it", "Send it!", "call", "call back", "pay", "?"};
        static const std::string keys[] = {"name:ana ruiz", "EMAIL:ana@example.com", "name:bo",
                                           "Name:Bo",       "name:speaker 2",        ""};
        auto sidecar =
            meeting("m" + std::to_string(number), day(-static_cast<int>(below(120))), {});
        sidecar.landedAt = Instant(std::chrono::seconds((number * 7) % 30));
        for (std::size_t i = below(6); i > 0; --i) {
            auto commitment = promise(of(words));
            commitment.direction = static_cast<CommitmentDirection>(below(3));
            commitment.whoKey = of(keys);
            commitment.certainty = static_cast<Certainty>(below(3));
            if (below(2) == 0) commitment.due = day(20 - static_cast<int>(below(60)));
            sidecar.output.commitments.push_back(commitment);
        }
        for (std::size_t i = sidecars.empty() ? 0 : below(5); i > 0; --i) {
            LandResolution said{.id = anyID(),
                                .status = static_cast<LandResolution::Status>(below(2))};
            if (below(2) == 0) said.newDue = day(static_cast<int>(below(20)));
            // Between meetings of one day the order of the files would decide.
            if (resolved_.insert({said.id, sidecar.date}).second)
                sidecar.output.resolutions.push_back(said);
        }
        sidecars.push_back(std::move(sidecar));
    }

    std::mt19937 random_;
    std::set<std::pair<std::string, std::string>> resolved_;
};

/// How often each commitment is accounted for by a row.
std::map<std::string, int> idsIn(const FollowUpsLedger& ledger) {
    std::map<std::string, int> ids;
    for (const auto& [name, rows] : lists(ledger)) {
        for (const auto& row : *rows) {
            const std::vector alone = {row.id};
            for (const auto& id : row.recurrence ? row.recurrence->memberIDs : alone) ++ids[id];
        }
    }
    return ids;
}

TEST(FollowUpsMerger, TheOrderOfFilesAndLandingAgainChangeNothing) {
    for (unsigned seed = 1; seed <= 60; ++seed) {
        RandomLibrary library(seed);
        const auto ledger = merge(library.sidecars, library.corrections, library.aliases);
        library.shuffle(library.sidecars);
        for (auto& sidecar : library.sidecars) {
            const auto ofThatDay =
                std::ranges::count(library.sidecars, sidecar.date, &LandSidecar::date);
            if (ofThatDay == 1) sidecar.landedAt += std::chrono::hours(library.below(9));
        }
        EXPECT_EQ(merge(library.sidecars, library.corrections, library.aliases), ledger) << seed;
    }
}

TEST(FollowUpsMerger, NoCommitmentIsLostOrShownTwice) {
    for (unsigned seed = 1; seed <= 60; ++seed) {
        const RandomLibrary library(seed);
        const auto& aliases = library.aliases;
        std::set<std::string> dropped, finished;  // by any id; the second are shown for some time
        for (const auto& correction : library.corrections) {
            if (correction.kind == Kind::notACommitment) dropped.insert(correction.id);
            if (correction.kind == Kind::done) finished.insert(correction.id);
        }
        for (const auto& sidecar : library.sidecars)
            for (const auto& said : sidecar.output.resolutions)
                if (said.status == LandResolution::Status::done && sidecar.date < day(-30))
                    finished.insert(said.id);
        auto ids = idsIn(merge(library.sidecars, library.corrections, aliases));
        for (const auto& [id, times] : ids) EXPECT_EQ(times, 1) << seed << id;
        std::set<std::string> promised;
        for (const auto& sidecar : library.sidecars) {
            for (const auto& commitment : sidecar.output.commitments) {
                if (commitment.direction == other) continue;
                const auto id = library.idOf(sidecar, commitment);
                bool isDropped = false, mayBeGone = false;
                for (const auto& key : aliases.aliases(commitment.whoKey)) {
                    const auto each = CommitmentID::make(sidecar.meetingKey, commitment.what, key);
                    isDropped |= dropped.contains(each);
                    mayBeGone |= finished.contains(each);
                }
                promised.insert(id);
                EXPECT_TRUE(isDropped ? !ids.contains(id) : mayBeGone || ids.contains(id)) << seed;
            }
        }
        for (const auto& [id, times] : ids) EXPECT_TRUE(promised.contains(id)) << seed << id;
    }
}

TEST(FollowUpsMerger, WhatTheUserRemovedStaysAwayUnderEveryAlias) {
    for (unsigned seed = 1; seed <= 60; ++seed) {
        RandomLibrary library(seed);
        const auto& sidecar = library.of(library.sidecars);
        for (const auto& commitment : sidecar.output.commitments)
            library.corrections.push_back(
                {.kind = Kind::notACommitment, .id = library.idOf(sidecar, commitment)});
        library.aliases.add({.canonical = "email:bo@example.com", .aliases = {"name:bo"}});
        if (library.below(2) == 0)
            library.aliases.add(
                {.canonical = "email:a@b", .aliases = {"name:ana ruiz", "name:bo"}});
        const auto ids = idsIn(merge(library.sidecars, library.corrections, library.aliases));
        for (const auto& commitment : sidecar.output.commitments)
            EXPECT_FALSE(ids.contains(library.idOf(sidecar, commitment))) << seed;
    }
}
}  // namespace
}  // namespace ombrix
