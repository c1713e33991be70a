#include "OmbrixCore/KeyPressLog.h"

#include <gmock/gmock.h>

#include "OmbrixPlatform/Files.h"
#include "OmbrixPlatform/TestFolder.h"

namespace ombrix {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

KeyPressSummary press(std::string bundleID, std::string outcome = "inserted") {
    return {.bundleID = std::move(bundleID),
            .kind = "empty",
            .outcome = std::move(outcome),
            .at = *parseIsoInstant("2026-07-31T09:30:00Z")};
}

std::string lineOf(const KeyPressSummary& summary) {
    return Json::write(encode(summary), Json::Style::canonical) + "\n";
}

TEST(KeyPressLog, WhatIsWrittenReadsBackAroundDamage) {
    const test::TestFolder folder;
    const std::string path = KeyPressLog::url(folder.path());
    EXPECT_EQ(path, folder.path() + "/key-presses.jsonl");
    EXPECT_THAT(KeyPressLog::read(path), IsEmpty()) << "no file";
    EXPECT_THAT(KeyPressLog::read(folder.path()), IsEmpty()) << "a folder";

    const KeyPressSummary bare = press("a");
    const KeyPressSummary full{.bundleID = "b \n👋",
                               .kind = "pull",
                               .outcome = "undone",
                               .path = "field",
                               .partialRead = true,
                               .toMark = 0.25,
                               .toMeetingNamed = 1,
                               .toFirstDraft = 1e-9,
                               .toInserted = 3.5,
                               .at = *parseIsoInstant("1999-12-31T23:59:59Z"),
                               .source = "guess",
                               .offered = false};
    const std::string damaged[] = {
        "\n\n",
        "{\"bundleID\":\"a\"}\n",
        "[1]\n\xFF\xFE\n",
        std::string("\0\n", 2),
        R"({"at":"2026-07-31","bundleID":"a","outcome":"inserted","partialRead":false})"
        "\n",
        R"({"at":"2026-07-31T09:30:00.5Z","bundleID":"a","outcome":"x","partialRead":false})"
        "\n",
        R"({"at":"2026-07-31T09:30:00Z","bundleID":"a","outcome":"x","partialRead":0})"
        "\n",
        std::string(3'000'000, '{') + "\n",
        lineOf(full).substr(0, 40),
    };
    std::string file;
    for (const auto& each : damaged) file += lineOf(bare) + lineOf(full) + each;
    Files::writeAtomically(path, file);
    const auto found = KeyPressLog::read(path);
    ASSERT_EQ(found.size(), 2 * std::size(damaged));
    for (std::size_t i = 0; i < found.size(); ++i) EXPECT_EQ(found[i], i % 2 == 0 ? bare : full);

    // An offset and unknown or null members are no damage, nor is a missing last line feed.
    Files::writeAtomically(path, R"({"kind":"empty","at":"2026-07-31T11:30:00+02:00","x":[{}],)"
                                 R"("path":null,"bundleID":"a","outcome":"inserted",)"
                                 R"("partialRead":false})");
    EXPECT_THAT(KeyPressLog::read(path), ElementsAre(bare));
}

TEST(KeyPressLog, StatsCountPressesAndPullsApart) {
    std::vector<KeyPressSummary> log{press("mail"), press("mail"),  press("mail", "undone"),
                                     press("mail"), press("slack"), press("notes"),
                                     press("notes")};
    log[0].toMeetingNamed = 2.0;
    log[1].toMeetingNamed = 1.0;
    log[1].toFirstDraft = 7;
    log[2].toFirstDraft = 100;  // did not land
    log[3].kind = std::nullopt;
    log[3].source = "guess";
    log[2].source = "guess";
    log[2].offered = true;
    log[1].offered = false;
    log[5].kind = log[6].kind = "pull";
    log[6].outcome = "undone";
    EXPECT_THAT(
        KeyPressLog::stats(log),
        ElementsAre(
            KeyPressLog::AppStats{.bundleID = "mail",
                                  .presses = 4,
                                  .inserted = 3,
                                  .medianToMeetingNamed = 1.5,
                                  .medianToFirstDraft = 7,
                                  .outcomes = {{"inserted", 3}, {"undone", 1}},
                                  .sources = {{"guess", 2}},
                                  .offered = 1},
            KeyPressLog::AppStats{
                .bundleID = "slack", .presses = 1, .inserted = 1, .outcomes = {{"inserted", 1}}},
            KeyPressLog::AppStats{.bundleID = "notes", .pulled = 1}));
    EXPECT_THAT(KeyPressLog::stats({}), IsEmpty());

    log = {press("b"), press("c"), press("a")};
    std::vector<std::string> order;
    for (const auto& row : KeyPressLog::stats(log)) order.push_back(row.bundleID);
    EXPECT_THAT(order, ElementsAre("a", "b", "c"));
    EXPECT_EQ(KeyPressLog::median({3, 1, 2}), 2);
    EXPECT_EQ(KeyPressLog::median({1.7e308, 1.7e308}), 1.7e308);
}
}  // namespace
}  // namespace ombrix
