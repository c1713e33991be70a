#include "OmbrixAnswerKit/Commitments/ActionItems.h"

#include <gtest/gtest.h>

#include <string>

namespace ombrix::ActionItems {
namespace {

TEST(ActionItems, AreTheSectionsLinesAndTheNotesCheckBoxes) {
    TranscriptDocument document;
    document.notes =
        "- [ ] call Ann\n- plain bullet\n\t* [x] done\n  * [ ] write\n[ ] no bullet\n-[ ] tight\n"
        "- [X] shouted\n- [x] ticked";
    document.actionItems = "  - send the deck\t\n\nno bullet\n* book the room";
    EXPECT_EQ(lines(document), (std::vector<std::string_view>{
                                   "- send the deck", "no bullet", "* book the room",
                                   "- [ ] call Ann", "* [x] done", "* [ ] write", "- [x] ticked"}));
    EXPECT_TRUE(lines({}).empty());
}

TEST(ActionItems, ReadAnOwnerBeforeTheFirstSeparatorThatSplits) {
    const std::string owner40(40, 'x');
    using Owner = std::optional<std::string_view>;
    const auto owned = [](Owner owner, std::string_view text) { return Item{owner, text}; };
    const auto unowned = [&](std::string_view text) { return owned(std::nullopt, text); };
    const std::string long40 = "- " + owner40 + ": go", long41 = "- y" + owner40 + ": go";
    const std::string rest41 = "y" + owner40 + ": go";
    const std::string accents = "- " + std::string(38, 'x') + "e\u0301o\u0308: go";
    const struct {
        const char* why;
        std::string_view line;
        std::optional<Item> item;
    } cases[] = {
        {"colon", "- Tomas: send deck", owned("Tomas", "send deck")},
        {"an em dash wins over an earlier colon", "- Ann: plan — b", owned("Ann: plan", "b")},
        {"an en dash wins over a colon", "- Ann – see: b", owned("Ann", "see: b")},
        {"a dash that does not split is passed over", "- one two three four five — a: b",
         unowned("one two three four five — a: b")},
        {"the next kind is tried", "- Ann: one two three four — go",
         owned("Ann", "one two three four — go")},
        {"the first place alone counts", "- one two three four five: Ann: go",
         unowned("one two three four five: Ann: go")},
        {"a hyphen is no dash", "- Ann - go", unowned("Ann - go")},
        {"no owner before it", "- : go", unowned(": go")},
        {"four words", "- one two three four: go", owned("one two three four", "go")},
        {"words are counted as words", "- o'neil, d'arcy & x: go",
         unowned("o'neil, d'arcy & x: go")},
        {"40 characters", long40, owned(owner40, "go")},
        {"41 characters", long41, unowned(rest41)},
        {"characters, not scalars", accents,
         owned(std::string_view(accents).substr(2, accents.size() - 6), "go")},
        {"a bullet without its blank", "-Tomas: go", std::nullopt},
        {"ticked in capitals", "* [X] send deck", std::nullopt},
        {"an open box alone", "- [ ] ", std::nullopt},
        {"another sign in the box", "- [-] go", unowned("[-] go")},
    };
    for (const auto& [why, line, item] : cases) EXPECT_EQ(parse(line), item) << why;
}

TEST(ActionItems, ABulletStaysWholeWithoutItsSigns) {
    EXPECT_EQ(trimmedBullet("  - [ ]  Budget: review "), "Budget: review");
    EXPECT_EQ(trimmedBullet("[ ] Budget"), "Budget");
    EXPECT_EQ(trimmedBullet("-Budget"), "-Budget");
}
}  // namespace
}  // namespace ombrix::ActionItems
