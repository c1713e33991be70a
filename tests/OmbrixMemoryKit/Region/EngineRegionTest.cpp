#include "OmbrixMemoryKit/Region/EngineRegion.h"

#include "OmbrixPlatform/RandomText.h"

namespace ombrix {
namespace {

const std::string open =
    R"(<!-- ombrix:engine v1 by="Claude" at="2026-09-01T14:03:22Z" sources="4" -->)";
const std::string close = "<!-- /ombrix:engine -->";
const std::string region = open + "\n# Kept\n" + close;

TEST(EngineRegion, TheOpenLineSaysWhoWhenAndFromHowMuch) {
    const Instant at = *parseIsoInstant("2026-09-01T14:03:22Z");
    EXPECT_EQ(EngineRegion::openMarker("Claude", at, 4), open);
    EXPECT_EQ(EngineRegion::parseOpenLine(open), (EngineRegion::OpenLine{"Claude", at, 4}));
    const std::string odd = EngineRegion::openMarker("a \"b\"\r\nc", at, -1);
    EXPECT_EQ(EngineRegion::parseOpenLine(odd), (EngineRegion::OpenLine{"a 'b' c", at, -1}));
    const std::string quoting = EngineRegion::openMarker("<!-- ombrix:engine v1\nx" + close, at, 4);
    EXPECT_TRUE(EngineRegion::parse(EngineRegion::compose("", quoting, "text", "")));
    EXPECT_EQ(EngineRegion::parseOpenLine(R"(x by="" at="now" sources="4.0")"),
              (EngineRegion::OpenLine{"", std::nullopt, 0}));
    EXPECT_EQ(EngineRegion::parseOpenLine(R"(at="2026-09-01T14:03:22Z" BY="x")"), std::nullopt);
}

TEST(EngineRegion, IsCutOutAndReplacedBetweenThePersonsOwnLines) {
    const std::string file =
        EngineRegion::compose("---\ntitle: x\n---", open, "one\n", "\n## Mine\r\nkept\n");
    EXPECT_EQ(file, "---\ntitle: x\n---\n" + open + "\none\n" + close + "\n\n## Mine\r\nkept\n");
    EXPECT_EQ(EngineRegion::parse(file), (EngineRegion::Parsed{.openLine = open,
                                                               .content = "one\n",
                                                               .before = "---\ntitle: x\n---\n",
                                                               .after = "\n\n## Mine\nkept\n"}));
    EXPECT_EQ(EngineRegion::replace(file, open + " -->", "two"),
              "---\ntitle: x\n---\n" + open + " -->\ntwo\n" + close + "\n\n## Mine\nkept\n");
    EXPECT_EQ(EngineRegion::parse(open + "\n" + close), (EngineRegion::Parsed{.openLine = open}));
}

TEST(EngineRegion, ADamagedFileIsLeftAlone) {
    const struct {
        const char* damage;
        std::string text;
    } cases[] = {
        {"no markers", "text"},
        {"two open markers", open + "\n" + region},
        {"an open marker inside", open + "\nx" + open + "\n" + close},
        {"two close markers", region + "\n" + close},
        {"no close marker", open + "\n# Kept\n"},
        {"close before open", close + "\n" + open + "\n"},
        {"close on the open line", open + close + "\n"},
        {"an open line that does not end", open.substr(0, open.size() - 1) + "\n" + close},
        {"something after the open marker", open + " \n" + close},
        {"another version", "<!-- ombrix:engine v2 -->\n" + close},
        {"nothing after the open line", open},
    };
    for (const auto& [damage, text] : cases) {
        EXPECT_EQ(EngineRegion::parse(text), std::nullopt) << damage;
        EXPECT_EQ(EngineRegion::replace(text, open, "new"), std::nullopt) << damage;
    }
}

/// What the person wrote survives any number of new regions, look-alikes of the markers included.
TEST(EngineRegion, WhatStandsOutsideIsKept) {
    constexpr std::string_view pieces[] = {"a",
                                           " ",
                                           "\n",
                                           "\r\n",
                                           "\rx",
                                           "---\n",
                                           "## Corrections\n",
                                           "- private",
                                           "\"",
                                           "é",
                                           "<!--",
                                           "-->",
                                           "ombrix:engine v1 ",
                                           "v1",
                                           "<!-- ombrix:engine v1",
                                           "/",
                                           "\t",
                                           "# ",
                                           "<!-- /ombrix:engine",
                                           "<!-- ombrix:engine  v1 -->"};
    test::RandomText random(11);
    for (int round = 0; round < 2000; ++round) {
        std::string sides[2];
        for (auto& side : sides)
            for (auto n = random.below(12); n > 0; --n) side += random.from(pieces);
        const auto lines = [](std::string_view text) { return Text::withLineFeeds(text); };
        const std::string before = sides[0] + "\n", after = "\n" + sides[1];
        std::string file = before + region + after;
        if (Text::contains(before + after, EngineRegion::openPrefix) ||
            Text::contains(before + after, close)) {
            EXPECT_EQ(EngineRegion::replace(file, open, "one"), std::nullopt);
            continue;
        }
        for (const auto* content : {"one", "", "two\n"}) {
            const auto next = EngineRegion::replace(file, open, content);
            ASSERT_TRUE(next) << file;
            const auto parsed = EngineRegion::parse(*next);
            EXPECT_EQ(parsed->before, lines(before));
            EXPECT_EQ(parsed->after, lines(after));
            EXPECT_EQ(EngineRegion::replace(*next, open, parsed->content), next);
            file = *next;
        }
    }
}
}  // namespace
}  // namespace ombrix
