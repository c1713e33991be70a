#include "OmbrixMemoryKit/Ledger/FollowUpsMerger.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <set>
#include <string>
#include <vector>

#include "OmbrixMemoryKit/Identity/CommitmentID.h"
#include "OmbrixMemoryKit/Identity/ISODate.h"
#include "OmbrixPlatform/RandomText.h"

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

LandCommitment promise(std::string_view what, std::optional<std::string> due = std::nullopt) {
    return {.direction = userOwes,
            .who = "Ana Ruiz",
            .whoKey = "name:ana ruiz",
            .what = std::string(what),
            .quote = "I'll do it",
            .dueRaw = "soon",
            .due = std::move(due),
            .certainty = Certainty::recorded};
}

LandSidecar meeting(const std::string& key, int on, std::vector<LandCommitment> commitments,
                    std::vector<LandResolution> resolutions = {}) {
    LandSidecar sidecar{.meetingKey = key, .title = key, .date = day(on)};
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

/// Every row as "list words due status".
std::string shown(const FollowUpsLedger& ledger) {
    std::string text;
    for (const auto& [name, rows] : lists(ledger)) {
        for (const auto& row : *rows) {
            text += name + " " + row.what + " " + row.due.value_or("-") + " ";
            if (const auto* late = row.statusAs<FollowUpRow::Late>())
                text += "late " + std::to_string(late->days);
            else if (const auto* done = row.statusAs<FollowUpRow::Done>())
                text += done->confirmedOn + " '" + done->quote + "' " + done->sourceTitle;
            else if (const auto* moved = row.statusAs<FollowUpRow::Renegotiated>())
                text += moved->from.value_or("-") + " to " + moved->to.value_or("-") + " " +
                        moved->sourceTitle + " " + moved->sourceDate;
            else
                text += row.statusAs<FollowUpRow::Live>() != nullptr ? "live" : "?";
        }
    }
    return text;
}

TEST(FollowUpsMerger, EveryCommitmentGoesWhereItsStoryEnds) {
    const std::string id = CommitmentID::make("m", "it", "name:ana ruiz");
    const auto said = [](int on, const LandCommitment& commitment = promise("it")) {
        return meeting("m", on, {commitment});
    };
    const auto due = [](int on) { return promise("it", day(on)); };
    const auto with = [](auto member, auto value) {
        auto commitment = promise("it", day(-9));
        commitment.*member = value;
        return commitment;
    };
    using Of = LandCommitment;
    const auto inferred = with(&Of::certainty, Certainty::read);
    const auto done = [&](const char* key, int on) {
        return meeting(key, on, {}, {{.id = id, .quote = "sent"}});
    };
    const auto moved = [&](const char* key, int on, std::optional<std::string> to = {}) {
        return meeting(key, on, {},
                       {{.id = id, .status = LandResolution::Status::renegotiated, .newDue = to}});
    };
    const auto user = [&](Kind kind, const std::string& day, const char* text = "") {
        return Correction{.kind = kind, .id = id, .text = text, .on = day};
    };
    const struct {
        const char* why;
        std::string shown;
        Sidecars sidecars;
        std::vector<Correction> corrections{};
    } cases[] = {
        {"due today, however old", "youOweLive it 2026-09-01 live", {said(-300, due(0))}},
        {"due yesterday", "youOweLate it 2026-08-31 late 1", {said(-9, due(-1))}},
        {"done by itself, or before",
         "youOweLive it - live",
         {said(-9), done("m", -8), done("n", -10)}},
        {"done on its day, a month ago",
         "closed it - 2026-08-02 'sent' N",
         {said(-30), done("N", -30)}},
        {"31 days ago", "", {said(-40), done("N", -31)}},
        {"done is never opened again",
         "closed it - 2026-08-27 'sent' N",
         {said(-9), done("N", -5), moved("O", -2, day(9))}},
        {"the last move counts; reworded, the id is kept",
         "changed other 2026-09-08 2026-08-29 to 2026-09-08 O 2026-08-30",
         {said(-9, due(-3)), moved("O", -2, day(7)), moved("N", -5, day(9))},
         {user(Kind::reword, "", "other")}},
        {"inferred", "notSure it 2026-08-23 ?", {said(-9, inferred), done("N", -5)}},
        {"nobody's name", "notSure it 2026-08-23 ?", {said(-9, with(&Of::who, "them"))}},
        {"nobody's key",
         "notSure it 2026-08-23 ?",
         {said(-9, with(&Of::whoKey, "name:someone in it"))}},
        {"a key as written",
         "youOweLate it 2026-08-23 late 9",
         {said(-9, with(&Of::whoKey, "Name:them"))}},
        {"the user's last word is above all",
         "closed it 2026-08-23 2026-08-31 '' marked by you",
         {said(-40, inferred), done("N", -35)},
         {user(Kind::done, day(-35)), user(Kind::done, day(-1))}},
        {"and counts on no day", "", {said(-9)}, {user(Kind::done, "2026-99-99")}},
        {"said 90 days ago", "youOweLive it - live", {said(-90)}},
        {"said 91 days ago", "older it - live", {said(-91)}},
        {"mentioned since, moved to no day",
         "changed it 2026-08-29 2026-08-29 to - N 2026-06-03",
         {said(-91, due(-3)), moved("N", -90)}},
    };
    for (const auto& [why, expected, sidecars, corrections] : cases) {
        const auto ledger = merge(sidecars, corrections);
        EXPECT_EQ(shown(ledger), expected) << why;
        EXPECT_EQ(ledger.meetingsRead, static_cast<std::int64_t>(sidecars.size())) << why;
    }
}

TEST(FollowUpsMerger, AListKeepsWhatIsMostUrgent) {
    Sidecars sidecars = {meeting("m", -30, {})};
    for (int i = 1; i <= 21; ++i) {
        auto& all = sidecars.front().output.commitments;
        all.push_back(promise("late " + std::to_string(i), day(-i)));
        all.push_back(promise("live " + std::to_string(i), day(i)));
        auto unsure = promise("unsure " + std::to_string(i));
        unsure.certainty = Certainty::read;
        sidecars.push_back(meeting("u" + std::to_string(i), i - 80, {unsure}));
    }
    const auto ledger = merge(sidecars);
    ASSERT_EQ(ledger.youOweLate.size() + ledger.youOweLive.size(), 40);
    EXPECT_EQ(ledger.youOweLate.front().what + ledger.youOweLive.back().what, "late 21live 20");
    ASSERT_EQ(ledger.notSure.size(), 10);
    EXPECT_EQ(ledger.notSure.front().what, "unsure 21");
    ASSERT_EQ(ledger.older.size(), 1 + 1 + 11);
    EXPECT_EQ(ledger.older[0].what + ledger.older[1].what, "late 1live 21");
    EXPECT_EQ(ledger.older.back().what, "unsure 1");
}

TEST(FollowUpsMerger, ARepeatedPromiseIsOneRowUnderOnePerson) {
    auto byAddress = promise("send it"), toUser = promise("send it");
    byAddress.whoKey = "email:ana@example.com";
    toUser.direction = owedToUser;
    const Sidecars sidecars = {meeting("b", -8, {byAddress}), meeting("d", -1, {toUser}),
                               meeting("c", -3, {promise("Send it.")}),
                               meeting("a", -20, {promise("send it", day(2))})};
    EXPECT_EQ(merge(sidecars).youOweLive.size(), 2);  // two people, as far as anybody knows

    PersonAliases aliases;
    aliases.add("Ana Ruiz", "ana@example.com", "Ana");
    const std::string oldID = CommitmentID::make("c", "send it", "name:ana ruiz");
    const auto ledger = merge(sidecars, {{.kind = Kind::important, .id = oldID}}, aliases);
    const auto id = [](const char* key) {
        return CommitmentID::make(key, "send it", "email:ana@example.com");
    };
    FollowUpRow expected{.id = id("c"),
                         .what = "Send it.",
                         .who = "Ana",
                         .whoKey = "email:ana@example.com",
                         .said = day(-3),
                         .dueRaw = "soon",
                         .quote = "I'll do it",
                         .sourceTitle = "c",
                         .sourceDate = day(-3),
                         .meetingKey = "c",
                         .whatRaw = "Send it.",
                         .important = true};
    expected.recurrence = {
        .count = 3, .firstSaid = day(-20), .memberIDs = {id("c"), id("b"), id("a")}};
    EXPECT_EQ(ledger.youOweLive, FollowUpRows{expected});
    EXPECT_EQ(ledger.owedLive.size(), 1);
    EXPECT_EQ(ledger.pinnedIDs, std::set{oldID});

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
        return FollowUpRow{.id = id, .direction = owedToUser, .who = "A", .whoKey = key};
    };
    const FollowUpsLedger ledger{{row("1", "a")}, {row("2", "b"), row("3", "a")},
                                 {row("4", "c")}, {row("5", "a")},
                                 {row("6", "c")}, {row("7", "a")},
                                 {row("8", "a")}, {row("9", "c")}};
    const auto ids = [](const auto& rows) {
        std::string text;
        for (const auto& each : rows) text += each.id;
        return text;
    };
    EXPECT_EQ(ids(ledger.openRows({"a", "c"})), "13456");
    EXPECT_EQ(ids(ledger.openRows({"a", "c"}, 99, FollowUpsLedger::Older::added)), "134569");
    EXPECT_EQ(ids(ledger.openRows({"a", "c"}, 2)), "13");
    EXPECT_EQ(ids(ledger.open({"a", "c"}, 4)) + ids(ledger.open({"a", "c"}, -1)), "1435");
    const LandOpenFollowUp first{.id = "1", .direction = "owed_to_user", .who = "A"};
    EXPECT_EQ(ledger.open({"a"}, 1), std::vector{first});
}

// ---- laws over random libraries ---------------------------------------------------------------

/// Few words, people and days, so that everything meets everything.
struct RandomLibrary : test::RandomText {
    explicit RandomLibrary(unsigned seed) : RandomText(seed) {
        aliases.add("Ana Ruiz", "ana@example.com", "Ana");
        for (int i = 0; i < 30; ++i) addMeeting(i);
        for (int i = 0; i < 25; ++i)
            corrections.push_back({.kind = static_cast<Kind>(below(7)),
                                   .id = anyID(),
                                   .text = "Other words",
                                   .on = day(-static_cast<int>(below(60)))});
    }

    std::string anyID() {
        const auto& sidecar = sidecars[below(sidecars.size())];
        const auto& all = sidecar.output.commitments;
        if (all.empty()) return "c-00000000";
        const auto& any = all[below(all.size())];
        return CommitmentID::make(sidecar.meetingKey, any.what,
                                  below(2) == 0 ? any.whoKey : aliases.canonical(any.whoKey));
    }

    void addMeeting(int number) {
        static const auto words = Text::split("send it|Send it!|call|call on|pay|?", "|");
        static const auto keys =
            Text::split("name:ana ruiz|EMAIL:ana@example.com|name:bo|Name:Bo|name:them|", "|");
        auto sidecar = meeting("m" + std::to_string(number), -static_cast<int>(below(120)), {});
        sidecar.landedAt = Instant(std::chrono::seconds((number * 7) % 30));
        for (std::size_t i = below(6); i > 0; --i) {
            auto& added = sidecar.output.commitments.emplace_back(promise(from(words)));
            added.direction = static_cast<CommitmentDirection>(below(3));
            added.whoKey = from(keys);
            added.certainty = static_cast<Certainty>(below(3));
            if (below(2) == 0) added.due = day(20 - static_cast<int>(below(60)));
        }
        for (std::size_t i = sidecars.empty() ? 0 : below(5); i > 0; --i) {
            LandResolution said{.id = anyID(),
                                .status = static_cast<LandResolution::Status>(below(2))};
            if (below(2) == 0) said.newDue = day(static_cast<int>(below(20)));
            // Between meetings of one day the order of the files would decide.
            if (resolved.emplace(said.id, sidecar.date).second)
                sidecar.output.resolutions.push_back(said);
        }
        sidecars.push_back(std::move(sidecar));
    }

    Sidecars sidecars;
    std::vector<Correction> corrections;
    PersonAliases aliases;
    std::set<std::pair<std::string, std::string>> resolved;
};

/// Also after a person got more keys than the corrections knew.
TEST(FollowUpsMerger, NoCommitmentIsLostShownTwiceOrBackAgainInAnyOrderOfFiles) {
    for (unsigned seed = 1; seed <= 120; ++seed) {
        RandomLibrary library(seed);
        auto& aliases = library.aliases;
        if (seed % 3 > 0)
            aliases.add({.canonical = "email:bo@example.com", .aliases = {"name:bo"}});
        if (seed % 3 > 1) aliases.add({.canonical = "email:a@b", .aliases = {"name:ana ruiz"}});
        std::set<std::string> dropped, finished;  // by any id; the second are shown for some time
        for (const auto& correction : library.corrections) {
            if (correction.kind == Kind::notACommitment) dropped.insert(correction.id);
            if (correction.kind == Kind::done) finished.insert(correction.id);
        }
        for (const auto& sidecar : library.sidecars)
            for (const auto& said : sidecar.output.resolutions)
                if (said.status == LandResolution::Status::done && sidecar.date < day(-30))
                    finished.insert(said.id);
        std::set<std::string> ids;  // that a row accounts for
        auto& sidecars = library.sidecars;
        const auto ledger = merge(sidecars, library.corrections, aliases);
        std::ranges::shuffle(sidecars, std::mt19937(seed));
        for (auto& sidecar : sidecars)  // landed again
            if (std::ranges::count(sidecars, sidecar.date, &LandSidecar::date) == 1)
                sidecar.landedAt += std::chrono::hours(library.below(9));
        EXPECT_EQ(merge(sidecars, library.corrections, aliases), ledger) << seed;
        for (const auto& [name, rows] : lists(ledger))
            for (const auto& row : *rows)
                for (const auto& id :
                     row.recurrence ? row.recurrence->memberIDs : std::vector{row.id})
                    EXPECT_TRUE(ids.insert(id).second) << seed << id;
        std::set<std::string> promised;
        for (const auto& sidecar : sidecars) {
            for (const auto& each : sidecar.output.commitments) {
                if (each.direction == other) continue;
                const auto idBy = [&](const std::string& key) {
                    return CommitmentID::make(sidecar.meetingKey, each.what, key);
                };
                bool isDropped = false, mayBeGone = false;
                for (const auto& key : aliases.aliases(each.whoKey)) {
                    isDropped |= dropped.contains(idBy(key));
                    mayBeGone |= finished.contains(idBy(key));
                }
                const auto id = idBy(aliases.canonical(each.whoKey));
                promised.insert(id);
                EXPECT_TRUE(isDropped ? !ids.contains(id) : mayBeGone || ids.contains(id)) << seed;
            }
        }
        EXPECT_TRUE(std::ranges::includes(promised, ids)) << seed;
    }
}
}  // namespace
}  // namespace ombrix
