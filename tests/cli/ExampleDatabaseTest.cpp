#include <gtest/gtest.h>

#include "OmbrixCore/RawDatabase.h"
#include "OmbrixPlatform/TestFolder.h"
#include "ToolProcess.h"

namespace ombrix::ToolTests {
namespace {

TEST(ExampleDatabase, HoldsTheExampleTranscriptsAndIsNeverOverwritten) {
    const test::TestFolder folder;
    const std::string database = folder.at("support/ombrix.db");
    const Call make =
        callIn(folder.path(), {OMBRIX_EXAMPLE_MAKER, OMBRIX_EXAMPLES "/library", database});
    ASSERT_EQ(run(make).status, 0);
    const char* const faults =
        "SELECT count(*) < 12, sum(raw_transcript NOT LIKE '%: %' OR duration_seconds = 0),"
        " (SELECT count(*) = 0 FROM dictations), (SELECT count(*) < 2 FROM meeting_folders),"
        " (SELECT count(*) FROM meetings AS newer JOIN meetings AS older ON older.id < newer.id"
        "  WHERE older.start_time > newer.start_time) FROM meetings";
    EXPECT_EQ(test::RawDatabase(database).rows(faults), "0|0|0|0|0");
    test::RawDatabase(database).run("UPDATE meetings SET title = 'mine'");
    EXPECT_EQ(run(make).status, 1);
    EXPECT_EQ(test::RawDatabase(database).rows("SELECT DISTINCT title FROM meetings"), "mine");
}
}  // namespace
}  // namespace ombrix::ToolTests
