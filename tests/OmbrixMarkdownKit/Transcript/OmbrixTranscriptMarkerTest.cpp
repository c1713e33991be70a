#include "OmbrixMarkdownKit/Transcript/OmbrixTranscriptMarker.h"

#include <gtest/gtest.h>

#include <string>

namespace ombrix {
namespace {

TEST(OmbrixTranscriptMarker, OnlyAWholeEndedLineDeclares) {
    const struct {
        const char* why;
        std::string text;
        bool declares;
    } cases[] = {
        {"first line", "source: Ombrix\n", true},
        {"anywhere in the body", "---\ntitle: x\n---\nas I said\nsource: Ombrix\nto him\n", true},
        {"CR LF", "---\r\nsource: Ombrix\r\n---\r\n", true},
        {"first line with CR LF", "source: Ombrix\r\n", true},
        {"after a line that is not ours", "source: Ombrix Follow Ups\nsource: Ombrix\n", true},
        {"right after one that is not ended", "\nsource: Ombrix\r\r\nsource: Ombrix\n", true},
        {"not ended", "---\nsource: Ombrix", false},
        {"ended by a lone CR", "---\nsource: Ombrix\r---\n", false},
        {"a CR of its own before the line end", "---\nsource: Ombrix\r\r\n---\n", false},
        {"after a lone CR", "---\rsource: Ombrix\n", false},
        {"another engine file", "---\nsource: Ombrix Follow Ups\n---\n", false},
        {"a key that ends in it", "---\nresource: Ombrix\n---\n", false},
        {"a blank after it", "---\nsource: Ombrix \n---\n", false},
        {"another case", "---\nSource: Ombrix\n---\n", false},
        {"after a byte order mark", "\uFEFFsource: Ombrix\n", false},
    };
    for (const auto& [why, text, declares] : cases)
        EXPECT_EQ(OmbrixTranscriptMarker::declares(text), declares) << why;
    EXPECT_FALSE(OmbrixTranscriptMarker::declares(std::string_view()));  // no bytes to point to
}
}  // namespace
}  // namespace ombrix
