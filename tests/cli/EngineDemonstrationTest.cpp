// Every meeting of the example library, landed from answers that an agent gave to what was asked,
// and what becomes of them: the ledger, memory files, a card, a move.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "EngineLibrary.h"
#include "OmbrixPlatform/Paths.h"
#include "OmbrixPlatform/Text.h"

namespace ombrix::ToolTests {
namespace {

namespace fs = std::filesystem;
using testing::AllOf;
using testing::HasSubstr;

const std::string answers = OMBRIX_ANSWERS;

class ExampleLibrary : public Library {
  public:
    ExampleLibrary() : Library("Nadia Brandt") {
        fs::copy(OMBRIX_EXAMPLES "/library", root(), fs::copy_options::recursive);
        fs::remove_all(root() + "/.ombrix");
        fs::remove_all(root() + "/Memory");
    }

    /// Goes through the file `loop`: the words of each step, then the name of its answer.
    void answerAll() const {
        for (const auto line : Text::splitDroppingEmpty(loop_, "\n")) {
            if (line.starts_with('#')) continue;
            Words step;
            for (const auto word : Text::split(line, " | ")) step.emplace_back(word);
            const std::string file = answers + "/" + step.back() + ".json";
            step.pop_back();
            const Outcome outcome = give(step, Files::bytes(file));
            EXPECT_EQ(outcome.status, 0) << line << outcome.output;
            EXPECT_THAT(outcome.output, HasSubstr("\"warnings\" : []")) << line;
        }
    }

  private:
    std::string loop_ = Files::bytes(answers + "/loop");
};

TEST(EngineDemonstration, TheExamplesBecomeALedgerMemoryFilesACardAndAMove) {
    const ExampleLibrary library;
    library.answerAll();
    const auto status = library.data({"status"});
    EXPECT_EQ(status.member("land")->member("current")->integer(), 23);
    EXPECT_EQ(status.member("land")->member("missing"), nullptr);
    const auto ledger = library.data({"follow-ups", "--all", "--person", "Søren Aagaard"});
    const auto& groups = *ledger.member("people")->array();
    ASSERT_EQ(groups.size(), 1U);
    EXPECT_EQ(groups[0].member("openCount")->integer(), 5);

    EXPECT_THAT(library.read("Memory/Osterby Pilot.md"),
                AllOf(HasSubstr("\nmeetings: 5\n"), HasSubstr("  - Łukasz Wrona\n"),
                      HasSubstr("- Sensor seven moves down by half a metre · Nadia Brandt (Jul 2) "
                                "[Mid-pilot call with Osterby Growers, 2026-07-02]\n")));
    EXPECT_THAT(library.read("Memory/Søren Aagaard.md"),
                HasSubstr("- They owe you: The floor plans of the other three houses, due Aug 5 · "
                          "id c-e7ccc33b [Pilot review with Osterby Growers, 2026-07-30]\n"));
    EXPECT_THAT(library.read("Memory/Before/2026-08-06-offer.md"),
                AllOf(HasSubstr("\nthread: Osterby Pilot\n"),
                      HasSubstr("2. Did you find the floor plans of the other three houses?")));
    const Outcome moves =
        ToolTests::run(callIn(library.disk().path(), {OMBRIX_TOOL, "moves", "render", "mv-2401debf",
                                                      "--folder", library.root()}));
    EXPECT_THAT(moves.output, AllOf(HasSubstr("Subject: Offer for all four houses"),
                                    HasSubstr("We install before the autumn planting.")));
    const auto after = library.tree();
    EXPECT_THAT(library.run({"refresh"}).output, HasSubstr("\"changed\" : []"));
    EXPECT_EQ(library.tree(), after);
}
}  // namespace
}  // namespace ombrix::ToolTests
