#include "OmbrixAnswerKit/Ask/AskMeeting.h"

#include <gmock/gmock.h>

namespace ombrix {
namespace {

TEST(AskMeeting, TheFolderIsWhatStandsBetweenTheRootAndTheFile) {
    const struct {
        const char *path, *root, *folder;
    } cases[] = {
        {"/r/Acme/Weekly/a.md", "/r", "Acme/Weekly"},
        {"/r/Acme/a.md", "/r/", "Acme"},
        {"/r/a.md", "/r", ""},
        {"/rest/Acme/a.md", "/r", ""},  // begins with the same letters only
        {"/elsewhere/Acme/a.md", "/r", ""},
        {"/Acme/a.md", "/", "Acme"},
    };
    for (const auto& [path, root, folder] : cases)
        EXPECT_EQ(AskMeeting::folderOf(path, root), folder) << path << " in " << root;
}

TEST(AskMeeting, OfOneDayTheLatestStartComesFirstAndTiesStayInOrder) {
    const AskMeeting old{.id = "old", .date = "2026-07-01", .start = "2026-07-01T17:00:00Z"};
    const AskMeeting early{.id = "early", .date = "2026-07-02", .start = "2026-07-02T08:00:00Z"};
    const AskMeeting late{.id = "late", .date = "2026-07-02", .start = "2026-07-02T09:00:00Z"};
    AskMeeting twin = late;
    twin.id = "twin";
    EXPECT_THAT(AskMeeting::newestFirst({old, early, late, twin}),
                testing::ElementsAre(late, twin, early, old));
}
}  // namespace
}  // namespace ombrix
