#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "OmbrixCore/RawDatabase.h"
#include "ToolProcess.h"

namespace ombrix::ToolTests {
namespace {

TEST(ExampleDatabase, HoldsWhatTheExampleTranscriptsTell) {
    const TemporaryFolder folder;
    const std::string database = folder.path() + "/support/ombrix.db";
    const Call make =
        callIn(folder.path(), {OMBRIX_EXAMPLE_MAKER, OMBRIX_EXAMPLES "/library", database});
    ASSERT_EQ(run(make).status, 0);

    const auto count = [&database](const std::string& of) {
        return std::stoi(test::RawDatabase(database).rows("SELECT count(*) FROM " + of));
    };
    EXPECT_GE(count("meetings"), 12);
    EXPECT_GE(count("dictations"), 1);
    EXPECT_GE(count("meeting_folders"), 2);
    EXPECT_EQ(count("meetings WHERE raw_transcript NOT LIKE '%: %' OR duration_seconds = 0"), 0);
    EXPECT_EQ(count("meetings AS a JOIN meetings AS b ON a.id < b.id "
                    "WHERE a.start_time > b.start_time"),
              0)
        << "the newest meeting has the highest id";

    const Outcome listed = run(callIn(
        folder.path(), {OMBRIX_TOOL, "meetings", "list", "--limit", "1", "--db-path", database}));
    EXPECT_EQ(listed.status, 0);
    EXPECT_THAT(listed.output, testing::HasSubstr("\"wordCount\" : "));

    const int before = count("meetings");
    EXPECT_EQ(run(make).status, 1) << "a database that is there is left alone";
    EXPECT_EQ(count("meetings"), before);
}
}  // namespace
}  // namespace ombrix::ToolTests
