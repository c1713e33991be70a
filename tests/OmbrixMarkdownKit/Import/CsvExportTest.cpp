#include "OmbrixMarkdownKit/Import/CsvExport.h"

#include <gtest/gtest.h>

#include "OmbrixMarkdownKit/Import/Csv.h"
#include "OmbrixPlatform/RandomText.h"
#include "OmbrixPlatform/Text.h"

namespace ombrix {
namespace {

using namespace TranscriptImport;
using Rows = std::vector<std::vector<std::string>>;

TEST(Csv, ReadsRowsAsTheyAreMeant) {
    const std::pair<const char*, Rows> cases[] = {
        {"a,b\nc,\n", {{"a", "b"}, {"c", ""}}},
        {"\n\"\"\na\n\n,", {{"a"}, {"", ""}}},
        {"\"a,\"\"b\"\"\nc\",d", {{"a,\"b\"\nc", "d"}}},
        {"a\"b\",\"c\"d\"e\"", {{"a\"b\"", "cd\"e\""}}},
        {"a,\"b\nc,d", {{"a", "b\nc,d"}}},
        {"a\r,\r\"b\r\"\"\"\r\n", {{"a", "b\""}}},
    };
    for (const auto& [text, rows] : cases) EXPECT_EQ(parseCSV(text), rows) << text;
}

TEST(Csv, WhatIsQuotedReadsBack) {
    test::RandomText random(92);
    for (int round = 0; round < 3000; ++round) {
        Rows rows(random.below(4));
        std::string text;
        for (auto& row : rows) {
            for (std::size_t left = 2 + random.below(4); left > 0; --left) {
                row.push_back(Text::replacingAll(random.any(), "\r", ""));
                text += '"' + Text::replacingAll(row.back(), "\"", "\"\"") + "\",";
            }
            text.back() = '\n';
        }
        ASSERT_EQ(parseCSV(text), rows) << test::visible(text);
    }
}

TEST(CsvExport, TheHeaderNamesTheColumns) {
    EXPECT_TRUE(looksLikeCSVExport("Name,Full TRANSCRIPT\n"));
    EXPECT_FALSE(looksLikeCSVExport("transcript\na,b")) << "one column";
    EXPECT_FALSE(looksLikeCSVExport("a,b\nc,transcript")) << "not in the first line";
    const auto found = parseCSVExport(
        "Name,Started,Transcript,Title\n"
        "n,2026-03-02 10:00,\"lead-in\nyou: a\n**you:** b\nNote: c\nBo:\nd\",T\n"
        "n,x,,no speech\nshort row\n,,e\n");
    ASSERT_EQ(found.size(), 2U);
    EXPECT_EQ(found[0].turns,
              (std::vector<Turn>{
                  {"Speaker 1", "lead-in"}, {"Me", "a"}, {"you", "b Note: c"}, {"Bo", "d"}}));
    EXPECT_EQ(found[0].title, "T");
    EXPECT_EQ(found[0].date, "2026-03-02");
    EXPECT_EQ(found[1].turns, (std::vector<Turn>{{"Speaker 1", "e"}}));
    EXPECT_TRUE(parseCSVExport("Title,Transcript\n").empty());
}
}  // namespace
}  // namespace ombrix
