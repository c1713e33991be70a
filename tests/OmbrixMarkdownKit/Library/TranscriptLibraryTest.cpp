#include "OmbrixMarkdownKit/Library/TranscriptLibrary.h"

#include <gmock/gmock.h>

#include "OmbrixPlatform/TestFolder.h"

namespace ombrix {
namespace {

std::vector<ListedTranscript> listed(const TranscriptLibrary& library) {
    std::vector<ListedTranscript> all;
    listTranscripts(library.paths(),
                    [&](ListedTranscript each) { all.push_back(std::move(each)); });
    return all;
}

TEST(TranscriptLibrary, AListShowsWhatTheScanReads) {
    const std::string body = "\n## Notes\n\ncall Ann\n\n## Transcript\n\n**Ann:** yes\n";
    const std::string ours = "source: Ombrix\n";
    const std::string many(5000, 'x');  // more than a look at the beginning shows
    const test::TestFolder folder;
    int number = 0;
    for (const std::string& text : std::vector<std::string>{
             "---\ntitle: Plain\ndate: 2026-07-01\n" + ours + "---\n" + body,
             "---\ntitle: Declared below\n---\n" + ours + body,
             "---\ntitle: Declared far below\n---\n" + many + "\n" + ours + body,
             "---\ntopic_hint: " + many + "\ntitle: Long\n" + ours + "---\n" + body,
             "---\r\ntitle: Carriage returns\r\nsource: Ombrix\r\n---\r\n\r\n## Notes\r\n\r\nx\r\n",
             "---\ntitle: Loose\n" + ours + "----\n" + body,
             "---\ntitle: Loose and strict\n" + ours + "----\ndate: 2026-07-02\n---\n" + body,
             "---\n" + ours + "---",
             "---\ntitle: Not ours\nsource: Other\n---\n" + body,
             "---\ntitle: Declared nowhere\n---\n" + body,
             "# No frontmatter\n" + ours + body,
             "---\ntitle: \xFF\n" + ours + "---\n" + body,
             std::string(),
         }) {
        folder.write("in/" + std::to_string(number++) + ".md", text);
    }
    const TranscriptLibrary library{.folder = folder.path() + "//in/"};
    std::vector<ListedTranscript> expected;
    for (const auto& [id, document] : library.scan()) {
        EXPECT_TRUE(id.starts_with(library.root() + "/")) << id;
        expected.push_back(
            {id, document.title, document.date, document.startedAt, document.participants});
    }
    EXPECT_EQ(expected.size(), 8);
    EXPECT_THAT(listed(library), testing::UnorderedElementsAreArray(expected));

    // Damage after the frontmatter is not looked at.
    folder.write("damaged/a.md", "---\ntitle: A\n" + ours + "---\n\xFF");
    EXPECT_EQ(listed({.folder = folder.at("damaged")}).size(), 1);
}
}  // namespace
}  // namespace ombrix
