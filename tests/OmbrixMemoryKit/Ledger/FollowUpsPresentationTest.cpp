#include "OmbrixMemoryKit/Ledger/FollowUpsPresentation.h"

#include <gtest/gtest.h>

#include <string>

namespace ombrix {
namespace {

using FollowUpsPresentation::StatusPill;
using Late = FollowUpRow::Late;
using Done = FollowUpRow::Done;
using Moved = FollowUpRow::Renegotiated;

const std::string today = "2026-09-01";

FollowUpRow row(std::string id, FollowUpRow::Status status, std::optional<std::string> due = {}) {
    return {.id = std::move(id), .due = std::move(due), .status = std::move(status)};
}

std::string ids(const FollowUpRows& rows) {
    std::string text;
    for (const auto& each : rows) text += each.id;
    return text;
}

TEST(FollowUpsPresentation, RowsComeByUrgency) {
    FollowUpRows rows = {row("h", Done{.confirmedOn = "2026-08-02"}),
                         row("g", Done{.confirmedOn = "2026-08-03"}),
                         row("f", FollowUpRow::NotSure{}),
                         row("e", FollowUpRow::Live{}),
                         row("d", Moved{}, "2026-10-01"),
                         row("c", Late{}),
                         row("b", Late{}, "2026-08-01"),
                         row("i", Done{.confirmedOn = "2026-08-01"}),
                         row("a", FollowUpRow::Live{}, "2026-12-01"),
                         row("d", FollowUpRow::Live{}, "2026-10-01")};
    rows[2].said = "2026-07-02";
    rows[3].said = "2026-07-01";
    rows[7].important = rows[8].important = true;  // a pin on what is done does not count
    EXPECT_EQ(ids(FollowUpsPresentation::byTime(rows)), "abcddefghi");
    const FollowUpsLedger ledger{{rows[8]}, {rows[6]}, {rows[5]}, {rows[4]},
                                 {rows[3]}, {rows[0]}, {rows[0]}, {rows[0]}};
    EXPECT_EQ(ids(FollowUpsPresentation::openRows(ledger)), "abcde");
}

TEST(FollowUpsPresentation, APersonsRowsAreTogetherUnderTheirBestName) {
    const auto with = [](std::string id, std::string who, std::string key,
                         FollowUpRow::Status status) {
        auto result = row(std::move(id), std::move(status));
        result.who = std::move(who);
        result.whoKey = std::move(key);
        return result;
    };
    const FollowUpRow::Live live;
    const FollowUpRows rows = {with("1", "Cy", "name:cy", live),
                               with("2", "ǅana", "name:ana", live),
                               with("3", "Élan", "", live),
                               with("4", "2nd Ana", "name:ana", Done{}),
                               with("5", "Ana R.", "name:ana", live),
                               with("6", "élan", "", Late{}),
                               with("7", "someone", "name:bo", Done{}),
                               with("8", "", "", Done{})};
    using Group = FollowUpsPresentation::PersonGroup;
    const std::vector<Group> groups = {
        {.who = "Élan", .whoKey = "", .rows = {rows[5], rows[2]}},
        {.who = "Ana R.", .whoKey = "name:ana", .rows = {rows[1], rows[4], rows[3]}},
        {.who = "Cy", .whoKey = "name:cy", .rows = {rows[0]}},
        {.who = "someone", .whoKey = "name:bo", .rows = {rows[6]}},
        {.who = "", .whoKey = "", .rows = {rows[7]}}};
    EXPECT_EQ(FollowUpsPresentation::byPerson(rows), groups);
}

TEST(FollowUpsPresentation, APillSaysHowARowStands) {
    const auto said = [](FollowUpRow row) {
        row.dueRaw = "by Friday";
        return row;
    };
    const FollowUpRow::Live live;
    const std::pair<FollowUpRow, std::string> cases[] = {
        {row("", Late{.days = 1}, today), "1 day late"},
        {row("", Late{.days = 12}, today), "12 days late"},
        {said(row("", Done{}, today)), "Done"},
        {said(row("", Moved{.to = "2026-09-02"}, today)), "Moved · tomorrow"},
        {said(row("", Moved{}, today)), "Moved · by Friday"},
        {row("", Moved{}, today), "Moved · no date"},
        {said(row("", live, today)), "Due today"},
        {row("", FollowUpRow::NotSure{}, "2026-09-03"), "Due Thu Sep 3"},
        {row("", live, "2027-01-04"), "Due Mon Jan 4, 2027"},
        {row("", live, "soon"), "Due soon"},
        {said(row("", live)), "by Friday"},
        {row("", FollowUpRow::NotSure{}), "No date"},
    };
    for (const auto& [given, text] : cases)
        EXPECT_EQ(FollowUpsPresentation::statusPill(given, today).text(), text);
}
}  // namespace
}  // namespace ombrix
