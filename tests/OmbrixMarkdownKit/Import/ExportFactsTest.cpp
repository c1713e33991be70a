#include "OmbrixMarkdownKit/Import/ExportFacts.h"

#include <gtest/gtest.h>

namespace ombrix {
namespace {

using namespace TranscriptImport;

TEST(ExportFacts, ADayIsReadInTheFormsOfExports) {
    const struct {
        const char* text;
        std::optional<std::string> day;
    } cases[] = {
        {"2026-03-02T09:00:00Z", "2026-03-02"},
        {"at 2026_03-02", "2026-03-02"},
        {"2026/03/02", "2026-03-02"},
        {"2026-02-30", {}},
        {"2024-02-29", "2024-02-29"},
        {"2026-13-01", {}},
        {"2026-3-2", {}},
        {"\u0662\u0660\u0662\u0666-03-02", {}},
        {"Monday, March 2, 2026 at 9:00", "2026-03-02"},
        {"Mar 2, 2026", "2026-03-02"},
        {"SEPT. 2nd 2026", "2026-09-02"},
        {"2 March 2026", "2026-03-02"},
        {"31 June 2026", {}},
        {"March 2026", {}},
        {"Marching 2, 2026", {}},
        {"", {}},
    };
    for (const auto& [text, day] : cases) EXPECT_EQ(isoDay(text), day) << text;
    EXPECT_FALSE(numericDay("March 2, 2026"));
}

TEST(ExportFacts, AFileNameGivesATitle) {
    const std::pair<const char*, const char*> cases[] = {
        {"2026-03-02_pricing-weekly transcript.vtt", "pricing weekly"},
        {"Team__call--x.export.json", "Team call x.export"},
        {"Call RECORDING.srt", "Call"},
        {"call recording transcript.srt", "call recording"},
        {"transcript.vtt", "transcript"},
        {"2026-03-02.vtt", "Imported meeting"},
        {"a 2026-03-02 b 2026-03-03.md", "a b 2026 03 03"},
        {".vtt", ".vtt"},
        {"_-_.txt", "Imported meeting"},
        {"Gr\xFC\xDF.txt", "Gr\uFFFD\uFFFD"},
    };
    for (const auto& [name, title] : cases) EXPECT_EQ(titleFromFilename(name), title) << name;
}
}  // namespace
}  // namespace ombrix
