#include "OmbrixMemoryKit/Region/Corrections.h"

#include <algorithm>

#include "OmbrixPlatform/RandomText.h"

namespace ombrix {

void PrintTo(const Correction& correction, std::ostream* out) {
    *out << Corrections::lines({correction}).front();
}

namespace {

using Kind = Correction::Kind;

TEST(Corrections, TheSectionEndsAtTheNextHeadingOfItsLevel) {
    const struct {
        const char* text;
        std::optional<std::string> expected;
    } cases[] = {
        {"## Corrections\n- private", "- private"},
        {"x\r\n## Corrections\r\n- a\r\n### b\r\n## c\r\n", "- a\n### b"},
        {"## Corrections\nfirst\n\n## Corrections\nsecond", "second"},  // one with a line before it
        {"x\n## Corrections\n## Notes\n- private", ""},
        {"## Corrections\n## Notes\n", ""},
        {"## Corrections\n", ""},
        {"## Corrections", std::nullopt},
        {"## Corrections \n- private", std::nullopt},
        {"### Corrections\n- private", std::nullopt},
        {"- private", std::nullopt},
    };
    for (const auto& [text, expected] : cases) EXPECT_EQ(Corrections::section(text), expected);
}

TEST(Corrections, EachLineIsOneOfTheFormsOrNothing) {
    const std::string id = "c-0a1b2c3d";
    const struct {
        std::string line;
        std::vector<Correction> expected;
    } cases[] = {
        {"- private", {{.kind = Kind::isPrivate}}},
        {"\t-PRIVATE ", {{.kind = Kind::isPrivate}}},
        {"- private stuff", {}},
        {"private", {}},
        {"- Not a commitment:" + id, {{.kind = Kind::notACommitment, .id = id}}},
        {"- not a commitment: no", {}},
        {"- not: a commitment", {{.kind = Kind::notSame, .text = "a commitment"}}},
        {"- NOT:  Ana R. ", {{.kind = Kind::notSame, .text = "Ana R."}}},
        {"- not:", {}},
        {"- alias: Ana: R.", {{.kind = Kind::alias, .text = "Ana: R."}}},
        {"- DONE: C-0A1B2C3D on 2026-09-01", {}},
        {"- DONE: c-0A1B2C3D on 2026-99-99",
         {{.kind = Kind::done, .id = "c-0A1B2C3D", .on = "2026-99-99"}}},
        {"- done: " + id + " on  2026-09-01", {{.kind = Kind::done, .id = id, .on = "2026-09-01"}}},
        {"- done: " + id + " 2026-09-01", {}},
        {"- done: " + id + " ON 2026-09-01", {}},
        {"- done: " + id + " on 2026-09-01 on 2026-09-02", {}},
        {"- done: " + id + " on 2026-9-01", {}},
        {"- important: " + id, {{.kind = Kind::important, .id = id}}},
        {"- important: " + id + "4", {}},
        {"- reword: " + id + ": a: b", {{.kind = Kind::reword, .id = id, .text = "a: b"}}},
        {"- reword: " + id + " :b", {{.kind = Kind::reword, .id = id, .text = "b"}}},
        {"- reword: " + id + ":", {}},
        {"- reword: " + id, {}},
        {"", {}},
        {"-", {}},
    };
    std::string section;
    std::vector<Correction> all;
    for (const auto& [line, expected] : cases) {
        EXPECT_EQ(Corrections::parse(line), expected) << line;
        section += line + "\n";
        all.insert(all.end(), expected.begin(), expected.end());
    }
    EXPECT_EQ(Corrections::parse(section), all);

    std::string canonical;
    for (const auto& line : Corrections::lines(all)) canonical += "- " + line + "\n";
    EXPECT_EQ(Corrections::parse(canonical), all);
    const auto told = Corrections::lines(Corrections::forRecipe(all));
    EXPECT_EQ(told.size(), all.size() - 1);
    EXPECT_FALSE(std::ranges::count(told, "important: " + id));
}
}  // namespace
}  // namespace ombrix
