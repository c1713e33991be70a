#include "OmbrixMemoryKit/Notes/NotesActionItems.h"

#include <gtest/gtest.h>

#include "OmbrixPlatform/RandomText.h"
#include "OmbrixPlatform/Text.h"

namespace ombrix {
namespace {

using Items = NotesActionItems;
using Item = Items::Item;

TEST(NotesActionItems, LinesAreReadAsGroupsItemsAndTheRest) {
    const auto youOwe = Items::Group::youOwe;
    const struct {
        const char* why;
        std::string line;
        Item expected;
        std::optional<std::string> who, due;
    } cases[] = {
        {"an arrow",
         "- Send it → Ann · due 2026-03-06 (q)",
         {youOwe, "", "Send it", " → Ann · due 2026-03-06 (q)"},
         "Ann",
         "2026-03-06 (q)"},
        {"from", "\t- Call ← Bob", {youOwe, "\t", "Call", " ← Bob"}, "Bob", {}},
        {"a dot", "- a · due Friday", {youOwe, "", "a", " · due Friday"}, {}, "Friday"},
        {"the first arrow to, even after one from",
         "- a ← b → c",
         {youOwe, "", "a ← b", " → c"},
         "c",
         {}},
        {"a final bracket", "- a (b) c (d)", {youOwe, "", "a (b) c", " (d)"}, {}, {}},
        {"no final bracket", "- a (b) c", {youOwe, "", "a (b) c", ""}, {}, {}},
        {"read", "- Reads as: a", {youOwe, "", "a", "", true}, {}, {}},
        {"read without a blank", "- Reads as:a (x)", {youOwe, "", "a", " (x)", true, ""}, {}, {}},
    };
    for (const auto& [why, line, expected, who, due] : cases) {
        const auto items = Items::parse("**You owe**\n" + line).items();
        ASSERT_EQ(items.size(), 1U) << why;
        EXPECT_EQ(items.front().second, expected) << why;
        EXPECT_EQ(items.front().second.who(), who) << why;
        EXPECT_EQ(items.front().second.due(), due) << why;
    }
    for (const std::string line : {"- [ ] call Ana", "* a", "-a", "**You  owe**"}) {
        EXPECT_TRUE(Items::parse("**Unsure**\n" + line).hasLegacy()) << line;
    }
    EXPECT_TRUE(Items::parse("- ahead of any group\n**Unsure**").hasLegacy());
    EXPECT_FALSE(Items::parse(" **Unsure**\r\n- a\n\n \n").hasLegacy());
}

TEST(NotesActionItems, OnlyTheWordsOfOneItemChange) {
    const auto items = Items::parse("**Unsure**\n- a → X\n\n- a → Y\n- [ ] a");
    EXPECT_EQ(items.index("a", 3), 3U) << "the hint tells two alike apart";
    EXPECT_EQ(items.index("a", 4), 1U);
    EXPECT_EQ(items.index("b", 1), std::nullopt);
    EXPECT_EQ(items.updatingWhat(3, " b\nc ").render(),
              "**Unsure**\n- a → X\n\n- b c → Y\n- [ ] a");
    for (const std::size_t other : {0U, 2U, 4U, 9U})
        EXPECT_EQ(items.updatingWhat(other, "b"), items);
    EXPECT_EQ(items.updatingWhat(1, " \n"), items);
}

TEST(NotesActionItems, AnUntouchedSectionRendersToTheSameText) {
    const auto pieces = std::to_array<std::string_view>(
        {"**You owe**", "**Owed to you**", "**Unsure**", "\n", "\n- ", "\n- [", "Reads as:", " ",
         " → ", " ← ", " · ", "due ", " (", ")", "x", "\t", "\r", "\u00A0", "\xFF"});
    test::RandomText random(5);
    for (int round = 0; round < 20'000; ++round) {
        std::string text;
        for (std::size_t i = random.below(20); i > 0; --i) text += random.from(pieces);
        const auto items = Items::parse(text);
        ASSERT_EQ(items.render(), Text::withLineFeeds(text)) << test::visible(text);
        for (const auto& [index, item] : items.items())
            ASSERT_EQ(items.index(item.what, index), index);
    }
}
}  // namespace
}  // namespace ombrix
