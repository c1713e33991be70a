#include "OmbrixMarkdownKit/OmbrixTranscriptMarker.h"

#include <gtest/gtest.h>

#include <random>
#include <string>

#include "OmbrixPlatform/Text.h"

namespace ombrix {
namespace {

TEST(OmbrixTranscriptMarker, OnlyAWholeEndedLineDeclares) {
    const struct {
        const char* why;
        std::string text;
        bool declares;
    } cases[] = {
        {"first line", "source: Ombrix\n", true},
        {"in the frontmatter", "---\ntitle: x\nsource: Ombrix\n---\n", true},
        {"anywhere in the body", "---\ntitle: x\n---\nas I said\nsource: Ombrix\nto him\n", true},
        {"CR LF", "---\r\nsource: Ombrix\r\n---\r\n", true},
        {"first line with CR LF", "source: Ombrix\r\n", true},
        {"behind a line that is not ours", "source: Ombrix Follow Ups\nsource: Ombrix\n", true},
        {"nothing", "", false},
        {"not ended", "---\nsource: Ombrix", false},
        {"ended by a lone CR", "---\nsource: Ombrix\r---\n", false},
        {"a CR of its own before the line end", "---\nsource: Ombrix\r\r\n---\n", false},
        {"behind a lone CR", "---\rsource: Ombrix\n", false},
        {"another engine file", "---\nsource: Ombrix Follow Ups\n---\n", false},
        {"indented", "---\n source: Ombrix\n---\n", false},
        {"a key that ends in it", "---\nresource: Ombrix\n---\n", false},
        {"a blank behind it", "---\nsource: Ombrix \n---\n", false},
        {"another case", "---\nSource: Ombrix\n---\n", false},
        {"behind a byte order mark", "\uFEFFsource: Ombrix\n", false},
    };
    for (const auto& [why, text, declares] : cases)
        EXPECT_EQ(OmbrixTranscriptMarker::declares(text), declares) << why;
    EXPECT_FALSE(OmbrixTranscriptMarker::declares(std::string_view()));  // no bytes to point to
}

TEST(OmbrixTranscriptMarker, ReadsLineEndsAsIfTheyHadBeenReplaced) {
    constexpr const char* pieces[] = {"\r",       "\n",     "\r\n", "source: Ombrix",
                                      "source: ", "Ombrix", "x"};
    std::mt19937 random(7);
    int declared = 0;
    for (int round = 0; round < 20'000; ++round) {
        std::string text;
        for (auto n = random() % 7; n > 0; --n) text += pieces[random() % std::size(pieces)];
        const std::string plain = Text::withLineFeeds(text);
        const bool expected =
            plain.starts_with("source: Ombrix\n") || Text::contains(plain, "\nsource: Ombrix\n");
        declared += expected;
        ASSERT_EQ(OmbrixTranscriptMarker::declares(text), expected) << testing::PrintToString(text);
    }
    EXPECT_GT(declared, 500);  // the rounds tried both answers
}
}  // namespace
}  // namespace ombrix
