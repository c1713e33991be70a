#include "OmbrixAnswerKit/Answer/MeetingAnswer.h"

#include <gtest/gtest.h>

#include "OmbrixPlatform/TestFolder.h"

namespace ombrix {
namespace {

TEST(MeetingAnswer, AFolderAndTheListOfItsTranscriptsGiveTheSameSources) {
    const test::TestFolder folder;
    for (int day = 10; day < 22; ++day) {
        const std::string name = std::to_string(day);
        std::string text = "---\nsource: Ombrix\ndate: 2026-03-";
        text.append(name).append("\n---\n\n## Transcript\n\n**Ann:** ");
        text.append(day % 3 == 0 ? "we decided on pricing" : "I will call Tom");
        folder.write(name + ".md", text.append("\n\n**Tom:** yes\n\n**Ann:** Done.\n"));
    }
    const TranscriptLibrary library{folder.path()};
    const auto documents = library.scan();
    const Instant now = std::chrono::sys_days(std::chrono::year(2026) / 3 / 21);
    const MeetingAnswer::Asker asker{MeetingAnswer::userAliases("Ann"), now};
    for (const char* question :
         {"what did we decide about pricing", "pricing last week", "what's on my plate",
          "what do I owe you", "what am I waiting on", "brainstorm zeppelins", "last 3 meetings"}) {
        const auto understood = understand(question, now, Calendar::current());
        for (const std::int64_t limit : {-1, 1, 5, 100}) {
            const auto found = MeetingAnswer::sources(library, understood, asker, limit);
            EXPECT_EQ(found, MeetingAnswer::sources(documents, understood, asker, limit))
                << question << limit;
            EXPECT_LE(std::ssize(found.hits), std::max<std::int64_t>(limit, 1)) << question;
            const auto text = MeetingAnswer::text(found.hits, understood.plan, asker.userAliases);
            EXPECT_NE(text.floor.has_value(), text.note.has_value()) << question;
        }
    }
}
}  // namespace
}  // namespace ombrix
